// Numeric sums: a total on one line against the amounts of other lines in its scope.
//
// Amounts are doubles, read by strtod, and added in the order of the lines. The two sums live as long as the rule: what
// no rule resets goes on from the scope before.
#pragma once

#include "rules/rule.h"

/// The base of the rules that compare a total with sums.
class SumRule : public Rule {
protected:
    double rightSum = 0;
    double right2Sum = 0;
    char* rightText = nullptr;  // the right value that was read last
    int result = 1;

    /// Adds the right lines from `right` on, or that line alone, to the right sum. Answers where it stopped: on no line
    /// after a full walk, on the line itself after a single read.
    int addRightLines(int right, int end, bool single);
    /// Adds the right2 lines, with all their positions, to the right2 sum, which becomes 0 where there is none. `from`
    /// is where the walk over the right lines stopped; no line makes the search a continuing one. Answers whether there
    /// is one.
    bool addRight2Lines(int from, int end);
    /// Compares a total with the right2 sum, or, where there is a right side, with `withRight`. A fault is recorded if
    /// there is a left value.
    void compare(double total, double withRight, int rightLine, int leftLine, char* leftValue);
    /// The text of an amount; 0 for one that is missing or no number.
    static double amountOf(char const* text);
    /// Whether a difference is a fault; one that is no number is.
    static bool isBeyond(double tolerance, double difference);

private:
    void addRightLine(int line);
};

/// Rule8: the left total equals the right sum less the right2 sum.
///   reads    leftSide: loop, segment, first element; rightSide: loop, segment, first element; rightSide2: all
///            positions
///   silent   for a scope without a left line; behind a scope that begins at line 0; for a left line without its
///            element
///   reports  (right line, left line): no right line after a sum over several, the first one where a left loop makes it
///            a sum of one
class Rule8 : public SumRule {
public:
    int ValidateRule() override;

private:
    void checkScope(int begin, int end);
};

/// Rule14: the left total equals the right2 sum less the right sum, within a tolerance of its own.
///   reads    leftSide: first element; rightSide: first element, first value, which selects by element 1 of the line;
///            rightSide2: all positions
///   silent   for a scope without a left line; behind a scope that begins at line 0
///   reports  (no line, left line)
class Rule14 : public SumRule {
public:
    int ValidateRule() override;

private:
    void checkScope(int begin, int end);
    bool sumSelectedRightLines(int from, int end);
};

/// Rule17: the left total equals the right sum plus the right2 sum, in the scope or, with "I" in the scope field, in
/// each inner scope.
///   reads    leftSide: loop, segment, first element; rightSide: first element; rightSide2: all positions; outerSide,
///            scopeText, ruleArgument3
///   silent   for a scope without a left line; behind a scope that begins at line 0; for a left line without its
///            element
///   reports  (right line, left line)
class Rule17 : public SumRule {
public:
    int ValidateRule() override;

private:
    void checkScope(int left, int end);
    void checkInnerScopes(int left, int begin, int end);
    void checkSums(double& total, int firstRight, int end, bool single, int left);
};

/// Rule18: the left total equals the right sum less the right2 sum, from the left line on.
///   reads    as Rule8
///   silent   as Rule8
///   reports  as Rule8
class Rule18 : public SumRule {
public:
    int ValidateRule() override;

private:
    void checkScope(int left, int end);
};

/// Rule20: the right sum and the right2 sum cancel out, from the left line on.
///   reads    leftSide: loop, segment, first element, first value; rightSide: first element; rightSide2: all positions
///   silent   without a first left value; from the first scope without a left line on
///   reports  (right line, left line)
class Rule20 : public SumRule {
public:
    int ValidateRule() override;

private:
    char* leftValue = nullptr;  // kept for the report until another scope replaces it

    void checkScope(int left, int end);
};
