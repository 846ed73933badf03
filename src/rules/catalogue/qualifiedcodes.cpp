// Qualified codes: rule 71.
#include "rules/catalogue/qualifiedcodes.h"

#include "common/text.h"
#include "rules/contents.h"

namespace {

constexpr char negation[] = "NOT";
constexpr char parentheses[] = "()";

/// Whether a text begins with exactly four characters out of "NOT(", and holds the word "NOT" between parentheses or
/// ends.
bool isNegationShaped(char const* text) {
    constexpr char shape[] = "NOT(";
    if (std::strspn(text, shape) != sizeof shape - 1) return false;
    for (text += std::strspn(text, parentheses); *text != '\0'; text += std::strspn(text, parentheses)) {
        std::size_t const length = std::strcspn(text, parentheses);
        if (length == sizeof negation - 1 && std::memcmp(text, negation, length) == 0) return true;
        text += length;
    }
    return false;
}

}  // namespace

int Rule71::ValidateRule() {
    return ProcessLeftSideAsOuter();
}

int Rule71::ProcessLeftSideAsOuter() {
    walkScopes(0, [this](int begin, int end) {
        for (int line = firstLine(leftSide, begin, end); line != noLine; line = lineBehind(leftSide, line, end))
            for (int index = 0; index < leftSide.elementCount; ++index)
                extract(line, end, index);
    });
    return 1;
}

void Rule71::extract(int line, int end, int index) {
    char* const first = leftSide.firstValue();
    if (!isPresent(first)) return;
    char* const qualifier = readQualifier(line, index);
    if (isInList(leftSide, qualifier))
        addMatched(line, end, index, qualifier);
    else if (!qualifier && equal(first, "ABSENT()"))
        addUnmatched(line, index, first);
    else if (qualifier && !equal(qualifier, negation) && isNegationShaped(first))
        addUnmatched(line, index, qualifier);
}

char* Rule71::readQualifier(int line, int index) {
    char* const element = elementOf(line, leftSide.elementPositions[index]);
    if (leftSide.subElementCount == 0) return element;
    qualifierParts.split(element, segLists->subElementDelimiter);
    return qualifierParts.at(leftSide.subElementPositions[0]);
}

void Rule71::addMatched(int line, int end, int index, char const* qualifier) {
    int const element = leftSide2.elementPositions[index];
    char* cells[cellsAtMost] = {elementOf(line, element)};
    if (leftSide2.subElementCount != 0) readCells(cells[0], cells);
    char const* keyText = key.read(line, end, index);
    char const* dateText = date.read(line, end, index);
    if (!cells[1]) {
        if (cells[0]) addContent(line, element, recordSubElement(), cells[0], qualifier, keyText, dateText);
        return;
    }
    for (int cell = 0; cell < cellsAtMost && cells[cell]; ++cell)
        addContent(line, element, leftSide2.subElementNumber(cell), cells[cell], qualifier, keyText, dateText);
}

/// Takes the chosen sub-elements of a code. Once a first one has equalled the head of its code, all records that go by
/// the number of the last sub-element show 0, to the end of the run.
void Rule71::readCells(char* code, char** cells) {
    codeParts.split(code, segLists->subElementDelimiter);
    for (int index = 0; index < leftSide2.subElementCount && index < cellsAtMost; ++index) {
        lastSubElementNumber = leftSide2.subElementNumber(index);
        cells[index] = codeParts.at(leftSide2.subElementPositions[index]);
        if (index == 0 && cells[0] && equalsHead(cells[0], code)) reportSubElementNumber = 0;
    }
}

/// The record shows the first position of the list, whichever the code stands at.
void Rule71::addUnmatched(int line, int index, char const* qualifier) {
    char* code = elementOf(line, leftSide2.elementPositions[index]);
    if (!code) return;
    if (leftSide2.subElementCount != 0) {
        lastSubElementNumber = leftSide2.subElementNumber(0);
        codeParts.split(code, segLists->subElementDelimiter);
        code = codeParts.at(leftSide2.subElementPositions[0]);
    }
    if (code) addContent(line, leftSide2.elementPositions[0], recordSubElement(), code, qualifier, "KeyVal", "DateVal");
}

void Rule71::addContent(int line, int element, int subElement, char const* code, char const* qualifier,
                        char const* keyText, char const* dateText) {
    contents->add(line + 1, element, subElement, leftSide2.segmentId(), code, qualifier, keyText, dateText,
                  ruleArgument32, ruleArgument30, ruleArgument31, errorCodeText, leftSide2.loopId(), txnCodeText,
                  segCodeText, messageText);
}
