// Cross-line comparison: rules 24, 25, 26, 42, 48, 49, 50.
#include "rules/catalogue/crosslinecomparison.h"

#include <algorithm>
#include <climits>
#include <iterator>

#include "common/text.h"

namespace {

/// A filter stops a line only where both the side's text and its first value are there and differ.
bool passesFilter(Rule& rule, SideOfRule& side, int line) {
    if (side.elementCount == 0) return true;
    char* const text = rule.valueOf(side, line);
    char* const demanded = side.firstValue();
    return !isPresent(text) || !isPresent(demanded) || equal(text, demanded);
}

/// The mark that exempts the text "U".
bool isExempt(SideOfRule& side, char const* text) {
    char* const mark = side.firstValue();
    return mark && equal(mark, "NOT(U)") && equal(text, "U");
}

bool isFirstValue(SideOfRule& side, char const* text) {
    char* const value = side.firstValue();
    return value && equal(value, text);
}

/// What rules 48 and 49 take for a scope that no further run of the loop ends: the last line of the list is no part of
/// it.
int lastLineButOne(Rule const& rule) {
    return rule.segLists->count - 2;
}

}  // namespace

int Rule24::ValidateRule() {
    for (ExplicitScopes scope(*this); scope.next();)
        checkScope(scope.begin, scope.end);
    return result;
}

/// Line 0 is never a line here.
Rule24::CountedLine Rule24::countedLine(SideOfRule& side, int begin, int end) {
    int const line = firstLine(side, begin, end);
    return {line, line < 1 ? -1 : (*segLists)[line].elements.fieldCount()};
}

void Rule24::checkScope(int begin, int end) {
    CountedLine const left = countedLine(leftSide, begin, end);
    CountedLine const left2 = countedLine(leftSide2, begin, end);
    if ((left.count < 1 && left2.count < 1) || !rightSide.hasLoop()) return;
    int run = ScrollToExplicitLoop(rightSide.loopId(), begin);
    RunWalk walk(run);
    for (int passes = 0; run >= begin && run <= end && passes < walkCap; ++passes) {
        int const behindRun = ScrollThroughExplicitLoop(rightSide.loopId(), run);
        int const lastOfRun = ScrollToExplicitLoop(rightSide.loopId(), behindRun) - 1;
        int const runEnd = lastOfRun < 0 ? end : lastOfRun;
        compareWithRun(left, left2, run, runEnd);
        run = walk.next(run, ScrollToExplicitLoop(rightSide.loopId(), runEnd));
    }
}

/// Two absent lines are equal in count: the lines of the other pair decide then.
void Rule24::compareWithRun(CountedLine left, CountedLine left2, int run, int runEnd) {
    CountedLine const right = countedLine(rightSide, run, runEnd);
    CountedLine const right2 = countedLine(rightSide2, run, runEnd);
    bool firstDiffers = false;
    bool secondDiffers = false;
    if (right.count > 0 && right.count == left.count) {
        firstDiffers = !haveSameElements(left, right);
        if (!firstDiffers && right2.count == 0 && left2.count == 0) fault(right.line, left.line);
    }
    if (right2.count > 0 && right2.count == left2.count) {
        secondDiffers = !haveSameElements(left2, right2);
        if (!secondDiffers && right.count == 0 && left.count == 0) fault(right2.line, left2.line);
    }
    bool const hasText = left.count != 0 && left2.count != 0 && right.count != 0 && right2.count != 0;
    bool const isEqualInCount = left.count == right.count && left2.count == right2.count;
    if (hasText && isEqualInCount && !firstDiffers && !secondDiffers) fault(right.line, left.line);
}

/// Position 0, the segment id, is not compared.
bool Rule24::haveSameElements(CountedLine left, CountedLine right) {
    for (int position = 1; position < right.count; ++position) {
        char* const leftElement = elementOf(left.line, position);
        char* const rightElement = elementOf(right.line, position);
        if (!leftElement || !rightElement || !equal(leftElement, rightElement)) return false;
    }
    return true;
}

void Rule24::fault(int rightLine, int leftLine) {
    RecordError(rightLine, leftLine, nullptr, nullptr);
    result = 0;
}

int Rule25::ValidateRule() {
    bool const mustAgree = scopeText && equal(scopeText, "B");
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    do {
        checkScope(mustAgree, begin, end);
        GetNextOuterLoopScope(&begin, &end);
        firstLine(leftSide, begin, end);  // reads a line that no step looks at, which splits it
    } while (begin > 0);
    return 1;
}

