// Situational presence: if this is there, with such a value, then that must, or must not, be there.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule28: behind a left line with the left value, and without its leftSide2 element, no right line may have the right
/// value.
///   reads    leftSide, rightSide: first element, first value; leftSide2: first element, on the left line itself
///   silent   unless the left side is the outer one; for the left lines of a scope behind the first that forbids
///   reports  (right line, left line)
class Rule28 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkScope(int firstLeft, int end);
    bool isForbidding(int leftLine);
    void forbidRightLines(int leftLine, int end);
};

/// Rule29: where the left side has one of its values, and leftSide2 one of its own, the right side needs one of its
/// values; with a segment on rightSide2, that side needs its value where the right side has one of its own. The value
/// "ABSENT()" at the head of a list stands for a side that has no value, or none of those that follow.
///   reads    leftSide, leftSide2, rightSide: first element, first sub-element, values; rightSide2: first element,
///            first value
///   silent   for a scope whose left conditions do not hold; with a segment on rightSide2, for one whose right
///            condition does not hold; from a scope that begins at line 0 on, and without a loop on the outer side
///   reports  (last right line, left line) for a missing right side; no lines, and the last right2 text with the value
///            demanded, for a missing right2 side once any scope had a right2 text; a pair of its own for a side
///            without an element to point at
class Rule29 : public Rule {
public:
    int ValidateRule() override;

private:
    SideValue leftValue{*this, leftSide};
    SideValue left2Value{*this, leftSide2};
    SideValue rightValue{*this, rightSide};

    // Of the scope at hand.
    int leftLine = noLine;
    char* leftText = nullptr;
    int left2Line = noLine;      // that of the last search
    int rightLine = noLine;      // likewise
    int rightTextLine = noLine;  // the last right line that had a text, if only an empty one

    // These go on from scope to scope.
    char* right2Text = nullptr;
    char* right2Demanded = nullptr;

    void checkScope(int begin, int end);
    bool isLeftMet(int begin, int end);
    bool isLeft2Met(int end);
    bool isRightMet(int begin, int end);
    bool isRight2Met(int begin, int end);
    void reportMissingRight();
    void reportMissingRight2();
    void recordPair(int otherLine);
};

/// Rule30: in a scope in which rightSide2 has its value, the left or the right side has its own.
///   reads    leftSide, rightSide, rightSide2: first element, first value. Without values any text will do
///   silent   from a scope that begins at line 0 on, and without a loop on the outer side
///   reports  (right2 line, right2 line), the first of a scope, with its text and, if there is a right2 value to have,
///            the last right text of all scopes
class Rule30 : public Rule {
public:
    int ValidateRule() override;

private:
    char* rightText = nullptr;  // goes on from scope to scope

    void checkScope(int begin, int end);
    bool isLeftMet(int begin, int end);
    bool isRightMet(int begin, int end);
};

/// The frame of rules 51 and 52: in each scope, runs of an inner loop, the id of which is the first value of
/// rightSide2. A run goes up to the next one. A key ties it to lines elsewhere in the scope.
class KeyedRuns : public Rule {
public:
    int ValidateRule() override;

protected:
    struct Run {
        int begin;  // the scope's
        int end;
        int first;
        int last;
    };

    char* key = nullptr;       // goes on from run to run where a run has none
    char* lastCode = nullptr;  // the code that findInRun compared last, in whichever run
    int result = 1;

    /// Takes the key of a run: the text of its first rightSide2 line or, if that side has no segment, element 1 of the
    /// run's first line.
    void readKey(Run const& run);
    /// The first line of a side in a run that has the side's first value as element 1, or any first line if there is no
    /// such value.
    int findInRun(SideOfRule& side, Run const& run);

private:
    virtual void checkRun(Run const& run) = 0;

    int findEnd(char const* innerLoop, int run, int end);
};

/// Rule51: a run with the left line has its key on a right line of the scope, or has the exempting leftSide2 line.
///   reads    leftSide, leftSide2: first value as element 1; rightSide: element 1; rightSide2: segment, first element,
///            first value as the loop of the runs; scopeText
///   silent   without a segment on the left side, or a loop of runs
///   reports  (no line, left line) with the key
class Rule51 : public KeyedRuns {
private:
    void checkRun(Run const& run) override;
    bool hasRightLineWithKey(Run const& run);
};

/// Rule52: a right line that has the key of a run demands the left line in that run; with a value on leftSide2, the
/// left line instead demands that the right line's own loop has no leftSide2 line.
///   reads    leftSide: first value as element 1; leftSide2: first value; rightSide: loop, element 1; rightSide2:
///            segment, first element, first value as the loop of the runs; scopeText
///   silent   for the last line of a scope; without a segment on the right side, or a loop of runs; with a value on
///            leftSide2, for a run without the left line
///   reports  (right line, none) for a missing left line; (right line, left line) where "ABSENT()" is demanded of a
///            side without a segment; a pair of its own, of the left line and the leftSide2 line, for the latter
class Rule52 : public KeyedRuns {
private:
    void checkRun(Run const& run) override;
    void checkRightLine(Run const& run, int rightLine);
    void judgeFound(int leftLine, int rightLine, int limit);
    void recordPair(int leftLine, int left2Line);
    void fault(int rightLine, int leftLine);
};
