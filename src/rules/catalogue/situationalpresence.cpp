// Situational presence: rules 28, 29, 30, 51, 52.
#include "rules/catalogue/situationalpresence.h"

#include "common/text.h"

namespace {

constexpr char absentMark[] = "ABSENT()";

bool demandsAbsence(SideOfRule& side) {
    return isSamePresent(side.firstValue(), absentMark);
}

/// Whether the value list of a side lets a text through. Behind "ABSENT()", the list is read as any value but these.
bool passesValues(SideOfRule& side, char const* text) {
    int const count = side.values.fieldCount();
    if (count == 0) return true;
    if (!demandsAbsence(side)) return isInList(side, text);
    if (count == 1) return false;
    for (int index = 1; index < count; ++index)
        if (isSamePresent(side.values.GetElement(index), text)) return false;
    return true;
}

/// Whether a text is the first value of a side, or anything at all where the side has no values.
bool isDemanded(SideOfRule& side, char const* text) {
    return isPresent(text) && (!side.firstValue() || equal(text, side.firstValue()));
}

}  // namespace

int Rule28::ValidateRule() {
    if (outerSide != leftIsOuter) return 1;
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    int left = firstLine(leftSide, begin, end);
    do {
        checkScope(left, end);
        GetNextOuterLoopScope(&begin, &end);
        left = firstLine(leftSide, begin, end);  // behind the last scope too: it splits a line that no step looks at
    } while (begin >= 0);
    return result;
}

void Rule28::checkScope(int firstLeft, int end) {
    int left = firstLeft;
    while (left != noLine && !isForbidding(left))
        left = nextLine(leftSide, left, end);
    if (left != noLine) forbidRightLines(left, end);
}

bool Rule28::isForbidding(int leftLine) {
    return isSamePresent(valueOf(leftSide, leftLine), leftSide.firstValue()) &&
           firstLine(leftSide2, leftLine, leftLine) == noLine;
}

void Rule28::forbidRightLines(int leftLine, int end) {
    int right = firstLine(rightSide, leftLine + 1, end);
    for (; right != noLine; right = nextLine(rightSide, right, end)) {
        if (!isSamePresent(valueOf(rightSide, right), rightSide.firstValue())) continue;
        RecordError(right, leftLine, " ", " ");
        result = 0;
    }
}

int Rule29::ValidateRule() {
    walkScopes(1, [this](int begin, int end) {
        if (begin >= 1) checkScope(begin, end);
    });
    return 1;
}

void Rule29::checkScope(int begin, int end) {
    if (!isLeftMet(begin, end) || !isLeft2Met(end)) return;
    bool const isMet = isRightMet(begin, end);
    if (!rightSide2.hasSegment()) {
        if (!isMet) reportMissingRight();
    } else if (isMet && !isRight2Met(begin, end)) {
        reportMissingRight2();
    }
}

bool Rule29::isLeftMet(int begin, int end) {
    for (leftLine = firstLine(leftSide, begin, end); leftLine != noLine; leftLine = nextLine(leftSide, leftLine, end)) {
        leftText = leftValue.read(leftLine);
        if (isPresent(leftText) && passesValues(leftSide, leftText)) return true;
    }
    return false;
}

bool Rule29::isLeft2Met(int end) {
    if (leftSide2.elementCount == 0) return true;
    bool isSeen = false;
    left2Line = firstLine(leftSide2, leftLine, end);
    for (; left2Line != noLine; left2Line = nextLine(leftSide2, left2Line, end)) {
        if (!isPresent(valueOf(leftSide2, left2Line))) continue;
        char* const text = left2Value.read(left2Line);
        if (!text) {
            if (demandsAbsence(leftSide2)) return isSeen;
            continue;
        }
        isSeen = true;
        if (passesValues(leftSide2, text)) return true;
    }
    return !isSeen && demandsAbsence(leftSide2);
}