void Rule25::checkScope(bool mustAgree, int begin, int end) {
    int line = firstLine(leftSide, begin, end);
    if (line != noLine) leftSeen = scopeHandled = true;
    if (!mustAgree)
        for (; line != noLine; line = lineBehind(leftSide, line, end))
            forbidAgreement(line, begin, end);
    if (mustAgree && !scopeHandled && !leftSeen) demandAgreement(begin, end);
}

void Rule25::forbidAgreement(int line, int begin, int end) {
    scopeHandled = passesFilter(*this, leftSide, line);
    if (!scopeHandled) return;
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end))
        if (passesFilter(*this, rightSide, right) && haveSameElements(line, right)) fault(right, line);
}

void Rule25::demandAgreement(int begin, int end) {
    int line2 = firstLine(leftSide2, begin, end, 0);
    for (; line2 != noLine; line2 = nextLine(leftSide2, line2, end, 0))
        for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end))
            if (passesFilter(*this, rightSide, right) && !haveSameElements(line2, right)) fault(right, noLine);
}

/// Two elements agree where both are absent or empty, or equal. Lines without compared elements agree.
bool Rule25::haveSameElements(int line, int rightLine) {
    for (int index = 0; index < rightSide2.elementCount; ++index) {
        char* const left = elementOf(line, leftSide2.elementPositions[index]);
        char* const right = elementOf(rightLine, rightSide2.elementPositions[index]);
        if ((isPresent(left) || isPresent(right)) && !isSamePresent(left, right)) return false;
    }
    return true;
}

/// The segment ids are given crosswise: each reaches the report as the value of the other side.
void Rule25::fault(int rightLine, int leftLine) {
    RecordError(rightLine, leftLine, leftSide.segmentId(), rightSide.segmentId());
}

int Rule26::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    do {
        checkScope(begin, end);
        GetNextOuterLoopScope(&begin, &end);
        firstLine(leftSide, begin, end);  // as in Rule25
    } while (begin > 0);
    return 1;
}

void Rule26::checkScope(int begin, int end) {
    for (int line = firstLine(leftSide, begin, end); line != noLine; line = lineBehind(leftSide, line, end))
        if (passesFilter(*this, leftSide, line)) compareWithRightLines(line, begin, end);
}

void Rule26::compareWithRightLines(int line, int begin, int end) {
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = nextLine(rightSide, right, end)) {
        if (!passesFilter(*this, rightSide, right)) continue;
        join(right);
        char* const text = valueOf(leftSide, line);
        bool const isFault = joined.isEmpty() ? !isPresent(text) : isSamePresent(text, joined.text());
        // The segment ids are given crosswise, as in Rule25.
        if (isFault) RecordError(right, line, leftSide.segmentId(), rightSide.segmentId());
    }
}

void Rule26::join(int rightLine) {
    joined.clear();
    for (int index = 0; index < rightSide2.elementCount; ++index) {
        if (!joined.isEmpty()) joined.append(" ");
        char* const element = elementOf(rightLine, rightSide2.elementPositions[index]);
        if (isPresent(element)) joined.append(element);
    }
}

int Rule42::ValidateRule() {
    if (outerSide != leftIsOuter) return 1;
    if (!leftSide.hasLoop()) {
        checkScope(0, segLists->count - 1);
        return result;
    }
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    for (int passes = 0; begin >= 0 && passes < walkCap; ++passes) {
        checkScope(begin, end);
        GetNextOuterLoopScope(&begin, &end);
    }
    return result;
}

void Rule42::checkScope(int begin, int end) {
    constexpr char trimMark[] = "TRIMRIGHT()";
    int const line = firstLine(leftSide, begin, end);
    if (line == noLine || leftSide.elementCount == 0) return;
    char* const leftText = valueOf(leftSide, line);
    if (!isPresent(leftText)) return;
    for (int right = firstLine(rightSide, begin, end); right != noLine; right = lineBehind(rightSide, right, end)) {
        char* const rightText = rightSide.elementCount == 0 ? nullptr : valueOf(rightSide, right);
        if (!isPresent(rightText)) continue;
        int const trimMode = (isFirstValue(leftSide, trimMark) ? 1 : 0) + (isFirstValue(rightSide, trimMark) ? 2 : 0);
        if (ContentIsTheSame(leftText, rightText, trimMode)) continue;
        RecordError(right, line, rightText, leftText);
        result = 0;
    }
}

