// Single values: the value of one element against the rule's own values.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule27: the Nth left line of a scope must be a right line too, with one of the right values.
///   reads    leftSide: first element, first sub-element; its values are ordinal numbers; rightSide: first element,
///            values
///   silent   for left lines whose ordinal is not listed, that are empty, or that stand behind a satisfied one
///   reports  (no line, left line)
class Rule27 : public Rule {
public:
    int ValidateRule() override;

private:
    SideValue leftValue{*this, leftSide};
    int result = 1;

    void checkScope(int left, int end);
    bool isListed(long ordinal);
    bool isAccompanied(int leftLine, int end);
    bool hasRightValue(int rightLine);
};

/// Rule40: a left value is forbidden, wherever it stands.
///   reads    leftSide: first element, first value
///   silent   without a first value
///   reports  (left line, left line)
class Rule40 : public Rule {
public:
    int ValidateRule() override;
};

/// Rule41: a left value is demanded. The first scope takes the left lines of the whole list, so that each later one is
/// without a left line.
///   reads    leftSide: segment, first element, first value
///   silent   without a loop on the outer side; from a scope that begins at line 0 on
///   reports  (begin, begin) for a scope without a left line; (left line, left line) for another value
class Rule41 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkScope(int begin);
};

/// Rule60: a left value of the list demands ten digits in the element right behind it.
///   reads    leftSide: first element and the one behind it, values; rightSide: loop, segment, first element, first
///            value
///   silent   without a right line behind the left one; without a first right value
///   reports  (right line, left line)
class Rule60 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkLine(int line);
};

/// Rule61: a leftSide2 value of the list demands ten digits in the element right behind it, in a scope whose left line
/// has its element, or that has no left line.
///   reads    leftSide: first element; leftSide2: first element and the one behind it, values; rightSide: loop,
///            segment, first element, first value
///   silent   for a scope of one line; for a left line without its element; without a right line behind the leftSide2
///            line; without a first right value; from a scope that begins at line 0 on
///   reports  (leftSide2 line, left line); without a left line a pair of the right line and the leftSide2 line
class Rule61 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkScope(int begin, int end);
    void checkLine(int line2, int leftLine);
    void fault(int line2, int leftLine, int rightLine, char const* flagged, char const* behind);
};
