// What several families of rules share beyond the operations of Rule itself.
#pragma once

#include "rules/rule.h"

/// The position of the first data element. Some rules take it as the code of a line, whatever the record names.
inline constexpr int codeElement = 1;

/// The value of a side on a line, in its sub-element form where the side has sub-elements. The answer is null where
/// there is no such element or sub-element, and stays valid until the next read.
class SideValue {
public:
    SideValue(Rule& owner, SideOfRule& readSide) : rule(owner), side(readSide) {}

    /// Throws szFailure where there is no memory.
    char* read(int line);

private:
    Rule& rule;
    SideOfRule& side;
    SubElements parts;
};

/// A text that is put together from pieces, and grows as needed.
class JoinedText {
public:
    JoinedText() = default;
    JoinedText(JoinedText const&) = delete;
    JoinedText& operator=(JoinedText const&) = delete;
    ~JoinedText();

    void clear() { length = 0; }
    /// Throws szFailure where there is no memory.
    void append(char const* piece);
    bool isEmpty() const { return length == 0; }
    char const* text() const { return length == 0 ? "" : bytes; }

private:
    char* bytes = nullptr;  // owned, from malloc; array of `capacity`
    std::size_t length = 0;
    std::size_t capacity = 0;
};

/// The scopes of a rule that names a loop in its scope field and cuts the list by it without an outer side. Where the
/// field is absent or empty there is one scope, the whole list. A scope that lies no further on than the one before
/// ends the walk: a list that ends inside the loop would give its scopes again and again.
///
///     for (ExplicitScopes scope(*this); scope.next();) ... scope.begin ... scope.end
class ExplicitScopes {
public:
    int begin = noLine;
    int end = noLine;

    /// The end of a scope is looked for from `skippedLines` behind its begin. A scope that no further run of the loop
    /// ends goes up to the line `lastLine`.
    ExplicitScopes(Rule& owner, int skippedLines, int lastLine);
    explicit ExplicitScopes(Rule& owner) : ExplicitScopes(owner, 0, owner.segLists->count - 1) {}

    /// Moves to the next scope. Answers false behind the last one.
    bool next();

private:
    Rule& rule;
    char const* loopId;  // null where the whole list is the scope
    int skippedLines;
    int lastLine;
    int passes = 0;

    int findEnd();
};

/// The walk over the runs of an inner loop within a scope. Behind a run that lasts to the end of the list the search
/// begins at the front, where runs of earlier scopes stand: the walk ends where it comes back to a run at which it was.
class RunWalk {
public:
    explicit RunWalk(int firstRun) : first(firstRun) {}

    /// The run to go on with, of the one that the search found behind `run`; no line at the end.
    int next(int run, int found) {
        bool const isBehind = found > run;
        if (!isBehind && isBackAtFront) return noLine;
        if (!isBehind) isBackAtFront = true;
        return isBackAtFront && found >= first ? noLine : found;
    }

private:
    int first;
    bool isBackAtFront = false;
};

/// One finding of a pair that a rule writes itself, because the sides that it is about are not leftSide and rightSide.
struct DirectFinding {
    int line;
    int elementPosition;
    char const* segmentId;
    char const* loopId;
    char const* value;
};

/// The two findings of such a pair, in their order.
struct DirectPair {
    DirectFinding first;   // with the rule's message
    DirectFinding second;  // with "CTX"
};

/// Records a fault as the pair that belongs to the rule's errorOrder; as none where it has no order. A line of -1 shows
/// as 0, a null value as a blank.
void recordDirectly(Rule& rule, DirectPair const& rightFirstPair, DirectPair const& leftFirstPair);

/// The first right line of a scope, up to its first right2 line and on it. A right2 line 0 is no fence.
int firstRightLineUpToFence(Rule& rule, int begin, int end);

/// Whether a text is present and consists of nothing but digits, points and minus signs.
bool isNumeric(char const* text);
