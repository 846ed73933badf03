// Series: rules 7, 10, 15, 22.
#include "rules/catalogue/series.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "common/text.h"
#include "rules/catalogue/ruletools.h"
#include "rules/seglistsearch.h"

int Series::ValidateRule() {
    if (rightSide.hasLoop())
        checkScopes();
    else
        checkList();
    return result;
}

/// Unlike a search for a side, this one finds line 0 too, and lines without the element.
void Series::checkList() {
    SegListSegmentSearch search(segLists, leftSide.segmentId());
    startSeries();
    for (int line = search.FindNext(-1); line != noLine; line = search.FindNext(-1))
        checkLine(line, noLine);
}

void Series::checkScopes() {
    int begin = noLine;
    int end = noLine;
    int right = enterFirstScope(&begin, &end);
    while (right != noLine) {
        startSeries();
        for (int line = firstLine(leftSide, right, end); line != noLine; line = nextLine(leftSide, line, end))
            checkLine(line, right);
        right = enterNextScope(&begin, &end);
    }
}

int Series::enterNextScope(int* begin, int* end) {
    GetNextOuterLoopScope(begin, end);
    return *begin == noLine ? noLine : firstLine(rightSide, *begin, *end);
}

/// With a right2 segment the first scope has no series: it must be followed by that segment at once, with which the
/// first series begins.
int Rule7::enterFirstScope(int* begin, int* end) {
    if (!rightSide2.hasSegment()) return enterNextScope(begin, end);
    GetNextOuterLoopScope(begin, end);
    if (*end == noLine) return noLine;
    int const behindScope = *end + 1;
    if (behindScope >= segLists->count) return noLine;
    if (!equal((*segLists)[behindScope].segmentId, rightSide2.segmentId())) return noLine;
    GetNextOuterLoopScope(begin, end);
    return behindScope;
}

void Rule7::checkLine(int line, int rightLine) {
    char const* const value = valueOf(leftSide, line);
    if (!isPresent(value)) {
        RecordError(line, line, " ", " ");
        result = 0;
        return;
    }
    double const amount = isNumeric(value) ? std::strtod(value, nullptr) : 0;
    counter += 1.0;
    if (amount == counter) return;
    RecordError(rightLine, line, value, value);
    result = 0;
}

void Rule15::startSeries() {
    counter = 0;
    isFirst = true;
}

void Rule15::checkLine(int line, int rightLine) {
    bool const isCounting = !isFirst;
    isFirst = false;
    char const* const value = valueOf(leftSide, line);
    if (!isPresent(value)) {
        RecordError(line, line, value, value);
        result = 0;
        return;
    }
    long const number = std::strtol(value, nullptr, 10);
    if (!isCounting) {
        counter = number;
        return;
    }
    counter = static_cast<long>(static_cast<unsigned long>(counter) + 1UL);  // behind the largest comes the smallest
    if (number == counter) return;
    RecordError(rightLine, line, value, value);
    result = 0;
}

namespace {

int scaled(int number, double factor) {
    return static_cast<int>(static_cast<float>(number) * factor);
}

int firstCapacity(int lineCount) {
    return std::max(16, scaled(lineCount, 0.01));
}

}  // namespace

Rule10::Rule10(int lineCount) : seenValues(firstCapacity(lineCount), scaled(firstCapacity(lineCount) + 1, 0.5)) {}

int Rule10::ValidateRule() {
    walkScopes(0, [this](int begin, int end) {
        firstOfScope = seenValues.count;
        afterDuplicate = false;
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end))
            checkLeftLine(left);
    });
    return 1;
}

void Rule10::checkLeftLine(int leftLine) {
    if (!isSamePresent(valueOf(leftSide, leftLine), leftSide.firstValue()) || rightSide.elementCount == 0) return;
    char* const value = valueOf(rightSide, leftLine);
    if (isPresent(value)) {
        afterDuplicate = isSeen(value);
        if (!afterDuplicate) seenValues.add(value);
    }
    // A line without the value shares the fate of the one before it.
    if (afterDuplicate) RecordError(leftLine, leftLine, value, value);
}

bool Rule10::isSeen(char const* value) const {
    return std::any_of(seenValues.data + firstOfScope, seenValues.data + seenValues.count,
                       [value](char const* seen) { return equal(seen, value); });
}

int Rule22::ValidateRule() {
    walkScopes(0, [this](int begin, int end) {
        std::fill(std::begin(counters), std::end(counters), 0);
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end))
            checkLeftLine(left);
    });
    return 1;
}

void Rule22::checkLeftLine(int leftLine) {
    char const* const leftValue = valueOf(leftSide, leftLine);
    for (int index = std::min(leftSide.values.fieldCount(), valuesAtMost) - 1; index >= 0; --index) {
        char const* const listValue = leftSide.values.GetElement(index);
        if (!isSamePresent(listValue, leftValue) || isExempt(leftLine)) continue;
        if (++counters[index] > 1) RecordError(leftLine, leftLine, leftValue, listValue);
    }
}

bool Rule22::isExempt(int leftLine) {
    return rightSide.elementCount != 0 && isPresent(valueOf(rightSide, leftLine));
}
