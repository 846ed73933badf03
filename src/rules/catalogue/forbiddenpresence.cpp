// Forbidden presence: rules 2, 4, 21.
#include "rules/catalogue/forbiddenpresence.h"

#include "common/text.h"

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
    walkScopes(1, [this](int begin, int end) {
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end))
            checkLeftLine(left, begin, end);
    });
    return result;
}

void Rule4::checkLeftLine(int leftLine, int begin, int end) {
    char const* const leftText = leftValue.read(leftLine);
    if (leftSide.elementCount != 0 && !(isPresent(leftText) && matchesList(leftSide, leftText))) return;
    if (leftSide2.elementCount != 0 && !holdsLeft2(begin, end)) return;
    checkRightLines(leftLine, leftText, begin, end);
}

bool Rule4::holdsLeft2(int begin, int end) {
    int const line = firstLine(leftSide2, begin, end);
    if (line == noLine) return false;
    char const* const text = left2Value.read(line);
    return isPresent(text) && matchesList(leftSide2, text);
}

void Rule4::checkRightLines(int leftLine, char const* leftText, int begin, int end) {
    bool const isAnyForbidden = !isPresent(rightSide.firstValue()) && rightSide.subElementCount == 0;
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end)) {
        if (isAnyForbidden)
            forbid(right, leftLine, rightSide.elementCount != 0 ? valueOf(rightSide, right) : nullptr, leftText);
        else
            checkRightLine(right, leftLine, leftText);
    }
}

/// An empty value is a value here: it is none of a list's, and so it is forbidden by a list with the keyword.
void Rule4::checkRightLine(int rightLine, int leftLine, char const* leftText) {
    char const* const text = rightValue.read(rightLine);
    if (text && matchesList(rightSide, text)) forbid(rightLine, leftLine, text, leftText);
}

void Rule4::forbid(int rightLine, int leftLine, char const* rightText, char const* leftText) {
    RecordError(rightLine, leftLine, rightText, leftText);
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
