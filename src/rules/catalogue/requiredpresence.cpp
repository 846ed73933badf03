// Required presence: rules 3, 5, 6, 9, 11, 12.
#include "rules/catalogue/requiredpresence.h"

#include "common/text.h"

int Rule3::ValidateRule() {
    walkScopes(0, [this](int begin, int end) {
        satisfied = false;
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end))
            checkLeftLine(left, begin, end);
    });
    return result;
}

void Rule3::checkLeftLine(int leftLine, int begin, int end) {
    bool const isSelective = leftSide.elementCount != 0 && leftSide.values.fieldCount() > 0;
    if (isSelective && (satisfied || !isInList(leftSide, leftValue.read(leftLine)))) return;
    int const rightLine = firstLine(rightSide, begin, end);
    if (rightLine == noLine) {
        RecordError(noLine, leftLine, " ", " ");
        result = 0;
    } else if (!isPresent(rightSide.firstValue())) {
        satisfied = true;  // any right line will do
    } else if (!satisfied) {
        if (hasRightLineWithValue(leftLine, rightLine, end)) {
            satisfied = true;
        } else {
            RecordError(noLine, leftLine, " ", " ");
            result = 0;
        }
    }
}

bool Rule3::hasRightLineWithValue(int leftLine, int rightLine, int end) {
    for (int line = rightLine; line != noLine; line = nextLine(rightSide, line, end))
        if (matchesRightValues(line, leftLine)) return true;
    return false;
}

/// A right line without its element counts as a match, and yet it is reported.
bool Rule3::matchesRightValues(int rightLine, int leftLine) {
    char* value = valueOf(rightSide, rightLine);
    if (!value) {
        RecordError(rightLine, leftLine, nullptr, rightSide.firstValue());
        return true;
    }
    for (int index = 0; index < rightSide.values.fieldCount(); ++index)
        if (equal(value, rightSide.values.GetElement(index))) return true;
    return false;
}

int Rule5::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    while (begin >= 1) {
        if (!hasLeftValue(begin, end)) checkScope(begin, end);
        GetNextOuterLoopScope(&begin, &end);
    }
    return result;
}

bool Rule5::hasLeftValue(int begin, int end) {
    for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end))
        if (!isPresent(leftSide.firstValue()) || isSamePresent(valueOf(leftSide, left), leftSide.firstValue()))
            return true;
    return false;
}

void Rule5::checkScope(int begin, int end) {
    if (outerSide != leftIsOuter) {
        checkInnerScope(begin, end);
        return;
    }
    int innerBegin = begin;
    int innerEnd = end;
    GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
    if (innerBegin < 1) {
        fault(begin, begin, " ", " ");
        GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
    }
    while (innerBegin >= 1) {
        checkInnerScope(innerBegin, innerEnd);
        GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
    }
}

void Rule5::checkInnerScope(int begin, int end) {
    int right = firstLine(rightSide, begin, end);
    int right2 = firstLine(rightSide2, begin, end);
    if (right == noLine && right2 == noLine) fault(begin, begin, " ", " ");
    while (right != noLine || right2 != noLine) {
        checkPair(begin, right, right2);
        if (right != noLine) right = nextLine(rightSide, right, end);
        if (right2 != noLine) right2 = nextLine(rightSide2, right2, end);
    }
}

void Rule5::checkPair(int begin, int rightLine, int right2Line) {
    if (rightSide.elementCount == 0 && rightSide2.elementCount == 0) return;
    if (rightSide.elementCount != 0) rightValue = rightLine == noLine ? nullptr : valueOf(rightSide, rightLine);
    if (rightSide2.elementCount != 0) right2Value = right2Line == noLine ? nullptr : valueOf(rightSide2, right2Line);

    char* const demanded = rightSide.firstValue();
    char* const demanded2 = rightSide2.firstValue();
    if (!isPresent(rightValue) && !isPresent(right2Value)) {
        fault(rightLine, noLine, " ", " ");  // the walk over the left lines has run out
    } else if (!isSamePresent(demanded2, right2Value) && !isSamePresent(demanded, rightValue) &&
               (isPresent(demanded) || isPresent(demanded2))) {
        fault(begin, begin, rightValue, right2Value);
    }
}

void Rule5::fault(int rightLine, int leftLine, char const* right, char const* left) {
    RecordError(rightLine, leftLine, right, left);
    result = 0;
}

int Rule6::ValidateRule() {
    if (outerSide == leftIsOuter) checkLeftAsOuter();
    if (outerSide == rightIsOuter) checkRightAsOuter();
    return result;
}

// A scope without a left line is passed over; behind the last scope a search that misses ends the walk.
void Rule6::checkLeftAsOuter() {
    int begin = noLine;
    int end = noLine;
    int left = noLine;
    for (;;) {
        GetNextOuterLoopScope(&begin, &end);
        left = nextLeftLine(left, begin, end);
        if (left == noLine && begin < 0) return;
        if (left == noLine) continue;
        walkInnerScopes(begin, end, [&](int innerBegin, int innerEnd) { checkInnerScope(innerBegin, innerEnd, left); });
    }
}

