// What several families of rules share.
#include "rules/catalogue/ruletools.h"

#include "common/exitparam.h"
#include "common/text.h"
#include "walk/errorinfos.h"

char* SideValue::read(int line) {
    char* value = rule.valueOf(side, line);
    if (side.subElementCount == 0) return value;
    parts.split(value, rule.segLists->subElementDelimiter);
    return parts.at(side.subElementPositions[0]);
}

JoinedText::~JoinedText() {
    std::free(bytes);
}

void JoinedText::append(char const* piece) {
    std::size_t const pieceLength = std::strlen(piece);
    std::size_t const needed = length + pieceLength + 1;
    if (needed > capacity) {
        std::size_t const grown = needed > 2 * capacity ? needed : 2 * capacity;
        bytes = static_cast<char*>(reallocOrThrow(bytes, grown));
        capacity = grown;
    }
    std::memcpy(bytes + length, piece, pieceLength + 1);
    length += pieceLength;
}

ExplicitScopes::ExplicitScopes(Rule& owner, int skipped, int last)
    : rule(owner),
      loopId(isPresent(owner.scopeText) ? owner.scopeText : nullptr),
      skippedLines(skipped),
      lastLine(last) {}

bool ExplicitScopes::next() {
    if (passes == walkCap) return false;
    bool const isFirst = passes++ == 0;
    int found = isFirst ? 0 : noLine;
    if (loopId) found = rule.ScrollToExplicitLoop(loopId, isFirst ? 0 : end);
    if (found <= begin) return false;
    begin = found;
    end = findEnd();
    return true;
}

int ExplicitScopes::findEnd() {
    if (!loopId) return rule.segLists->count - 1;
    int const behindRun = rule.ScrollThroughExplicitLoop(loopId, begin + skippedLines);
    int const lastOfScope = rule.ScrollToExplicitLoop(loopId, behindRun) - 1;
    return lastOfScope < 0 ? lastLine : lastOfScope;
}

namespace {

void addFinding(Rule& rule, DirectFinding const& finding, char const* message) {
    rule.errorInfos->add(finding.line + 1, finding.elementPosition, finding.segmentId, rule.errorCodeText,
                         finding.loopId, rule.txnCodeText, rule.segCodeText, message,
                         finding.value ? finding.value : " ", "00");
}

}  // namespace

void recordDirectly(Rule& rule, DirectPair const& rightFirstPair, DirectPair const& leftFirstPair) {
    ++rule.errorCount;
    if (rule.errorOrder != rightFirst && rule.errorOrder != leftFirst) return;
    DirectPair const& pair = rule.errorOrder == rightFirst ? rightFirstPair : leftFirstPair;
    addFinding(rule, pair.first, rule.messageText);
    addFinding(rule, pair.second, "CTX");
}

int firstRightLineUpToFence(Rule& rule, int begin, int end) {
    int const fence = rule.firstLine(rule.rightSide2, begin, end);
    return rule.firstLine(rule.rightSide, begin, fence < 1 ? end : fence);
}

bool isNumeric(char const* text) {
    return isPresent(text) && text[std::strspn(text, "1234567890.-")] == '\0';
}
