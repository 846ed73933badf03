// Rule: navigation over the located lines, and the recording of faults.
#include "rules/rule.h"

#include <cstdio>

#include "common/text.h"
#include "rules/seglistsearch.h"
#include "walk/errorinfos.h"

namespace {

std::size_t lengthWithoutBlanks(char const* text) {
    std::size_t length = std::strlen(text);
    while (length > 0 && text[length - 1] == ' ')
        --length;
    return length;
}

template <class Search>
int findBehind(SegLists* list, char const* loopId, int after) {
    Search search(list, loopId);
    search.cursor = after;
    return search.FindNext(-1);
}

}  // namespace

Rule::~Rule() = default;

int Rule::ScrollThroughExplicitLoop(char const* loopId, int after) {
    return findBehind<SegListNotLoopSearch>(segLists, loopId, after);
}

int Rule::ScrollToExplicitLoop(char const* loopId, int after) {
    return findBehind<SegListLoopSearch>(segLists, loopId, after);
}

// The candidate is never moved, so a line before it is not looked for. No rule asks.
int Rule::FindBeginingOfLoop(SideOfRule& side) {
    int const candidate = side.lineIndex - 1;
    if (candidate < 0) return candidate;
    return equal((*segLists)[candidate].loopId, side.loopId()) ? noLine : candidate;
}

int Rule::FindEndOfLoop(SideOfRule& side) {
    return ScrollThroughExplicitLoop(side.loopId(), side.lineIndex) - 1;
}

int Rule::GetNextLineForSide(SideOfRule& side, int start, int last, int requireElement) {
    if (start != -1) side.lineIndex = start - 1;
    if (!side.hasLoop() && !side.hasSegment()) {
        side.lineIndex = noLine;
        return noLine;
    }
    if (!side.hasLoop()) {
        SegListSegmentSearch search(segLists, side.segmentId());
        search.cursor = side.lineIndex;
        for (;;) {
            int const line = search.FindNext(last);
            // The first line of the list comes back with the position unchanged: it is not taken for a line of the
            // side.
            if (line <= 0) return line;
            if (satisfiesElement(side, line, requireElement)) return side.lineIndex = line;
        }
    }
    SegListLoopSearch search(segLists, side.loopId());
    search.cursor = side.lineIndex;
    for (;;) {
        int const line = search.FindNext(last);
        if (line < 0) return noLine;
        bool const isHit = !side.hasSegment() || (equal((*segLists)[line].segmentId, side.segmentId()) &&
                                                  satisfiesElement(side, line, requireElement));
        if (isHit) return side.lineIndex = line;
    }
}

bool Rule::satisfiesElement(SideOfRule const& side, int line, int requireElement) {
    return side.elementCount == 0 || requireElement == 0 || isPresent(valueOf(side, line));
}

SideOfRule* Rule::outer() {
    switch (outerSide) {
        case leftIsOuter:
            return &leftSide;
        case rightIsOuter:
            return &rightSide;
        case scopeIsOuter:
            return &scopeSide;
        default:
            return nullptr;
    }
}

void Rule::GetNextOuterLoopScope(int* begin, int* end) {
    innerScopeFinished = 0;
    innerScopeFirst = 1;
    SideOfRule const* side = outer();
    int const after = *end;
    bool const isWalking = scopeFinished == 0 && side;
    *begin = *end = noLine;
    if (!isWalking) return;
    if (!side->hasLoop()) {
        scopeFinished = 1;
        return;
    }
    int const found = ScrollToExplicitLoop(side->loopId(), after);
    // A list that ends inside the loop gives its last scope again and again: the walk ends there.
    scopesRepeat = found >= 0 && found <= lastScopeBegin;
    if (found < 0 || scopesRepeat) {
        scopeFinished = 1;
        return;
    }
    *begin = lastScopeBegin = found;
    *end = after;
    for (int line = found + 1; line < segLists->count; ++line) {
        SegListInfo const& info = (*segLists)[line];
        if (!equal(info.loopId, side->loopId())) {
            int const nextRun = ScrollToExplicitLoop(side->loopId(), line);
            if (nextRun < 0) scopeFinished = 1;
            *end = nextRun < 0 ? noLine : nextRun - 1;
            return;
        }
        if (scopeSegmentId && equal(info.segmentId, scopeSegmentId)) {
            *end = line - 1;
            return;
        }
    }
    // The end of the list inside the loop leaves the end where it came in: behind the first scope it lies before the
    // begin, so that no line of such a scope can be reached.
}

