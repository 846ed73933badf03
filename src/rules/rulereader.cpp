// The rule reader.
#include "rules/rulereader.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "common/text.h"
#include "rules/catalogue/catalogue.h"
#include "rules/rules.h"

namespace {

constexpr char recordEnd = '$';
constexpr char fieldDelimiter = '|';
constexpr int fieldsAtMost = 33;
constexpr int fieldsOfSide = 5;

Elements splitBy(char delimiter, char* text) {
    Elements elements;
    elements.text = text;
    elements.length = text ? static_cast<int>(std::strlen(text)) : 0;
    elements.delimiter[0] = delimiter;
    return elements;
}

/// Reads a list of numbers into `positions`, each less `base`. Positions behind the last place are dropped.
int readPositions(Elements& list, int* positions, unsigned base) {
    int count = 0;
    for (int index = 0; index < list.fieldCount() && count < positionsAtMost; ++index) {
        auto const number = static_cast<unsigned>(std::strtol(list.GetElement(index), nullptr, 10));
        positions[count++] = static_cast<int>(number - base);
    }
    return count;
}

/// Reads the five fields of a side: loop id, segment id, element positions, sub-element positions, values.
void readSide(SideOfRule& side, char* const* fields) {
    side.setIds(fields[0], fields[1]);
    if (isPresent(fields[2])) {
        Elements list = splitBy('*', fields[2]);
        side.elementCount = readPositions(list, side.elementPositions, 0);
    }
    if (isPresent(fields[3])) {
        // The rule class may have set another delimiter for this list.
        side.subElementText = splitBy(side.subElementText.delimiter[0], fields[3]);
        side.subElementCount = readPositions(side.subElementText, side.subElementPositions, 1);
    }
    if (isPresent(fields[4])) side.values = splitBy('*', fields[4]);
}

char firstCharacter(char const* field) {
    return field ? field[0] : '\0';
}

int readOuterSide(char const* field) {
    switch (firstCharacter(field)) {
        case 'R':
            return rightIsOuter;
        case 'S':
            return scopeIsOuter;
        default:
            return leftIsOuter;
    }
}

int readErrorOrder(char const* field) {
    switch (firstCharacter(field)) {
        case 'L':
            return leftFirst;
        case 'R':
            return rightFirst;
        default:
            return 0;
    }
}

std::unique_ptr<Rule> readRule(char* record, SharedLists lists) {
    Elements split = splitBy(fieldDelimiter, record);
    char* fields[fieldsAtMost];
    for (int index = 0; index < fieldsAtMost; ++index)
        fields[index] = split.GetElement(index);

    if (!lists.segLists) throwFailure();
    std::unique_ptr<Rule> rule = makeRule(std::strtol(fields[0], nullptr, 10), *lists.segLists);
    rule->segLists = lists.segLists;
    rule->errorInfos = lists.errorInfos;
    rule->contents = lists.contents;
    rule->outerSide = readOuterSide(fields[1]);
    rule->scopeSegmentId = fields[2];
    rule->ruleArgument3 = fields[3];
    char* const* sideFields = fields + 4;
    for (SideOfRule* side : {&rule->leftSide, &rule->leftSide2, &rule->rightSide, &rule->rightSide2}) {
        readSide(*side, sideFields);
        sideFields += fieldsOfSide;
    }
    rule->scopeSide.setIds(fields[24], nullptr);
    rule->scopeText = fields[24];
    rule->errorOrder = readErrorOrder(fields[25]);
    rule->errorCodeText = fields[26];
    rule->txnCodeText = fields[27];
    rule->segCodeText = fields[28];
    rule->messageText = fields[29];
    rule->ruleArgument30 = fields[30];
    rule->ruleArgument31 = fields[31];
    rule->ruleArgument32 = fields[32];
    return rule;
}

}  // namespace

void readRules(char* text, std::size_t length, SharedLists lists, Rules& rules) {
    char* const end = text + length;
    while (text < end) {
        char* record = text;
        auto* terminator = static_cast<char*>(std::memchr(record, recordEnd, static_cast<std::size_t>(end - record)));
        if (!terminator) return;
        *terminator = '\0';
        text = terminator + 1;
        std::unique_ptr<Rule> rule = readRule(record, lists);
        rules.add(rule.get());
        rule.release();
    }
}
