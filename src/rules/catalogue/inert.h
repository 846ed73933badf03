// The rules that judge nothing: numbers that are accepted and have no effect, and the class of every unknown number.
#pragma once

#include "rules/rule.h"

/// Accepted, without effect.
class InertRule : public Rule {
public:
    int ValidateRule() override { return 1; }
};

class Rule32 : public InertRule {};
class Rule33 : public InertRule {};
class Rule34 : public InertRule {};
class Rule35 : public InertRule {};
class Rule36 : public InertRule {};
class Rule58 : public InertRule {};
class Rule59 : public InertRule {};

/// Rule99, the class of every number without one of its own: reads its side on the lines of its scopes, and judges
/// nothing.
///   reads    rightSide where outerSide is 2, else leftSide; scopeText
///   silent   always
///   leaves   the lines and the values that it has read split
class Rule99 : public Rule {
public:
    int ValidateRule() override;

private:
    void readLines(int begin, int end);
};