/// Unlike on leftSide2, an empty text is not seen, and an empty element may lack its sub-element. A missing sub-element
/// under "ABSENT()" breaks the condition unless a line was seen before it.
bool Rule29::isRightMet(int begin, int end) {
    bool isSeen = false;
    rightTextLine = noLine;
    rightLine = firstLine(rightSide, begin, end);
    for (; rightLine != noLine; rightLine = nextLine(rightSide, rightLine, end)) {
        if (!valueOf(rightSide, rightLine)) continue;
        char* const text = rightValue.read(rightLine);
        if (!text) {
            if (demandsAbsence(rightSide)) return isSeen;
            continue;
        }
        rightTextLine = rightLine;
        if (!isPresent(text)) continue;
        isSeen = true;
        if (passesValues(rightSide, text)) return true;
    }
    return !isSeen && demandsAbsence(rightSide);
}

bool Rule29::isRight2Met(int begin, int end) {
    for (int line = firstLine(rightSide2, begin, end); line != noLine; line = nextLine(rightSide2, line, end)) {
        char* const text = valueOf(rightSide2, line);
        if (!isPresent(text)) continue;
        right2Text = text;
        right2Demanded = rightSide2.firstValue();
        if (isDemanded(rightSide2, text)) return true;
    }
    return false;
}

void Rule29::reportMissingRight() {
    if (rightSide.elementPositions[0] != 0)
        RecordError(rightLine, leftLine, nullptr, leftText);
    else
        recordPair(left2Line);
}

void Rule29::reportMissingRight2() {
    if (right2Demanded) {
        RecordError(noLine, noLine, right2Text, right2Demanded);
    } else if (rightSide2.elementPositions[0] != 0) {
        char* const rightText = rightTextLine == noLine ? nullptr : rightValue.read(rightTextLine);
        RecordError(rightLine, leftLine, rightText, nullptr);
    } else {
        recordPair(rightLine);
    }
}

/// That ids of different sides stand in one finding is meant.
void Rule29::recordPair(int otherLine) {
    recordDirectly(*this,
                   {{otherLine, 0, rightSide2.segmentId(), rightSide2.loopId(), " "},
                    {leftLine, leftSide.elementPositions[0], leftSide.segmentId(), leftSide.loopId(), " "}},
                   {{leftLine, 0, leftSide2.segmentId(), leftSide.loopId(), " "},
                    {otherLine, rightSide.elementPositions[0], rightSide.segmentId(), rightSide.loopId(), " "}});
}

int Rule30::ValidateRule() {
    walkScopes(1, [this](int begin, int end) {
        if (begin >= 1) checkScope(begin, end);
    });
    return 1;
}

void Rule30::checkScope(int begin, int end) {
    if (isLeftMet(begin, end) || isRightMet(begin, end)) return;
    for (int line = firstLine(rightSide2, begin, end); line != noLine; line = nextLine(rightSide2, line, end)) {
        char* const text = valueOf(rightSide2, line);
        if (!isDemanded(rightSide2, text)) continue;
        RecordError(line, line, text, rightSide2.firstValue() ? rightText : text);
        return;
    }
}

bool Rule30::isLeftMet(int begin, int end) {
    for (int line = firstLine(leftSide, begin, end); line != noLine; line = nextLine(leftSide, line, end))
        if (isDemanded(leftSide, valueOf(leftSide, line))) return true;
    return false;
}

bool Rule30::isRightMet(int begin, int end) {
    for (int line = firstLine(rightSide, begin, end); line != noLine; line = nextLine(rightSide, line, end)) {
        rightText = valueOf(rightSide, line);
        if (isDemanded(rightSide, rightText)) return true;
    }
    return false;
}

int KeyedRuns::ValidateRule() {
    char const* const innerLoop = rightSide2.firstValue();
    if (!isPresent(innerLoop)) return result;
    for (ExplicitScopes scope(*this); scope.next();) {
        int first = ScrollToExplicitLoop(innerLoop, scope.begin);
        RunWalk walk(first);
        for (int passes = 0; first >= 0 && first <= scope.end && passes < walkCap; ++passes) {
            Run const run{scope.begin, scope.end, first, findEnd(innerLoop, first, scope.end)};
            checkRun(run);
            int const next = walk.next(first, ScrollToExplicitLoop(innerLoop, run.last));
            first = next < scope.end ? next : noLine;
        }
    }
    return result;
}

