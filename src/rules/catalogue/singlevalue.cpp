// Single values: rules 27, 40, 41, 60, 61.
#include "rules/catalogue/singlevalue.h"

#include <cstdlib>

#include "common/text.h"

namespace {

constexpr std::size_t digitsDemanded = 10;

/// The pattern is a word of the record. It is compared as it stands, and is no regular expression.
constexpr char tenDigitsPattern[] = "[0-9]{10}";

bool isTenDigits(char const* text) {
    return text && std::strlen(text) == digitsDemanded && std::strspn(text, "0123456789") == digitsDemanded;
}

/// The element right behind the first one of a side: a position that the record does not name.
char* elementBehind(Rule& rule, SideOfRule const& side, int line) {
    auto const position = static_cast<int>(static_cast<unsigned>(side.elementPositions[0]) + 1U);
    return rule.elementOf(line, position);
}

/// The right line behind a flagged line, if there is one and the right side demands what the element behind the flagged
/// one does not have; else no line. A demand that is not the pattern can't be met.
int violatedRightLine(Rule& rule, int line, char const* behind) {
    int const rightLine = rule.firstLine(rule.rightSide, line, noLine);
    char* const demand = rule.rightSide.firstValue();
    if (rightLine == noLine || !isPresent(demand)) return noLine;
    return equal(demand, tenDigitsPattern) && isTenDigits(behind) ? noLine : rightLine;
}

/// An entry equals a text where the text is there, an empty one included.
bool isEntry(SideOfRule& side, int index, char const* text) {
    return text && equal(side.values.GetElement(index), text);
}

}  // namespace

int Rule27::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    int left = firstLine(leftSide, begin, end);
    do {
        checkScope(left, end);
        GetNextOuterLoopScope(&begin, &end);
        left = firstLine(leftSide, begin, end);
    } while (begin >= 0);
    return result;
}

void Rule27::checkScope(int left, int end) {
    bool satisfied = false;
    for (long ordinal = 1; left != noLine; left = nextLine(leftSide, left, end), ++ordinal) {
        if (!isPresent(leftValue.read(left)) || satisfied || !isListed(ordinal)) continue;
        satisfied = isAccompanied(left, end);
        if (satisfied) continue;
        RecordError(noLine, left, " ", " ");
        result = 0;
    }
}

bool Rule27::isListed(long ordinal) {
    for (int index = 0; index < leftSide.values.fieldCount(); ++index) {
        char* const entry = leftSide.values.GetElement(index);
        if (*entry != '\0' && std::strtol(entry, nullptr, 10) == ordinal) return true;
    }
    return false;
}

/// The left line itself has to be a right line; the value may stand on a later one.
bool Rule27::isAccompanied(int leftLine, int end) {
    int right = firstLine(rightSide, leftLine, leftLine);
    if (right == noLine) return false;
    if (!rightSide.firstValue()) return true;
    for (; right != noLine; right = nextLine(rightSide, right, end))
        if (hasRightValue(right)) return true;
    return false;
}

bool Rule27::hasRightValue(int rightLine) {
    char* const text = valueOf(rightSide, rightLine);
    for (int index = 0; index < rightSide.values.fieldCount(); ++index)
        if (isEntry(rightSide, index, text)) return true;
    return false;
}

// The search is not bound to the scope: the first pass takes all left lines, and later scopes find none.
int Rule40::ValidateRule() {
    int result = 1;
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    do {
        for (int line = firstLine(leftSide, noLine, noLine); line != noLine; line = nextLine(leftSide, line, noLine)) {
            if (!isPresent(leftSide.firstValue())) continue;
            char* const text = valueOf(leftSide, line);
            if (!isSamePresent(text, leftSide.firstValue())) continue;
            RecordError(line, line, text, text);
            result = 0;
        }
        GetNextOuterLoopScope(&begin, &end);
    } while (begin >= 1);
    return result;
}

int Rule41::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    while (begin >= 1) {
        checkScope(begin);
        GetNextOuterLoopScope(&begin, &end);
    }
    return result;
}

void Rule41::checkScope(int begin) {
    int line = firstLine(leftSide, noLine, noLine);
    if (line == noLine) {
        RecordError(begin, begin, leftSide.segmentId(), leftSide.segmentId());
        result = 0;
    }
    for (; line != noLine; line = nextLine(leftSide, line, noLine)) {
        if (!isPresent(leftSide.firstValue())) return;  // the next scope goes on from here
        char* const text = valueOf(leftSide, line);
        if (text && equal(text, leftSide.firstValue())) continue;
        RecordError(line, line, text, text);
        result = 0;
    }
}

// As in Rule40, the first pass takes all left lines.
int Rule60::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    do {
        for (int line = firstLine(leftSide, noLine, noLine); line != noLine; line = nextLine(leftSide, line, noLine))
            if (isPresent(leftSide.firstValue())) checkLine(line);
        GetNextOuterLoopScope(&begin, &end);
    } while (begin > 0);
    return result;
}

void Rule60::checkLine(int line) {
    char* const flagged = valueOf(leftSide, line);
    char* const behind = elementBehind(*this, leftSide, line);
    for (int index = 0; index < leftSide.values.fieldCount(); ++index) {
        if (!isEntry(leftSide, index, flagged)) continue;
        int const rightLine = violatedRightLine(*this, line, behind);
        if (rightLine == noLine) continue;
        RecordError(rightLine, line, valueOf(rightSide, rightLine), flagged);
        result = 0;
    }
}

int Rule61::ValidateRule() {
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    while (begin > 0) {
        if (begin != end) checkScope(begin, end);
        GetNextOuterLoopScope(&begin, &end);
    }
    return result;
}

void Rule61::checkScope(int begin, int end) {
    int const left = firstLine(leftSide, begin, end, 0);
    if (left != noLine && (!isPresent(valueOf(leftSide, left)) || !isPresent(leftSide2.firstValue()))) return;
    for (int line2 = firstLine(leftSide2, begin, end); line2 != noLine; line2 = nextLine(leftSide2, line2, end))
        checkLine(line2, left);
}

void Rule61::checkLine(int line2, int leftLine) {
    if (!isPresent(leftSide2.firstValue())) return;
    char* const flagged = valueOf(leftSide2, line2);
    char* const behind = elementBehind(*this, leftSide2, line2);
    for (int index = 0; index < leftSide2.values.fieldCount(); ++index) {
        if (!isEntry(leftSide2, index, flagged)) continue;
        int const rightLine = violatedRightLine(*this, line2, behind);
        if (rightLine != noLine) fault(line2, leftLine, rightLine, flagged, behind);
    }
}

/// With a left line, the leftSide2 line stands in the place of the right line, which is not reported.
void Rule61::fault(int line2, int leftLine, int rightLine, char const* flagged, char const* behind) {
    result = 0;
    if (leftLine != noLine) {
        RecordError(line2, leftLine, behind, flagged);
        return;
    }
    DirectFinding const right = {rightLine, rightSide.elementPositions[0], rightSide.segmentId(), rightSide.loopId(),
                                 valueOf(rightSide, rightLine)};
    DirectFinding const left2 = {line2, leftSide2.elementPositions[0], leftSide2.segmentId(), leftSide2.loopId(),
                                 behind};
    recordDirectly(*this, {right, left2}, {left2, right});
}
