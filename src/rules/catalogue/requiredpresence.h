// Required presence: something must be there when something else is, or is not, there.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule3: a left line with one of the left values needs a right line with one of the right values in its scope.
///   reads    leftSide and rightSide: loop, segment, first element, values; leftSide's first sub-element
///   silent   for left lines with another value, and for all left lines of a scope once one has been satisfied
///   reports  (no line, left line) where no right line fits; (right line, left line) for a right line without its
///            element
class Rule3 : public Rule {
public:
    int ValidateRule() override;

private:
    SideValue leftValue{*this, leftSide};
    bool satisfied = false;  // in the current scope
    int result = 1;

    void checkLeftLine(int leftLine, int begin, int end);
    bool hasRightLineWithValue(int leftLine, int rightLine, int end);
    bool matchesRightValues(int rightLine, int leftLine);
};

/// Rule5: a scope without the left value needs a right or a right2 line, in each of its inner scopes if the left side
/// is the outer one.
///   reads    leftSide, rightSide, rightSide2: loop, segment, first element, first value; outerSide
///   silent   for a scope in which a left line has the first left value, or where there is no left value to have; and
///            altogether from a scope that begins at line 0 on
///   reports  (begin, begin) where both right sides are missing; (right line, none) for a pair of lines without values;
///            (begin, begin) with both values for a pair of lines that have others
class Rule5 : public Rule {
public:
    int ValidateRule() override;

private:
    // A value that is not read on a pair of lines is that of the pair before.
    char* rightValue = nullptr;
    char* right2Value = nullptr;
    int result = 1;

    bool hasLeftValue(int begin, int end);
    void checkScope(int begin, int end);
    void checkInnerScope(int begin, int end);
    void checkPair(int begin, int rightLine, int right2Line);
    void fault(int rightLine, int leftLine, char const* right, char const* left);
};

/// Rule6: with the left side as outer side, the first left line of a scope needs a right line in each inner scope; with
/// the right side as outer side, a scope without its right value may have no left line.
///   reads    leftSide, rightSide: loop, segment, first element, first value; outerSide; ruleArgument3
///   silent   for any other outer side; for a scope without a left line
///   reports  (inner begin, left line) without a right line; (inner begin, inner begin) without a right line in order;
///            (right line, left line) for a left line that may not be there
class Rule6 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkLeftAsOuter();
    void checkInnerScope(int begin, int end, int leftLine);
    bool hasFirstRightValue(int rightLine);
    void checkRightAsOuter();
    void checkScopeOfRight(int begin, int end);
};

/// Rule9: a left value of the list demands the right value, or a right2 line, in each inner scope.
///   reads    leftSide, rightSide: first element, values; rightSide2: loop, segment; ruleArgument3
///   silent   from the first scope without a left line on; for a left line with another value; for inner scopes without
///            a right line
///   reports  (right line, left line) for each listed right value that a right line does not have;
///            (inner begin, left line) for a missing right2 line
class Rule9 : public Rule {
public:
    int ValidateRule() override;

private:
    char* lastCompared = nullptr;  // the last right value that was compared
    int result = 1;

    void checkInnerScope(int begin, int end, int leftLine, char const* leftValue);
    void checkRightLine(int rightLine, int leftLine, char const* leftValue);
};

/// Rule11: a left value demands a right line with a right value, or a right2 line with a right2 value, in its scope.
///   reads    leftSide, rightSide, rightSide2: first element, first sub-element, values
///   silent   for a left line whose value is not in the list
///   reports  (no line, left line)
class Rule11 : public Rule {
public:
    int ValidateRule() override;

private:
    SideValue leftValue{*this, leftSide};
    SideValue rightValue{*this, rightSide};
    SideValue right2Value{*this, rightSide2};

    bool isDemanding(int leftLine);
    bool hasLineInList(SideOfRule& side, SideValue& value, int begin, int end);
};

/// Rule12: the first left line of a scope, if it has the first left value, needs a right line before the first right2
/// line or on it.
///   reads    leftSide: first element, first value; rightSide, rightSide2: loop, segment, first element
///   silent   for a scope without such a left line; behind a scope that begins at line 0
///   reports  (no line, left line)
class Rule12 : public Rule {
public:
    int ValidateRule() override;
};