void Rule6::checkInnerScope(int begin, int end, int leftLine) {
    int right = firstLine(rightSide, begin, end);
    bool const hasRightLine = right != noLine;
    for (; right != noLine; right = nextLine(rightSide, right, end))
        if (rightSide.elementCount == 0 || hasFirstRightValue(right)) return;
    RecordError(begin, hasRightLine ? begin : leftLine, " ", " ");
    result = 0;
}

bool Rule6::hasFirstRightValue(int rightLine) {
    char* value = valueOf(rightSide, rightLine);
    return isPresent(value) && (!isPresent(rightSide.firstValue()) || equal(value, rightSide.firstValue()));
}

void Rule6::checkRightAsOuter() {
    walkScopes(1, [this](int begin, int end) { checkScopeOfRight(begin, end); });
}

/// A right line with another value counts as missing, and is reported with that value.
void Rule6::checkScopeOfRight(int begin, int end) {
    int const right = firstLine(rightSide, begin, end);
    if (right != noLine && hasFirstRightValue(right)) return;
    char* const rightValue = right == noLine ? nullptr : valueOf(rightSide, right);
    for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end)) {
        bool const isForbidden = leftSide.elementCount == 0 || !isPresent(leftSide.firstValue()) ||
                                 !isPresent(valueOf(leftSide, left)) ||
                                 equal(valueOf(leftSide, left), leftSide.firstValue());
        if (!isForbidden) continue;
        RecordError(right, left, rightValue, " ");
        result = 0;
    }
}

// The first scope without a left line ends the rule.
int Rule9::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    int left = noLine;
    for (;;) {
        GetNextOuterLoopScope(&begin, &end);
        left = nextLeftLine(left, begin, end);
        if (left == noLine) return result;
        char* const leftValue = valueOf(leftSide, left);
        if (!isInList(leftSide, leftValue)) continue;
        walkInnerScopes(begin, end,
                        [&](int innerBegin, int innerEnd) { checkInnerScope(innerBegin, innerEnd, left, leftValue); });
    }
}

void Rule9::checkInnerScope(int begin, int end, int leftLine, char const* leftValue) {
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end)) {
        if (isPresent(rightSide.firstValue())) {
            checkRightLine(right, leftLine, leftValue);
        } else if (rightSide2.hasSegment() && firstLine(rightSide2, begin, end) == noLine) {
            RecordError(begin, leftLine, " ", " ");
            result = 0;
        }
    }
}

/// With two values in the list, one of them always differs: this is no test for any one of them, and a list holds one
/// value in practice. Nor do these faults change the result.
void Rule9::checkRightLine(int rightLine, int leftLine, char const* leftValue) {
    char* const value = valueOf(rightSide, rightLine);
    if (!isPresent(value)) {
        RecordError(rightLine, leftLine, value, lastCompared);
        return;
    }
    for (int index = 0; index < rightSide.values.fieldCount(); ++index) {
        char* const demanded = rightSide.values.GetElement(index);
        if (!isPresent(demanded)) continue;
        lastCompared = demanded;
        if (!equal(value, demanded)) RecordError(rightLine, leftLine, value, leftValue);
    }
}

int Rule11::ValidateRule() {
    walkScopes(0, [this](int begin, int end) {
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = nextLine(leftSide, left, end)) {
            bool const isMet = !isDemanding(left) || hasLineInList(rightSide, rightValue, begin, end) ||
                               hasLineInList(rightSide2, right2Value, begin, end);
            if (!isMet) RecordError(noLine, left, " ", " ");
        }
    });
    return 1;
}

bool Rule11::isDemanding(int leftLine) {
    if (leftSide.elementCount == 0 || !isPresent(leftSide.firstValue())) return true;
    return isInList(leftSide, leftValue.read(leftLine));
}

/// A side without elements is met by any line, one without values by any value.
bool Rule11::hasLineInList(SideOfRule& side, SideValue& value, int begin, int end) {
    for (int line = firstLine(side, begin, end); line != noLine; line = nextLine(side, line, end)) {
        if (side.elementCount == 0) return true;
        char* const text = value.read(line);
        if (isPresent(text) && (side.values.fieldCount() == 0 || isInList(side, text))) return true;
    }
    return false;
}

int Rule12::ValidateRule() {
    int result = 1;
    walkScopes(1, [&](int begin, int end) {
        int const left = firstLine(leftSide, begin, end);
        if (left == noLine || !isPresent(leftSide.firstValue())) return;
        if (!isSamePresent(valueOf(leftSide, left), leftSide.firstValue())) return;
        if (firstRightLineUpToFence(*this, begin, end) != noLine) return;
        RecordError(noLine, left, " ", " ");
        result = 0;
    });
    return result;
}
