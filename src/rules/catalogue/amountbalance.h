// Amount balance: a stated amount against other amounts. All arithmetic is in doubles. A text that is not numeric adds
// nothing, and what stands behind a number is not read: "1-2" is 1, "--" is 0.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule31: the amount of the first left line equals the sum of three sides behind it, over the whole list.
///   reads    leftSide, leftSide2, rightSide, rightSide2: first element. A sum side without a segment is left out
///   silent   where no sum side has a line, whatever the left amount is
///   reports  (no line, left line), once at most
class Rule31 : public Rule {
public:
    int ValidateRule() override;
};

/// The frame of rules 37 and 38: in each scope of the scope loop, balances per run of an inner loop, tied to lines
/// elsewhere in the scope by a key. A scope whose first line has "PB" as element 19 is not balanced at all.
class RunBalance : public Rule {
public:
    int ValidateRule() override;

protected:
    struct Run {
        int begin;  // the scope's
        int end;
        int head;    // its first line
        int behind;  // the first line that is no longer in it; -1 where it lasts to the end of the list
    };

    char* key = nullptr;  // goes on from run to run where a run has none
    int result = 1;

private:
    /// The id of the inner loop; null for none.
    virtual char const* innerLoop() = 0;
    virtual void checkRun(Run const& run) = 0;

    int findEnd(int begin);
    void walkRuns(int begin, int end);
    void readKey(Run const& run);
};

/// Rule37: the amount stated in a run equals the sum of the right amounts in its scope that have the run's key as
/// element 1, less the deductions in the run.
///   reads    scopeSide: loop; leftSide: loop of the runs, first element, first value as element 1 of the stating line;
///            leftSide2: the deductions, all positions; rightSide: first element; rightSide2: loop, segment, first
///            element for the key, which is else element 1 of the run's first line
///   silent   for a run that states no amount, and for one without a right amount; from a scope that begins at
///            line 0 on
///   reports  (no line, stating line)
class Rule37 : public RunBalance {
private:
    // The line and the text of the last stating line, in whichever run.
    int statedLine = noLine;
    char* statedText = nullptr;

    char const* innerLoop() override { return leftSide.loopId(); }
    void checkRun(Run const& run) override;
    bool readStated(Run const& run, double& stated);
};

/// Rule38: for each run, every left amount of the scope equals the sum of the right amounts of its block that have the
/// run's key as element 1, and of the adjustments that follow them. The block of a left line ends two lines before the
/// next one.
///   reads    scopeSide: loop; leftSide, rightSide: first element; leftSide2: the adjustments, all positions;
///            rightSide2: first value as the loop of the runs; loop, segment, first element for the key, as in Rule37
///   silent   for a block without a right amount; from a left line on that the next one follows at once; without a
///            value on rightSide2; from a scope that begins at line 0 on
///   reports  (no line, left line)
class Rule38 : public RunBalance {
private:
    struct Block {
        double sum = 0;
        double adjustment = 0;
        bool hasAmount = false;
    };

    char const* innerLoop() override { return rightSide2.firstValue(); }
    void checkRun(Run const& run) override;
    Block addUp(int first, int last);
};

/// Rule39: in each scope, the first left amount equals the sum of the right and right2 amounts.
///   reads    leftSide: first element; leftSide2: first element, values as the filter of scopes; rightSide, rightSide2:
///            all positions, first value as element 1 of the lines that count
///   silent   for a scope that the filter stops, which is each one where leftSide has no elements; from a scope without
///            a leftSide2 line on, if there is a filter; without a loop on the outer side
///   reports  (first right line, else first right2 line; begin) with the sum and the stated amount, to two decimals
class Rule39 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    bool checkScope(int begin, int end);
    void compare(double stated, bool isStated, int begin, int end);
    double addUp(SideOfRule& side, int firstTaken, int end);
};

/// Rule53: the first left amount of a scope equals the amount on each right line that has the right value.
///   reads    leftSide: first element, which need not be there; rightSide: first element, first value; rightSide2: its
///            segment as a switch, the first position as that of the right line's amount; scopeText
///   silent   for a scope without a left line; for right lines with another value or without the amount's element;
///            without a segment on rightSide2. A left line without its element counts as 0 and is not reported
///   reports  (right line, left line)
class Rule53 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkRightLine(int rightLine, int leftLine, double amount, char const* leftText);
};
