// Rule: the base of all numbered rules. Its sides, the navigation over the located lines, the recording of faults.
//
// Terms, as all rules use them:
//
//   line         an index into SegLists; -1 is no line. Reports show a line plus 1
//   scope        a pair of lines, begin and end, both inclusive. An end of -1 means to the end of the list; a begin and
//                an end of -1 mean the whole list in the first pass, and no further scope in a later one
//   outer side   the side that `outerSide` names: 1 leftSide, 2 rightSide, 3 scopeSide
//   inner side   leftSide when `outerSide` is 2, rightSide otherwise
//   search       GetNextLineForSide; it continues behind the side's last hit when its start is -1
//   present      neither null nor empty
//
// A rule object runs once, on one thread, within one RunRules call. Its texts point into the host's input, its lists
// belong to the root.
#pragma once

#include "rules/seglists.h"
#include "rules/sideofrule.h"
#include "rules/subelements.h"

class Contents;
class ErrorInfos;

inline constexpr int noLine = -1;

/// What `outerSide` holds.
enum OuterSide { leftIsOuter = 1, rightIsOuter = 2, scopeIsOuter = 3 };

/// What `errorOrder` holds: which side's record comes first. With any other value a fault has no record.
enum ErrorOrder { rightFirst = 1, leftFirst = 2 };

/// Bound of every walk over lines, scopes and runs whose end the data decides. It is never reached.
inline constexpr int walkCap = 999'999'999;

class Rule {
public:
    SideOfRule leftSide;
    SideOfRule leftSide2;
    SideOfRule rightSide;
    SideOfRule rightSide2;
    SideOfRule scopeSide;          // its loop id alone is ever set
    SegLists* segLists = nullptr;  // borrowed from the root, as are the two below
    ErrorInfos* errorInfos = nullptr;
    Contents* contents = nullptr;
    int contentRuleNumber = -1;
    int errorCount = 0;
    int lastSubElementNumber = 0;  // 1-based number of the sub-element that was read last, by whichever side
    int outerSide = 0;             // OuterSide
    int errorOrder = 0;            // ErrorOrder
    char* errorCodeText = nullptr;
    char* txnCodeText = nullptr;
    char* segCodeText = nullptr;
    char* messageText = nullptr;
    char* scopeSegmentId = nullptr;  // a segment that starts a new outer scope inside one run of the loop
    char* ruleArgument3 = nullptr;   // a segment that starts a new inner scope
    char* scopeText = nullptr;       // the record's scope field as it stands
    char* ruleArgument32 = nullptr;
    char* ruleArgument30 = nullptr;
    char* ruleArgument31 = nullptr;
    int scopeFinished = 0;           // 1: there is no further outer scope
    int innerScopeFinished = 0;      // 1: there is no further inner scope in the current outer one
    int innerScopeFirst = 1;         // 1 until the first inner scope of the current outer one has been looked for
    int reportSubElementNumber = 1;  // 0: content records show sub-element 0

    Rule() = default;
    Rule(Rule const&) = delete;
    Rule& operator=(Rule const&) = delete;
    virtual ~Rule();

    /// Runs the rule. The result, 1 or 0, is read by nobody: a report depends on the records alone.
    virtual int ValidateRule() = 0;

    /// The first line behind `after` that does not lie in the loop `loopId`; -1 if there is none.
    virtual int ScrollThroughExplicitLoop(char const* loopId, int after);
    /// The first line behind `after` that lies in the loop `loopId`; -1 if there is none.
    virtual int ScrollToExplicitLoop(char const* loopId, int after);
    /// The line before the side's run of its loop; -1 where the line before the side's position lies in the loop.
    virtual int FindBeginingOfLoop(SideOfRule& side);
    /// The last line of the run of the side's loop that goes on behind its position; -2 where the run ends with the
    /// list.
    virtual int FindEndOfLoop(SideOfRule& side);

    /// The next line of the side, or -1.
    ///
    /// `start` the first line to look at; -1 goes on behind side.lineIndex. Any other value sets side.lineIndex
    ///                   to `start` - 1, whether or not a line is found
    /// `last`            the last line that may be the answer; -1 means to the end of the list
    /// `requireElement`  not 0: if the side has elements, the first of them must be present in the line
    ///
    /// A side without a loop whose segment stands on line 0 is answered with 0, and its position stays: see nextLine.
    virtual int GetNextLineForSide(SideOfRule& side, int start, int last, int requireElement);

