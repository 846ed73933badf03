// Value comparison: the text of one element against the text of another.
#pragma once

#include "rules/catalogue/ruletools.h"

/// The base of Rule1 and Rule19: holds the left values of a scope against right values. They differ in what is a fault,
/// and in what a first left value means to them.
class LeftAgainstRight : public Rule {
public:
    int ValidateRule() override;

protected:
    int result = 1;

    /// What becomes of a left line where there is a first left value: it is not held against the right side then.
    virtual void checkAgainstLiteral(int leftLine) = 0;
    /// Whether two present values are a fault.
    virtual bool isFault(char const* leftValue, char const* rightValue) = 0;

private:
    SideValue leftValue{*this, leftSide};
    SubElements rightParts[2];  // in turns: a right value that is split again lies in the one that was split last
    int lastParts = 0;

    /// Each left value against each right value on its line and behind it in the scope.
    int ProcessLeftSideAsOuter();
    /// Each left value of a scope against the value of the first right line.
    int ProcessRightSideAsOuter();

    void compareBehind(int leftLine, int end);
    void compareInScope(int begin, int end);
    char* splitRight(char const* value);
    void compare(int rightLine, int leftLine, char const* right, char const* left);
};

/// Rule1: the left value must equal the right value, or the first left value if there is one.
///   reads    leftSide, rightSide: loop, segment, first element, first sub-element; the first left value; outerSide
///   silent   for any outer side but left and right; for a left line without its element, unless there is a first left
///            value; for a scope without a right value. With the left side as outer side, for right lines before the
///            left line, and altogether if the right side has sub-elements. With the right side as outer side, for
///            right lines behind the first, and for left lines behind the first if the right sub-element is not the
///            first one
///   reports  (right line, left line) with both values; (left line, left line) for a left value that is not the first
///            left value
class Rule1 : public LeftAgainstRight {
protected:
    void checkAgainstLiteral(int leftLine) override;
    bool isFault(char const* leftValue, char const* rightValue) override;
};

/// Rule19: the left value must differ from the right value.
///   reads    as Rule1
///   silent   as Rule1; and altogether where there is a first left value
///   reports  (right line, left line) with both values
class Rule19 : public LeftAgainstRight {
protected:
    void checkAgainstLiteral(int leftLine) override;
    bool isFault(char const* leftValue, char const* rightValue) override;
};

/// Rule13: the right value must differ from the right2 values. With a first left value, left lines that have it hold
/// the right lines whose identifier is in the right list against the first right2 line; without one, each left line
/// holds the first right value against all right2 lines.
///   reads    leftSide: first element, first value; rightSide: first element, first sub-element, values, the identifier
///            of its lines; rightSide2: first element
///   silent   for a left line with another value; for a right line with another identifier, if there is a first left
///            value; without a right or a right2 line
///   reports  (right line, left line) with both values; with a first left value, once for each entry of the right list
///            that is the line's identifier
class Rule13 : public Rule {
public:
    int ValidateRule() override;

private:
    SideValue firstRightValue{*this, rightSide};

    void compareIdentified(int leftLine, char const* leftValue, int begin, int end);
    void compareFirstRight(int leftLine, char const* leftValue, int begin, int end);
    int firstLineWithValue(int begin, int end);
};

/// Rule16: where a left line has the first left value, the first right value must equal the right2 values.
///   reads    leftSide: first element, first value; rightSide, rightSide2: loop, segment, first element
///   silent   for a left line with another value, or without a first left value to have; for all right2 lines but the
///            first, in a scope that is not the whole list
///   reports  (right2 line, right line) with the right2 value and the right value
class Rule16 : public Rule {
public:
    int ValidateRule() override;

private:
    bool hasDemandingValue(int left);
    void checkScope(int begin, int end);
};
