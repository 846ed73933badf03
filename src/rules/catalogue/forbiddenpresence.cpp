// Forbidden presence: rules 2, 4, 21.
#include "rules/catalogue/forbiddenpresence.h"

#include "common/text.h"
#include "rules/catalogue/ruletools.h"

// The first scope without a left line ends the rule.
int Rule2::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    int left = noLine;
    for (;;) {
        GetNextOuterLoopScope(&begin, &end);
        left = nextLeftLine(left, begin, end);
        if (left == noLine) return result;
        for (int right = firstLine(rightSide, left, end); right != noLine; right = nextLine(rightSide, right, end))
            checkRightLine(right, left);
    }
}

void Rule2::checkRightLine(int rightLine, int leftLine) {
    char* rightValue = nullptr;
    char* shownValue = nullptr;
    if (rightSide.elementCount != 0) {
        rightValue = valueOf(rightSide, rightLine);
        if (!isPresent(rightValue)) return;
        if (isPresent(rightSide.firstValue())) {
            shownValue = rightSide.firstValue();
            if (!equal(rightValue, shownValue)) return;
        }
    }
    RecordError(rightLine, leftLine, rightValue, shownValue);
    result = 0;
}

namespace {

/// Whether a value is one that a side's list stands for: any value with an empty list, one of its values otherwise. The
/// keyword as first value turns that round, and alone it stands for nothing. An empty value equals no value of a list.
bool matchesList(SideOfRule& side, char const* value) {
    int const count = side.values.fieldCount();
    if (count == 0) return true;
    bool const isReversed = equal(side.firstValue(), "ABSENT()");
    if (isReversed && count == 1) return false;
    for (int index = count - 1; index >= (isReversed ? 1 : 0); --index)
        if (isSamePresent(side.values.GetElement(index), value)) return !isReversed;
    return isReversed;
}

}  // namespace

int Rule4::ValidateRule() {
    SideValue leftValue(*this, leftSide);
    walkScopes(1, [&](int begin, int end) {
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end))
            checkLeftLine(leftValue, left, begin, end);
    });
    return result;
}

void Rule4::checkLeftLine(SideValue& leftValue, int leftLine, int begin, int end) {
    char const* const value = leftValue.read(leftLine);
    if (leftSide.elementCount != 0 && !(isPresent(value) && matchesList(leftSide, value))) return;
    if (leftSide2.elementCount != 0 && !holdsLeft2(begin, end)) return;
    checkRightLines(leftLine, value, begin, end);
}

bool Rule4::holdsLeft2(int begin, int end) {
    int const line = firstLine(leftSide2, begin, end);
    if (line == noLine) return false;
    SideValue left2Value(*this, leftSide2);
    char const* const value = left2Value.read(line);
    return isPresent(value) && matchesList(leftSide2, value);
}

void Rule4::checkRightLines(int leftLine, char const* leftValue, int begin, int end) {
    bool const isAnyForbidden = !isPresent(rightSide.firstValue()) && rightSide.subElementCount == 0;
    SideValue rightValue(*this, rightSide);
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end)) {
        if (isAnyForbidden)
            forbid(right, leftLine, rightSide.elementCount != 0 ? valueOf(rightSide, right) : nullptr, leftValue);
        else
            checkRightLine(rightValue, right, leftLine, leftValue);
    }
}

/// An empty value is a value here: it is none of a list's, and so it is forbidden by a list with the keyword.
void Rule4::checkRightLine(SideValue& rightValue, int rightLine, int leftLine, char const* leftValue) {
    char const* const value = rightValue.read(rightLine);
    if (value && matchesList(rightSide, value)) forbid(rightLine, leftLine, value, leftValue);
}

void Rule4::forbid(int rightLine, int leftLine, char const* rightValue, char const* leftValue) {
    RecordError(rightLine, leftLine, rightValue, leftValue);
    result = 0;
}

int Rule21::ValidateRule() {
    int result = 1;
    walkScopes(1, [&](int begin, int end) {
        if (firstLine(leftSide, begin, end) != noLine) return;
        int const right = firstRightLineUpToFence(*this, begin, end);
        if (right == noLine) return;
        RecordError(right, right, " ", " ");
        result = 0;
    });
    return result;
}