    /// The next outer scope. A rule starts with both at -1 and passes the same two variables again and again: `*end`
    /// says where to go on from. Answers -1 and -1 where there is no loop to walk, and behind the last scope.
    void GetNextOuterLoopScope(int* begin, int* end);
    /// The next inner scope of the outer scope. `*end` says where to go on from, after the first call.
    void GetNextInnerLoopScope(int* begin, int* end, int outerBegin, int outerEnd);

    /// Records one fault as a pair of findings: the side that `errorOrder` puts first, with the rule's message, and the
    /// other one with "CTX". The lines may be -1: a first record without a line shows the other's. Values may be null,
    /// and show as a blank.
    void RecordError(int rightLine, int leftLine, char const* rightValue, char const* leftValue);

    /// The sub-element at 0-based `position` of an element's text; null where there is none. It stays valid until the
    /// next call. Throws szFailure where there is no memory.
    char* GetSubElement(char const* element, int position);

    /// 1 if two texts are equal, else 0. Trailing blanks of the first are removed where `trimMode` is odd and above 0,
    /// those of the second where it is above 1.
    static int ContentIsTheSame(char const* first, char const* second, int trimMode);

    // What the rules share beyond that.

    /// The element at `position` of a line: 0 is the segment id itself. Null where there is none.
    char* elementOf(int line, int position) { return (*segLists)[line].elements.GetElement(position); }
    /// The value of a side on a line: the element at the first of its positions.
    char* valueOf(SideOfRule const& side, int line) { return elementOf(line, side.elementPositions[0]); }

    /// Walks the outer scopes: one pass in any case, and further ones as long as begin is not below `lowestBegin`,
    /// which holds for the first scope too. `pass` is called with begin and end.
    template <typename Pass>
    void walkScopes(int lowestBegin, Pass pass) {
        walk(
            lowestBegin, [this](int* begin, int* end) { GetNextOuterLoopScope(begin, end); }, pass);
    }
    /// Walks the inner scopes of an outer scope in the same way, as long as begin is not below 1.
    template <typename Pass>
    void walkInnerScopes(int outerBegin, int outerEnd, Pass pass) {
        walk(
            1, [=](int* begin, int* end) { GetNextInnerLoopScope(begin, end, outerBegin, outerEnd); }, pass);
    }

    /// The first line of a side in a scope, and the lines behind it. A line that is no further on than the one before
    /// ends the walk: a side without a loop whose segment stands on line 0 is found there for ever.
    int firstLine(SideOfRule& side, int begin, int end, int requireElement = 1) {
        return GetNextLineForSide(side, begin, end, requireElement);
    }
    int nextLine(SideOfRule& side, int line, int end, int requireElement = 1) {
        int const next = GetNextLineForSide(side, -1, end, requireElement);
        return next > line ? next : noLine;
    }
    /// The first left line of a scope, for rules that look at no other. When the scopes have run out, a begin of -1
    /// lets the search go on: on a walk over the whole list, every left line behind `previous` gets a pass of its own.
    /// Scopes that do not run out, but repeat themselves, end the walk.
    int nextLeftLine(int previous, int begin, int end) {
        if (scopesRepeat) return noLine;
        return begin < 0 ? nextLine(leftSide, previous, end) : firstLine(leftSide, begin, end);
    }
    /// The first line of a side behind `line`, wherever the side's position is.
    int lineBehind(SideOfRule& side, int line, int end) { return GetNextLineForSide(side, line + 1, end, 1); }

private:
    template <typename NextScope, typename Pass>
    static void walk(int lowestBegin, NextScope nextScope, Pass pass) {
        int begin = noLine;
        int end = noLine;
        bool isFirst = true;
        do {
            nextScope(&begin, &end);
            if (!isFirst && begin < lowestBegin) return;
            pass(begin, end);
            isFirst = false;
        } while (begin >= lowestBegin);
    }

    int lastScopeBegin = -1;
    bool scopesRepeat = false;  // the list ends inside the loop, whose last scope would be found again and again
    int lastInnerBegin = -1;
    int lastInnerEnd = -1;
    SubElements subElementCopy;  // what GetSubElement answers from

    SideOfRule* outer();
    int findInnerEnd(SideOfRule const& side, int begin, int came, int outerEnd);
    bool satisfiesElement(SideOfRule const& side, int line, int requireElement);
    void addFinding(SideOfRule const& side, int line, char const* message, char const* value);
};

/// Whether a present text is among the values of a side.
bool isInList(SideOfRule& side, char const* text);

/// Whether two texts are both present and equal.
bool isSamePresent(char const* first, char const* second);
