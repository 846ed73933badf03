// Value comparison: rules 1, 13, 16, 19.
#include "rules/catalogue/valuecomparison.h"

#include "common/text.h"

int LeftAgainstRight::ValidateRule() {
    switch (outerSide) {
        case leftIsOuter:
            return ProcessLeftSideAsOuter();
        case rightIsOuter:
            return ProcessRightSideAsOuter();
        default:
            return 1;
    }
}

int LeftAgainstRight::ProcessLeftSideAsOuter() {
    walkScopes(0, [this](int begin, int end) {
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = lineBehind(leftSide, left, end)) {
            if (isPresent(leftSide.firstValue()))
                checkAgainstLiteral(left);
            else
                compareBehind(left, end);
        }
    });
    return result;
}

/// Whole elements are compared. A right side with sub-elements asks for a sub-element of the left text that was
/// compared last, and not of the right one; as there is none before the first comparison, none is ever made. To compare
/// the right sub-element instead would report faults in messages that pass.
void LeftAgainstRight::compareBehind(int leftLine, int end) {
    for (int right = firstLine(rightSide, leftLine, end); right != noLine; right = lineBehind(rightSide, right, end)) {
        char const* const rightValue = valueOf(rightSide, right);
        if (!isPresent(rightValue) || rightSide.subElementCount != 0) continue;
        compare(right, leftLine, rightValue, valueOf(leftSide, leftLine));
    }
}

int LeftAgainstRight::ProcessRightSideAsOuter() {
    walkScopes(0, [this](int begin, int end) { compareInScope(begin, end); });
    return result;
}

/// Each left line that is compared splits what the one before has left of the right value: a sub-element behind the
/// first is gone for the second left line. With a fresh split for each, left lines would fault that pass.
void LeftAgainstRight::compareInScope(int begin, int end) {
    int const right = firstLine(rightSide, begin, end);
    char const* rightValue = right == noLine ? nullptr : valueOf(rightSide, right);
    for (int left = firstLine(leftSide, begin, end); left != noLine; left = lineBehind(leftSide, left, end)) {
        if (isPresent(leftSide.firstValue())) {
            checkAgainstLiteral(left);
            continue;
        }
        if (isPresent(rightValue) && rightSide.subElementCount != 0) rightValue = splitRight(rightValue);
        if (isPresent(rightValue)) compare(right, left, rightValue, leftValue.read(left));
    }
}

char* LeftAgainstRight::splitRight(char const* value) {
    lastParts = 1 - lastParts;
    rightParts[lastParts].split(value, segLists->subElementDelimiter);
    return rightParts[lastParts].at(rightSide.subElementPositions[0]);
}

void LeftAgainstRight::compare(int rightLine, int leftLine, char const* right, char const* left) {
    if (!isPresent(left) || !isFault(left, right)) return;
    RecordError(rightLine, leftLine, right, left);
    result = 0;
}

void Rule1::checkAgainstLiteral(int leftLine) {
    char const* const value = valueOf(leftSide, leftLine);
    if (isSamePresent(value, leftSide.firstValue())) return;
    RecordError(leftLine, leftLine, value, value);
    result = 0;
}

bool Rule1::isFault(char const* left, char const* right) {
    return !equal(left, right);
}

/// With the left side as outer side the value is read, and the result is 0 although nothing is reported.
void Rule19::checkAgainstLiteral(int leftLine) {
    if (outerSide != leftIsOuter) return;
    valueOf(leftSide, leftLine);
    result = 0;
}

bool Rule19::isFault(char const* left, char const* right) {
    return equal(left, right);
}

int Rule13::ValidateRule() {
    walkScopes(0, [this](int begin, int end) {
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = lineBehind(leftSide, left, end)) {
            char const* const leftValue = valueOf(leftSide, left);
            if (!isPresent(leftSide.firstValue()))
                compareFirstRight(left, leftValue, begin, end);
            else if (isSamePresent(leftValue, leftSide.firstValue()))
                compareIdentified(left, leftValue, begin, end);
        }
    });
    return 1;
}

/// An empty entry of the list is the identifier of a line that has none.
void Rule13::compareIdentified(int leftLine, char const* leftValue, int begin, int end) {
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end)) {
        for (int index = 0; index < rightSide.values.fieldCount(); ++index) {
            if (!equal(rightSide.values.GetElement(index), (*segLists)[right].identifier)) continue;
            char const* const rightValue = valueOf(rightSide, right);
            int const right2 = firstLine(rightSide2, begin, end);
            char const* const right2Value = right2 == noLine ? nullptr : valueOf(rightSide2, right2);
            if (rightValue && right2Value && equal(rightValue, right2Value))
                RecordError(right, leftLine, rightValue, leftValue);
        }
    }
}

void Rule13::compareFirstRight(int leftLine, char const* leftValue, int begin, int end) {
    int const right = firstLineWithValue(begin, end);
    if (right == noLine) return;
    char const* const rightValue = firstRightValue.read(right);
    for (int right2 = firstLine(rightSide2, begin, end); right2 != noLine; right2 = lineBehind(rightSide2, right2, end))
        if (isSamePresent(valueOf(rightSide2, right2), rightValue)) RecordError(right, leftLine, rightValue, leftValue);
}

/// The whole element decides: a line that has it ends the search, also where its sub-element is missing.
int Rule13::firstLineWithValue(int begin, int end) {
    int right = firstLine(rightSide, begin, end);
    while (right != noLine && !isPresent(valueOf(rightSide, right)))
        right = nextLine(rightSide, right, end);
    return right;
}

int Rule16::ValidateRule() {
    walkScopes(0, [this](int begin, int end) {
        for (int left = firstLine(leftSide, begin, end); left != noLine; left = lineBehind(leftSide, left, end))
            if (hasDemandingValue(left)) checkScope(begin, end);
    });
    return 1;
}

bool Rule16::hasDemandingValue(int left) {
    return isPresent(leftSide.firstValue()) && isSamePresent(valueOf(leftSide, left), leftSide.firstValue());
}

/// Each search for a right2 line begins at the begin of the scope. A begin of -1 lets it go on behind the last hit; any
/// other finds the same line again, which ends the walk.
void Rule16::checkScope(int begin, int end) {
    int const right = firstLine(rightSide, begin, end);
    char const* const rightValue = right == noLine ? nullptr : valueOf(rightSide, right);
    int last = noLine;
    for (int right2 = firstLine(rightSide2, begin, end); right2 > last; right2 = firstLine(rightSide2, begin, end)) {
        char const* const right2Value = valueOf(rightSide2, right2);
        bool const isSame = right2Value && rightValue ? equal(right2Value, rightValue) : right2Value == rightValue;
        if (!isSame) RecordError(right2, right, right2Value, rightValue);
        last = right2;
    }
}
