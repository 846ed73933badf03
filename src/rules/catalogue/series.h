// Series: values that count up from line to line, and values that may stand only once.
#pragma once

#include "common/pointerarray.h"
#include "rules/rule.h"

/// The base of Rule7 and Rule15: a run of left lines whose values are looked at one after the other. Without a loop on
/// the right side the run is all lines of the left segment in the list; with one, each scope has its run, which begins
/// at the right line. The first scope without a right line ends the rule.
class Series : public Rule {
public:
    int ValidateRule() override;

protected:
    int result = 1;

    /// Begins to count anew.
    virtual void startSeries() = 0;
    /// Looks at the next line of the series. `rightLine` is where the series begins; no line if it is the whole list.
    virtual void checkLine(int line, int rightLine) = 0;
    /// Moves to the first scope. Answers the line where its series begins; no line if there is none.
    virtual int enterFirstScope(int* begin, int* end) { return enterNextScope(begin, end); }
    /// Moves to the next scope, likewise.
    int enterNextScope(int* begin, int* end);

private:
    void checkList();
    void checkScopes();
};

/// Rule7: the amounts of a series count 1, 2, 3. A wrong one does not change what the next one is compared with.
///   reads    leftSide: loop, segment, first element; rightSide: loop, segment; rightSide2: segment, which makes the
///            first series that of the second scope, if that segment stands just behind the first one
///   silent   for a value that equals the count, however it is written; from the first scope without a right line on
///   reports  (right line, line) with the value twice; (line, line) for a line without its element
class Rule7 : public Series {
protected:
    void startSeries() override { counter = 0; }
    void checkLine(int line, int rightLine) override;
    int enterFirstScope(int* begin, int* end) override;

private:
    double counter = 0;
};

/// Rule15: the integers of a series count up by one from the first of them. A wrong one does not change what the next
/// one is compared with.
///   reads    leftSide: loop, segment, first element; rightSide: loop, segment
///   silent   for the first value; from the first scope without a right line on
///   reports  (right line, line) with the value twice; (line, line) for a line without its element
class Rule15 : public Series {
protected:
    void startSeries() override;
    void checkLine(int line, int rightLine) override;

private:
    long counter = 0;  // stays 0 where the first line has no value
    bool isFirst = true;
};

/// Rule10: on the left lines with the first left value, the right element may hold a value only once in a scope.
///   reads    leftSide: loop, segment, first element, first value; rightSide: first element, which is read on the left
///            line
///   silent   for left lines with another value, and altogether without a first left value or a right element; for the
///            same value in another scope; for a line without the right element, unless the last line that had it was a
///            duplicate
///   reports  (left line, left line) with the value twice
class Rule10 : public Rule {
public:
    /// Makes room by the number of lines in the message. Throws szFailure where there is no memory.
    explicit Rule10(int lineCount);

    int ValidateRule() override;

private:
    PointerArray<char> seenValues;  // of all scopes so far; the texts are borrowed from the lines
    int firstOfScope = 0;           // index of the first seen value of the current scope
    bool afterDuplicate = false;

    void checkLeftLine(int leftLine);
    bool isSeen(char const* value) const;
};

/// Rule22: each of the first ten left values may stand only once in a scope.
///   reads    leftSide: loop, segment, first element, the first ten values; rightSide: first element, which is read on
///            the left line
///   silent   for a line on which the right element is present: it does not count; for values behind the tenth
///   reports  (left line, left line) with the left value and the list value
class Rule22 : public Rule {
public:
    int ValidateRule() override;

private:
    static constexpr int valuesAtMost = 10;
    int counters[valuesAtMost] = {};  // in the current scope, one for each value of the list

    void checkLeftLine(int leftLine);
    bool isExempt(int leftLine);
};
