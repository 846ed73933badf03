// Amount balance: rules 31, 37, 38, 39, 53.
#include "rules/catalogue/amountbalance.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "common/text.h"

namespace {

constexpr double tolerance = 0.005;
constexpr double fineTolerance = 0.00001;

bool readAmount(char const* text, double& amount) {
    if (!isNumeric(text)) return false;
    amount = std::strtod(text, nullptr);
    return true;
}

bool addAmount(char const* text, double& sum) {
    double amount = 0;
    bool const isAmount = readAmount(text, amount);
    if (isAmount) sum += amount;
    return isAmount;
}

/// Adds the amounts at all positions of a side on a line.
void addAmounts(Rule& rule, SideOfRule const& side, int line, double& sum) {
    for (int index = 0; index < side.elementCount; ++index)
        addAmount(rule.elementOf(line, side.elementPositions[index]), sum);
}

/// A difference that is not a number is none.
bool differ(double first, double second) {
    return first - second > tolerance || second - first > tolerance;
}

/// Unlike isInList, an empty text equals an empty value.
bool isAmongValues(SideOfRule& side, char const* text) {
    for (int index = 0; text && index < side.values.fieldCount(); ++index)
        if (equal(side.values.GetElement(index), text)) return true;
    return false;
}

}  // namespace

int Rule31::ValidateRule() {
    int const last = segLists->count - 1;
    int const left = firstLine(leftSide, 0, last);
    char* const statedText = left == noLine ? nullptr : valueOf(leftSide, left);
    double stated = 0;
    readAmount(statedText, stated);

    double total = 0;
    bool hasLine = false;
    for (SideOfRule* side : {&leftSide2, &rightSide, &rightSide2}) {
        if (!side->hasSegment()) continue;
        for (int line = firstLine(*side, left + 1, last); line > 0; line = lineBehind(*side, line, last)) {
            addAmount(valueOf(*side, line), total);
            hasLine = true;
        }
    }
    if (!hasLine || !(differ(stated, total) || std::isnan(stated - total))) return 1;
    RecordError(noLine, left, nullptr, statedText);
    return 0;
}

int RunBalance::ValidateRule() {
    constexpr int exemptionElement = 19;
    char const* const scopeLoop = scopeSide.loopId();
    int begin = ScrollToExplicitLoop(scopeLoop, noLine);
    for (int passes = 0; begin >= 1 && passes < walkCap; ++passes) {
        int const end = findEnd(begin);
        if (!isSamePresent(elementOf(begin, exemptionElement), "PB")) walkRuns(begin, end);
        // A list that ends inside the loop would give its last scope again and again.
        int const next = ScrollToExplicitLoop(scopeLoop, end);
        begin = next > begin ? next : noLine;
    }
    return result;
}

/// Where the run lasts to the end of the list, its last line comes out as -2, from which no search finds anything; the
/// line behind it, -1, would let the search begin at the front of the list. Such a scope ends before the trailer.
int RunBalance::findEnd(int begin) {
    int const lastOfRun = ScrollThroughExplicitLoop(scopeSide.loopId(), begin) - 1;
    int const end = ScrollToExplicitLoop(scopeSide.loopId(), lastOfRun) - 1;
    return end > 0 ? end : segLists->count - 2;
}

void RunBalance::walkRuns(int begin, int end) {
    char const* const loop = innerLoop();
    int head = loop ? ScrollToExplicitLoop(loop, begin) : noLine;
    RunWalk walk(head);
    for (int passes = 0; head >= 0 && head <= end && passes < walkCap; ++passes) {
        Run const run{begin, end, head, ScrollThroughExplicitLoop(loop, head)};
        readKey(run);
        checkRun(run);
        int const next = walk.next(head, ScrollToExplicitLoop(loop, run.behind));
        head = next < end ? next : noLine;
    }
}

void RunBalance::readKey(Run const& run) {
    char* const headCode = elementOf(run.head, codeElement);
    if (!rightSide2.hasSegment()) {
        key = headCode;
        return;
    }
    int const keyLine = ScrollToExplicitLoop(rightSide2.loopId(), run.behind);
    if (keyLine >= 1 && keyLine <= run.end) key = valueOf(rightSide2, keyLine);
}

void Rule37::checkRun(Run const& run) {
    double stated = 0;
    bool const isStated = readStated(run, stated);

    double deduction = 0;
    int const last = run.behind - 1;  // -2 for a run that lasts to the end of the list: it has no such line
    for (int line = firstLine(leftSide2, run.head + 1, last); line != noLine; line = nextLine(leftSide2, line, last))
        addAmounts(*this, leftSide2, line, deduction);

    double sum = 0;
    bool hasAmount = false;
    for (int right = firstLine(rightSide, run.begin, run.end); right != noLine;
         right = nextLine(rightSide, right, run.end))
        if (isSamePresent(elementOf(right, codeElement), key) && addAmount(valueOf(rightSide, right), sum))
            hasAmount = true;

    if (!hasAmount || !isStated || !differ(stated, sum - deduction)) return;
    RecordError(noLine, statedLine, nullptr, statedText);
    result = 0;
}

