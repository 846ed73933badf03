// Occurrence numbering: rule 80.
#include "rules/catalogue/occurrencenumbering.h"

#include <cstdio>

#include "common/text.h"
#include "rules/contents.h"

namespace {

constexpr char countedOnly[] = "INDEX";

}  // namespace

int Rule80::ValidateRule() {
    contentRuleNumber = 80;
    int begin = noLine;
    int end = noLine;
    GetNextOuterLoopScope(&begin, &end);
    do {
        int count = 0;
        for (int line = firstLine(leftSide, noLine, noLine); line != noLine; line = nextLine(leftSide, line, noLine))
            if (isPresent(leftSide.firstValue())) serveLeftLine(line, ++count, begin, end);
        GetNextOuterLoopScope(&begin, &end);
    } while (begin > 0);
    return 1;
}

void Rule80::serveLeftLine(int line, int count, int begin, int end) {
    if (!equal(leftSide.firstValue(), countedOnly)) addNumber(leftSide, line, count);
    if (isPresent(leftSide2.firstValue())) numberLeft2Lines(begin, end);
    if (rightSide.elementCount >= 1) copyRightValues(begin, end);
}

/// All values of a line that are not "INDEX" give the same number.
void Rule80::numberLeft2Lines(int begin, int end) {
    int count = 0;
    for (int line = firstLine(leftSide2, begin, end); line != noLine; line = nextLine(leftSide2, line, end)) {
        ++count;
        for (int index = 0; index < leftSide2.values.fieldCount(); ++index)
            if (!equal(leftSide2.values.GetElement(index), countedOnly)) addNumber(leftSide2, line, count);
    }
}

void Rule80::copyRightValues(int begin, int end) {
    for (int line = firstLine(rightSide, begin, end); line != noLine; line = nextLine(rightSide, line, end))
        if (char const* value = rightValueOf(line)) addContent(rightSide, line, value);
}

/// The element, or its chosen sub-elements joined by '+', where one that is not there is an empty text.
char const* Rule80::rightValueOf(int line) {
    char* const element = valueOf(rightSide, line);
    if (!element || rightSide.subElementCount == 0) return element;
    parts.split(element, segLists->subElementDelimiter);
    joined.clear();
    for (int index = 0; index < rightSide.subElementCount; ++index) {
        if (index > 0) joined.append("+");
        if (char const* part = parts.at(rightSide.subElementPositions[index])) joined.append(part);
    }
    return joined.text();
}

void Rule80::addNumber(SideOfRule const& side, int line, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%7.7d", number);
    addContent(side, line, digits);
}

void Rule80::addContent(SideOfRule const& side, int line, char const* value) {
    contents->add(line + 1, side.elementPositions[0], 0, side.segmentId(), value, "", "", "", ruleArgument32,
                  ruleArgument30, ruleArgument31, "", side.loopId(), "", "", messageText);
}
