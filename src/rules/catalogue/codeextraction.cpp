// Code extraction: rule 70, and what it shares with the rules for qualified codes.
#include "rules/catalogue/codeextraction.h"

#include "common/text.h"
#include "rules/contents.h"

char const* CompanionText::read(int line, int end, int positionIndex) {
    if (side.elementCount < 1) return literal;
    int const companionLine = rule.firstLine(side, line, end);
    if (companionLine != noLine) {
        found = rule.elementOf(companionLine, side.elementPositions[positionIndex]);
        if (side.subElementCount != 0) {
            rule.lastSubElementNumber = side.subElementNumber(0);
            parts.split(found, rule.segLists->subElementDelimiter);
            found = parts.at(side.subElementPositions[0]);
        }
    }
    return isPresent(found) ? found : "_NONE_";
}

bool equalsHead(char const* subElement, char const* element) {
    std::size_t const headLength = std::strcspn(element, ":");
    return std::strlen(subElement) == headLength && std::memcmp(subElement, element, headLength) == 0;
}

int Rule70::ValidateRule() {
    return ProcessLeftSideAsOuter();
}

int Rule70::ProcessLeftSideAsOuter() {
    walkScopes(0, [this](int begin, int end) {
        for (int line = firstLine(leftSide, begin, end); line != noLine; line = lineBehind(leftSide, line, end)) {
            for (int index = 0; index < leftSide.elementCount; ++index)
                extract(line, end, index);
            firstCell = secondCell = secondText = nullptr;
            isJoining = false;
        }
    });
    return 1;
}

void Rule70::extract(int line, int end, int index) {
    int const element = leftSide.elementPositions[index];
    firstCell = elementOf(line, element);
    if (!firstCell || !readCells(firstCell)) return;
    readSecondText(line);
    char const* keyText = key.read(line, end, 0);
    char const* dateText = date.read(line, end, 0);

    if (!secondCell && !secondText && !std::strchr(firstCell, '^')) {
        addContent(line, element, recordSubElement(), firstCell, keyText, dateText);
        return;
    }
    takeCell(line, firstCell, keyText, dateText);
    if (secondCell) takeCell(line, secondCell, keyText, dateText);
    if (!isJoining) return;
    if (secondText) joined.append(secondText);
    lastSubElementNumber = 0;
    reportSubElementNumber = 1;
    addContent(line, element, 0, joined.text(), keyText, dateText);
}

/// Takes the chosen sub-elements of an element into the cells, of which the first two count. Answers false if the first
/// is not there. Once a first sub-element has equalled the head of its element, all records show sub-element 0, until a
/// joined text is recorded.
bool Rule70::readCells(char* element) {
    if (leftSide.subElementCount == 0) return true;
    joined.clear();
    isJoining = true;
    parts.split(element, segLists->subElementDelimiter);
    for (int index = 0; index < leftSide.subElementCount && index < cellsAtMost; ++index) {
        char* const cell = parts.at(leftSide.subElementPositions[index]);
        if (index == 0) firstCell = cell;
        if (index == 1) secondCell = cell;
        if (cell) lastSubElementNumber = leftSide.subElementNumber(index);
        if (index == 0 && cell && equalsHead(cell, element)) reportSubElementNumber = 0;
    }
    return firstCell != nullptr;
}

/// The second text stands on the line itself, if that is a line of leftSide2.
void Rule70::readSecondText(int line) {
    if (GetNextLineForSide(leftSide2, line, line, 1) == noLine) return;
    secondText = valueOf(leftSide2, line);
    if (leftSide2.subElementCount == 0) return;
    secondParts.split(secondText, segLists->subElementDelimiter);
    secondText = secondParts.at(leftSide2.subElementPositions[0]);
    if (secondText) lastSubElementNumber = leftSide2.subElementNumber(0);
}

/// A cell that holds a list gives a record for each piece, under the first position of the side whichever the element
/// at hand is. Any other cell goes into the joined text.
void Rule70::takeCell(int line, char* cell, char const* keyText, char const* dateText) {
    if (!std::strchr(cell, '^')) {
        if (!isJoining) joined.clear();
        isJoining = true;
        joined.append(cell);
        return;
    }
    listPieces.split(cell, '^');
    for (int index = 0; char const* piece = listPieces.at(index); ++index)
        if (*piece != '\0')
            addContent(line, leftSide.elementPositions[0], recordSubElement(), piece, keyText, dateText);
}

void Rule70::addContent(int line, int element, int subElement, char const* value, char const* keyText,
                        char const* dateText) {
    contents->add(line + 1, element, subElement, leftSide.segmentId(), value, "QualVal", keyText, dateText,
                  ruleArgument32, ruleArgument30, ruleArgument31, errorCodeText, leftSide.loopId(), txnCodeText,
                  segCodeText, messageText);
}