/// For a run that lasts to the end of the list, that is the line before the first run of the list: no line of such a
/// run can be reached.
int KeyedRuns::findEnd(char const* innerLoop, int run, int end) {
    int const behindRun = ScrollThroughExplicitLoop(innerLoop, run);
    int const last = ScrollToExplicitLoop(innerLoop, behindRun) - 1;
    return last > end || last < 0 ? end : last;
}

void KeyedRuns::readKey(Run const& run) {
    char* const headCode = elementOf(run.first, codeElement);
    if (!rightSide2.hasSegment()) {
        key = headCode;
        return;
    }
    int const keyLine = firstLine(rightSide2, run.first, run.last);
    if (keyLine > 0) key = valueOf(rightSide2, keyLine);
}

int KeyedRuns::findInRun(SideOfRule& side, Run const& run) {
    int line = firstLine(side, run.first, run.last);
    if (!isPresent(side.firstValue())) return line;
    for (; line != noLine; line = nextLine(side, line, run.last)) {
        lastCode = elementOf(line, codeElement);
        if (isSamePresent(lastCode, side.firstValue())) return line;
    }
    return noLine;
}

void Rule51::checkRun(Run const& run) {
    if (!leftSide.hasSegment()) return;
    int const left = findInRun(leftSide, run);
    if (left == noLine) return;
    readKey(run);
    if (rightSide.hasSegment() && hasRightLineWithKey(run)) return;
    if (leftSide2.hasSegment() && findInRun(leftSide2, run) != noLine) return;
    RecordError(noLine, left, key, nullptr);
    result = 0;
}

bool Rule51::hasRightLineWithKey(Run const& run) {
    int right = firstLine(rightSide, run.begin, run.end);
    while (right != noLine && !isSamePresent(elementOf(right, codeElement), key))
        right = nextLine(rightSide, right, run.end);
    return right != noLine;
}

// The last line of the scope is not examined.
void Rule52::checkRun(Run const& run) {
    readKey(run);
    if (!rightSide.hasSegment()) return;
    int right = firstLine(rightSide, run.begin, run.end);
    for (int passes = 0; right > 0 && right < run.end && passes < walkCap; ++passes) {
        if (isSamePresent(elementOf(right, codeElement), key)) checkRightLine(run, right);
        right = lineBehind(rightSide, right, run.end);
    }
}

void Rule52::checkRightLine(Run const& run, int rightLine) {
    int const endOfLoop = FindEndOfLoop(rightSide);
    int const limit = endOfLoop > run.end || endOfLoop < 0 ? run.end : endOfLoop;
    int const left = leftSide.hasSegment() ? findInRun(leftSide, run) : noLine;
    bool const isFound = left != noLine;
    if (isPresent(leftSide2.firstValue())) {
        if (isFound) judgeFound(left, rightLine, limit);
    } else if (!isFound) {
        fault(rightLine, noLine);
    }
}

/// A leftSide2 line in the right line's own loop is a fault with either kind of value. That is meant: the value decides
/// the form of the report and not the sense of the test. Were another value than "ABSENT()" to demand the line, such
/// faults would go silent, and runs that are in order would be reported.
void Rule52::judgeFound(int leftLine, int rightLine, int limit) {
    if (demandsAbsence(leftSide2) && !leftSide2.hasSegment()) {
        fault(rightLine, leftLine);
        return;
    }
    int const left2 = firstLine(leftSide2, rightLine, limit);
    if (left2 != noLine) recordPair(leftLine, left2);
}

void Rule52::recordPair(int leftLine, int left2Line) {
    char* const value = leftSide.firstValue();
    char* const value2 = leftSide2.firstValue();
    bool const isCrosswise = demandsAbsence(leftSide2);
    DirectFinding const left{leftLine, 0, leftSide.segmentId(), leftSide.loopId(), isCrosswise ? value2 : value};
    DirectFinding const left2{left2Line, 0, leftSide2.segmentId(), leftSide2.loopId(), isCrosswise ? value : value2};
    if (isCrosswise)
        recordDirectly(*this, {left, left2}, {left2, left});
    else
        recordDirectly(*this, {left2, left}, {left, left2});
    result = 0;
}

void Rule52::fault(int rightLine, int leftLine) {
    RecordError(rightLine, leftLine, key, lastCode);
    result = 0;
}