/// The first line with the demanded code counts, also where its amount is not numeric.
bool Rule37::readStated(Run const& run, double& stated) {
    int const last = run.behind - 1;
    int line = firstLine(leftSide, run.head + 1, last);
    while (line != noLine && !isSamePresent(elementOf(line, codeElement), leftSide.firstValue()))
        line = nextLine(leftSide, line, last);
    if (line == noLine) return false;
    statedLine = line;
    statedText = valueOf(leftSide, line);
    return readAmount(statedText, stated);
}

// A left amount that is not numeric leaves that of the line before in force.
void Rule38::checkRun(Run const& run) {
    double stated = 0;
    int left = firstLine(leftSide, run.begin, run.end);
    while (left > 0) {
        int const blockEnd = lineBehind(leftSide, left, run.end) - 2;
        int const last = blockEnd < 0 ? run.end : blockEnd;
        char* const statedText = valueOf(leftSide, left);
        readAmount(statedText, stated);
        Block const block = addUp(left, last);
        if (block.hasAmount && differ(stated, block.sum + block.adjustment)) {
            RecordError(noLine, left, nullptr, statedText);
            result = 0;
        }
        // Two left lines in a row: the block ends before the first of them, which would be found again.
        int const next = firstLine(leftSide, last + 1, run.end);
        left = next > left ? next : noLine;
    }
}

Rule38::Block Rule38::addUp(int first, int last) {
    Block block;
    int right = firstLine(rightSide, first, last);
    while (right != noLine) {
        int const nextRight = lineBehind(rightSide, right, last);
        int const lastOfRight = nextRight == noLine ? last : nextRight - 1;
        if (isSamePresent(elementOf(right, codeElement), key)) {
            if (addAmount(valueOf(rightSide, right), block.sum)) block.hasAmount = true;
            for (int line = firstLine(leftSide2, right, lastOfRight); line != noLine;
                 line = nextLine(leftSide2, line, lastOfRight))
                addAmounts(*this, leftSide2, line, block.adjustment);
        }
        right = nextRight;
    }
    return block;
}

int Rule39::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    for (int passes = 0; begin >= 0 && passes < walkCap && checkScope(begin, end); ++passes)
        GetNextOuterLoopScope(&begin, &end);
    return result;
}

/// Answers false where the rule ends. That a left side without elements stops every scope that has a filter is meant:
/// such a side states nothing that could be compared.
bool Rule39::checkScope(int begin, int end) {
    int const left = firstLine(leftSide, begin, end);
    double stated = 0;
    if (left != noLine && leftSide.elementCount != 0) readAmount(valueOf(leftSide, left), stated);
    if (isPresent(leftSide2.firstValue())) {
        int const filterLine = firstLine(leftSide2, begin, end);
        if (filterLine == noLine) return false;
        if (leftSide.elementCount == 0 || !isAmongValues(leftSide2, valueOf(leftSide2, filterLine))) return true;
    }
    compare(stated, left != noLine, begin, end);
    return true;
}

/// The left line shown is the begin of the scope. The right2 lines are looked for from the line behind it on.
void Rule39::compare(double stated, bool isStated, int begin, int end) {
    int const right = firstLine(rightSide, begin, end);
    double const rightSum = addUp(rightSide, right, end);
    int const right2 = firstLine(rightSide2, begin + 1, end);
    double const total = rightSum + addUp(rightSide2, right2, end);
    if (!differ(stated, total)) return;

    constexpr int textSize = 64;  // more than a finding shows
    char totalText[textSize];
    char statedText[textSize];
    std::snprintf(totalText, sizeof totalText, "%.02f", total);
    std::snprintf(statedText, sizeof statedText, "%.02f", stated);
    RecordError(right == noLine ? right2 : right, begin, totalText, isStated ? statedText : " ");
    result = 0;
}

/// A first line of 0 ends the walk, as none does.
double Rule39::addUp(SideOfRule& side, int firstTaken, int end) {
    char* const code = side.firstValue();
    double sum = 0;
    for (int line = firstTaken; line > 0; line = lineBehind(side, line, end))
        if (side.elementCount != 0 && (!isPresent(code) || isSamePresent(elementOf(line, codeElement), code)))
            addAmounts(*this, side, line, sum);
    return sum;
}

int Rule53::ValidateRule() {
    int passes = 0;  // through all scopes
    for (ExplicitScopes scope(*this); scope.next();) {
        int const left = firstLine(leftSide, scope.begin, scope.end, 0);
        if (left == noLine) continue;
        char* const leftText = valueOf(leftSide, left);
        double const amount = leftText ? std::strtod(leftText, nullptr) : 0;
        int right = firstLine(rightSide, scope.begin, scope.end);
        for (; right != noLine && passes < walkCap; ++passes) {
            if (rightSide.elementCount != 0) checkRightLine(right, left, amount, leftText);
            right = nextLine(rightSide, right, scope.end);
        }
    }
    return result;
}

void Rule53::checkRightLine(int rightLine, int leftLine, double amount, char const* leftText) {
    if (!isSamePresent(valueOf(rightSide, rightLine), rightSide.firstValue()) || !rightSide2.hasSegment()) return;
    char* const otherText = valueOf(rightSide2, rightLine);
    if (!otherText || std::fabs(amount - std::strtod(otherText, nullptr)) < fineTolerance) return;
    if (leftText) RecordError(rightLine, leftLine, nullptr, leftText);
    result = 0;
}
