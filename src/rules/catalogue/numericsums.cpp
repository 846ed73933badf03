// Numeric sums: rules 8, 14, 17, 18, 20.
#include "rules/catalogue/numericsums.h"

#include <cmath>
#include <cstdlib>

#include "common/text.h"

namespace {

constexpr double fineTolerance = 0.00001;
constexpr double coarseTolerance = 0.009;

}  // namespace

double SumRule::amountOf(char const* text) {
    return text ? std::strtod(text, nullptr) : 0;
}

bool SumRule::isBeyond(double tolerance, double difference) {
    return !(std::fabs(difference) < tolerance);
}

int SumRule::addRightLines(int right, int end, bool single) {
    while (right != noLine) {
        addRightLine(right);
        if (single) return right;
        right = nextLine(rightSide, right, end);
    }
    return noLine;
}

void SumRule::addRightLine(int line) {
    rightText = valueOf(rightSide, line);
    rightSum += amountOf(rightText);
}

bool SumRule::addRight2Lines(int from, int end) {
    int line = firstLine(rightSide2, from, end);
    if (line == noLine) {
        right2Sum = 0;
        return false;
    }
    for (; line != noLine; line = nextLine(rightSide2, line, end))
        for (int index = 0; index < rightSide2.elementCount; ++index)
            right2Sum += amountOf(elementOf(line, rightSide2.elementPositions[index]));
    return true;
}

void SumRule::compare(double total, double withRight, int rightLine, int leftLine, char* leftValue) {
    double const expected = rightSide.hasSegment() ? withRight : right2Sum;
    if (!isBeyond(fineTolerance, total - expected)) return;
    result = 0;
    if (leftValue) RecordError(rightLine, leftLine, rightText, leftValue);
}

int Rule8::ValidateRule() {
    walkScopes(1, [this](int begin, int end) { checkScope(begin, end); });
    return result;
}

// The sum of a single line is never reset: it adds up over the scopes.
void Rule8::checkScope(int begin, int end) {
    int const left = firstLine(leftSide, begin, end, 0);
    if (left == noLine) return;
    char* const leftValue = valueOf(leftSide, left);
    bool const single = leftSide.hasLoop();
    int right = firstLine(rightSide, begin, end);
    if (right != noLine && !single) rightSum = 0;
    right = addRightLines(right, end, single);
    if (rightSide2.hasSegment()) addRight2Lines(right, end);
    compare(amountOf(leftValue), rightSum - right2Sum, right, left, leftValue);
}

int Rule14::ValidateRule() {
    walkScopes(1, [this](int begin, int end) { checkScope(begin, end); });
    return result;
}

void Rule14::checkScope(int begin, int end) {
    int const left = firstLine(leftSide, begin, end);
    if (left == noLine) return;
    char* const leftValue = valueOf(leftSide, left);
    bool const hasRightLine = sumSelectedRightLines(left, end);
    if (rightSide2.hasSegment()) addRight2Lines(noLine, end);
    double const expected = hasRightLine ? right2Sum - rightSum : right2Sum;
    if (!isBeyond(coarseTolerance, amountOf(leftValue) - expected)) return;
    RecordError(noLine, left, rightText, leftValue);
    result = 0;
}

/// A line counts by its element 1, whatever the side's positions are. The text kept is that of every line read.
bool Rule14::sumSelectedRightLines(int from, int end) {
    constexpr int codePosition = 1;
    int right = firstLine(rightSide, from, end);
    if (right == noLine) return false;
    char* const code = rightSide.firstValue();
    rightSum = 0;
    for (; right != noLine; right = nextLine(rightSide, right, end)) {
        rightText = valueOf(rightSide, right);
        if (!isPresent(code) || isSamePresent(elementOf(right, codePosition), code)) rightSum += amountOf(rightText);
    }
    return true;
}

int Rule17::ValidateRule() {
    bool const isInner = scopeText && equal(scopeText, "I");
    int requireElement = 0;
    walkScopes(1, [&](int begin, int end) {
        int const left = firstLine(leftSide, begin, end, requireElement);
        requireElement = 1;
        if (left == noLine) return;
        if (isInner)
            checkInnerScopes(left, begin, end);
        else
            checkScope(left, end);
    });
    return result;
}

void Rule17::checkScope(int left, int end) {
    double total = amountOf(valueOf(leftSide, left));
    checkSums(total, firstLine(rightSide, left, end), end, false, left);
}

void Rule17::checkInnerScopes(int left, int begin, int end) {
    double total = amountOf(valueOf(leftSide, left));
    int innerBegin = begin;
    int innerEnd = end;
    if (outerSide == leftIsOuter) GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
    if (innerBegin < 1) return;
    int right = firstLine(rightSide, innerBegin, innerEnd);
    do {
        checkSums(total, right, innerEnd, leftSide.hasLoop(), left);
        GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
        if (innerBegin < 1) return;
        right = firstLine(rightSide, innerBegin, innerEnd);
    } while (right != noLine);
}

/// A total without any line to add up counts as 0, and stays so in the inner scopes that follow.
void Rule17::checkSums(double& total, int firstRight, int end, bool single, int left) {
    rightSum = 0;
    int const right = addRightLines(firstRight, end, single);
    if (rightSide2.hasSegment()) {
        right2Sum = 0;
        if (!addRight2Lines(right, end) && firstRight == noLine) total = 0;
    }
    compare(total, rightSum + right2Sum, right, left, valueOf(leftSide, left));
}

int Rule18::ValidateRule() {
    int requireElement = 0;
    walkScopes(1, [&](int begin, int end) {
        int const left = firstLine(leftSide, begin, end, requireElement);
        requireElement = 1;
        if (left != noLine) checkScope(left, end);
    });
    return result;
}

void Rule18::checkScope(int left, int end) {
    char* const leftValue = valueOf(leftSide, left);
    double total = amountOf(leftValue);
    int const firstRight = firstLine(rightSide, left, end);
    if (firstRight != noLine) rightSum = 0;
    int const right = addRightLines(firstRight, end, leftSide.hasLoop());
    if (rightSide2.hasSegment() && !addRight2Lines(right, end) && firstRight == noLine) total = 0;
    compare(total, rightSum - right2Sum, right, left, leftValue);
}

// The first scope without a left line ends the rule.
int Rule20::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    int left = noLine;
    for (;;) {
        GetNextOuterLoopScope(&begin, &end);
        left = nextLeftLine(left, begin, end);
        if (left == noLine) return result;
        checkScope(left, end);
    }
}

void Rule20::checkScope(int left, int end) {
    if (isPresent(leftSide.firstValue())) leftValue = valueOf(leftSide, left);
    bool const single = leftSide.hasLoop();
    int right = firstLine(rightSide, left, end);
    if (right != noLine && !single) rightSum = 0;
    right = addRightLines(right, end, single);
    if (rightSide2.hasSegment()) addRight2Lines(right, end);
    compare(0, rightSum - right2Sum, right, left, leftValue);
}