void Rule::GetNextInnerLoopScope(int* begin, int* end, int outerBegin, int outerEnd) {
    if (innerScopeFinished == 1 || !outer()) {
        *begin = *end = noLine;
        return;
    }
    SideOfRule const& side = outerSide == rightIsOuter ? leftSide : rightSide;
    if (!side.hasLoop()) {
        innerScopeFinished = 1;
        *begin = outerBegin;
        *end = outerEnd;
        return;
    }
    SegListLoopSearch search(segLists, side.loopId());
    int const came = *end;
    bool const isFirst = innerScopeFirst == 1;
    search.cursor = !isFirst ? came : outerBegin < 0 ? outerBegin : outerBegin - 1;
    innerScopeFirst = 0;
    int const found = search.FindNext(outerEnd);
    int const foundEnd = found < 0 ? noLine : findInnerEnd(side, found, came, outerEnd);
    // Where the last line of the list begins an inner scope, the search goes on from where the scope before it ended:
    // what is found again is the end.
    bool const isRepeated = !isFirst && found == lastInnerBegin && foundEnd == lastInnerEnd;
    if (found < 0 || isRepeated) {
        *begin = *end = noLine;
        innerScopeFinished = 1;
        return;
    }
    *begin = lastInnerBegin = found;
    *end = lastInnerEnd = foundEnd;
}

/// The end of an inner scope. It doesn't stop at a line of another loop, unlike that of an outer one. In an outer scope
/// that is open to the end, the last line of the list is in no inner scope. Hosts rely on it: the trailer is no part of
/// a loop.
int Rule::findInnerEnd(SideOfRule const& side, int begin, int came, int outerEnd) {
    int const bound = outerEnd == -1 ? segLists->count - 1 : outerEnd + 1;
    for (int line = begin + 1; line < bound; ++line) {
        SegListInfo const& info = (*segLists)[line];
        if (ruleArgument3 && equal(info.loopId, side.loopId()) && equal(info.segmentId, ruleArgument3)) return line - 1;
    }
    return begin + 1 <= bound ? bound - 1 : came;
}

void Rule::RecordError(int rightLine, int leftLine, char const* rightValue, char const* leftValue) {
    ++errorCount;
    if (!rightValue) rightValue = " ";
    if (!leftValue) leftValue = " ";
    if (errorOrder == rightFirst) {
        addFinding(rightSide, rightLine == noLine ? leftLine : rightLine, messageText, rightValue);
        addFinding(leftSide, leftLine, "CTX", leftValue);
    } else if (errorOrder == leftFirst) {
        addFinding(leftSide, leftLine == noLine ? rightLine : leftLine, messageText, leftValue);
        addFinding(rightSide, rightLine, "CTX", rightValue);
    }
}

/// The positions shown are the first of the side's lists, whichever the rule looked at.
void Rule::addFinding(SideOfRule const& side, int line, char const* message, char const* value) {
    char subElement[16] = "00";
    if (side.subElementCount != 0) std::snprintf(subElement, sizeof subElement, "%02d", side.subElementNumber(0));
    errorInfos->add(line + 1, side.elementPositions[0], side.segmentId(), errorCodeText, side.loopId(), txnCodeText,
                    segCodeText, message, value, subElement);
}

char* Rule::GetSubElement(char const* element, int position) {
    subElementCopy.split(element, segLists->subElementDelimiter);
    return subElementCopy.at(position);
}

int Rule::ContentIsTheSame(char const* first, char const* second, int trimMode) {
    bool const trimFirst = trimMode % 2 == 1;
    bool const trimSecond = trimMode > 1;
    std::size_t const firstLength = trimFirst ? lengthWithoutBlanks(first) : std::strlen(first);
    std::size_t const secondLength = trimSecond ? lengthWithoutBlanks(second) : std::strlen(second);
    return firstLength == secondLength && std::memcmp(first, second, firstLength) == 0;
}

bool isInList(SideOfRule& side, char const* text) {
    if (!isPresent(text)) return false;
    for (int index = side.values.fieldCount() - 1; index >= 0; --index)
        if (isSamePresent(side.values.GetElement(index), text)) return true;
    return false;
}

bool isSamePresent(char const* first, char const* second) {
    return isPresent(first) && isPresent(second) && equal(first, second);
}
