// Forbidden presence: something must not be there when something else is, or is not, there.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule2: the first left line of a scope forbids each right line on it and behind it in the scope; with elements on the
/// right side, each that has the first right value, or any value if there is none to have. When the scopes have run
/// out, every further left line forbids in the same way, up to the end of the list.
///   reads    leftSide: loop, segment, first element as a test of presence; rightSide: loop, segment, first element,
///            first value
///   silent   for right lines before the left line; for a right line without its element; from the first scope on that
///            has no left line
///   reports  (right line, left line) with the right value and the first right value
class Rule2 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkRightLine(int rightLine, int leftLine);
};

/// Rule4: where a left line has a value of its list, and the first left2 line has one of its list, no right line of the
/// scope may have a value of its list. A list that begins with "ABSENT()" stands for all values but those behind the
/// keyword.
///   reads    leftSide, leftSide2, rightSide: loop, segment, first element, first sub-element, values
///   silent   for a left line whose element does not hold its list; for a scope without a left2 line, if left2 has
///            elements; for a right line without its element or sub-element; for a list of "ABSENT()" alone on any
///            side; behind a scope that begins at line 0
///   reports  (right line, left line) with both values, in the sub-element form where the side has one
class Rule4 : public Rule {
public:
    int ValidateRule() override;

private:
    SideValue leftValue{*this, leftSide};
    SideValue left2Value{*this, leftSide2};
    SideValue rightValue{*this, rightSide};
    int result = 1;

    void checkLeftLine(int leftLine, int begin, int end);
    bool holdsLeft2(int begin, int end);
    void checkRightLines(int leftLine, char const* leftText, int begin, int end);
    void checkRightLine(int rightLine, int leftLine, char const* leftText);
    void forbid(int rightLine, int leftLine, char const* rightText, char const* leftText);
};

/// Rule21: without a left line, no right line may stand before the first right2 line of a scope or on it.
///   reads    leftSide, rightSide, rightSide2: loop, segment, first element as a test of presence
///   silent   for a scope with a left line; for right lines behind the first right2 line; behind a scope that begins at
///            line 0
///   reports  (right line, right line), once a scope
class Rule21 : public Rule {
public:
    int ValidateRule() override;
};