int Rule48::ValidateRule() {
    for (ExplicitScopes scope(*this, 1, lastLineButOne(*this)); scope.next();) {
        SideOfRule first = outerSide == rightIsOuter ? rightSide : leftSide;
        SideOfRule second = outerSide == rightIsOuter ? leftSide : rightSide;
        checkScope(first, second, scope);
    }
    return result;
}

void Rule48::checkScope(SideOfRule& first, SideOfRule& second, ExplicitScopes const& scope) {
    int const line = firstLine(first, scope.begin, scope.end);
    if (line == noLine) return;
    char* const text = first.elementCount == 0 ? nullptr : valueOf(first, line);
    if (isPresent(text)) {
        if (isExempt(first, text)) return;
        findRepeats(text, line, second, scope.end);
    }
    lineBehind(first, line, scope.end);  // reads a line that no step looks at, which splits it
}

/// The first line stands in the place of the right line.
void Rule48::findRepeats(char* text, int firstLineOfScope, SideOfRule& second, int end) {
    int line = firstLine(second, firstLineOfScope + 1, end);
    for (int passes = 0; line != noLine && passes < walkCap; ++passes) {
        char* const repeated = valueOf(second, line);
        if (isPresent(repeated) && ContentIsTheSame(repeated, text, 0)) {
            RecordError(firstLineOfScope, line, text, repeated);
            result = 0;
        }
        line = nextLine(second, line, end);
    }
}

int Rule49::ValidateRule() {
    for (ExplicitScopes scope(*this, 1, lastLineButOne(*this)); scope.next();) {
        SideOfRule side = outerSide == rightIsOuter ? rightSide : leftSide;
        checkScope(side, scope);
    }
    return 1;
}

/// The first character alone is compared: "A1" and "A2" collide.
void Rule49::checkScope(SideOfRule& side, ExplicitScopes const& scope) {
    int lineOfCharacter[UCHAR_MAX + 1];
    std::fill(std::begin(lineOfCharacter), std::end(lineOfCharacter), noLine);
    int line = firstLine(side, scope.begin, scope.end);
    for (int passes = 0; line != noLine && passes < walkCap; ++passes) {
        char* const text = side.elementCount == 0 ? nullptr : valueOf(side, line);
        if (isPresent(text)) {
            if (isExempt(side, text)) return;
            int& known = lineOfCharacter[static_cast<unsigned char>(*text)];
            if (known == noLine)
                known = line;
            else
                RecordError(known, line, text, text);
        }
        line = lineBehind(side, line, scope.end);
    }
}

int Rule50::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    while (begin > 0) {
        entryCount = 0;
        collectLeftTexts(begin, end);
        if (entryCount > 0) {
            matchRightTexts(begin, end);
            reportUnmatched();
        }
        GetNextOuterLoopScope(&begin, &end);
    }
    return result;
}

/// A sixteenth text and those behind it are dropped. Equal texts on different lines have an entry each.
void Rule50::collectLeftTexts(int begin, int end) {
    for (int line = firstLine(leftSide, begin, end); line > 0; line = nextLine(leftSide, line, end, 0)) {
        char* const text = valueOf(leftSide, line);
        if (!isPresent(text) || entryCount == entriesAtMost) continue;
        tableEntry& entry = table[entryCount++];
        copyText(entry.text, text, sizeof entry.text - 1);
        entry.text[sizeof entry.text - 1] = '\0';
        entry.line = line;
        entry.matched = false;
    }
}

/// The first right line of each inner scope counts, and no other.
void Rule50::matchRightTexts(int begin, int end) {
    int innerBegin = begin;
    int innerEnd = end;
    GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
    while (innerBegin > 0) {
        lastRight = firstLine(rightSide, innerBegin, innerEnd);
        char* const text = lastRight > 0 ? valueOf(rightSide, lastRight) : nullptr;
        for (int index = 0; index < entryCount; ++index)
            if (isSamePresent(text, table[index].text)) table[index].matched = true;
        GetNextInnerLoopScope(&innerBegin, &innerEnd, begin, end);
    }
}

void Rule50::reportUnmatched() {
    for (int index = 0; index < entryCount; ++index) {
        if (table[index].matched) continue;
        RecordError(lastRight, table[index].line, " ", table[index].text);
        result = 0;
    }
}
