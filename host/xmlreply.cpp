// A finding is "LEVEL. MESSAGE found on line N, column N.$". A message quotes the document, so any of these words may stand
// in it: a finding ends where its place does, and where the next one begins or the reply ends.
#include "xmlreply.h"

#include <array>
#include <optional>
#include <utility>

#include "failure.h"
#include "print.h"
#include "text.h"

namespace edicheck {

namespace {

constexpr std::string_view kEnd = ".$";
constexpr std::string_view kBeforeLine = " found on line ";
constexpr std::string_view kBeforeColumn = ", column ";
constexpr std::string_view kDigits = "0123456789";

struct Level {
    std::string_view head;
    std::string_view name;
};

constexpr std::array<Level, 3> kLevels = {
    {{"Fatal Error. ", "fatal error"}, {"Error. ", "error"}, {"Warning. ", "warning"}}};

const Level* levelOf(std::string_view text) {
    for (const Level& level : kLevels) {
        if (startsWith(text, level.head)) return &level;
    }
    return nullptr;
}

// Takes the number off the end of the text, and what must stand in front of it.
std::optional<std::string_view> takeNumber(std::string_view& text, std::string_view before) {
    const std::size_t begin = text.find_last_not_of(kDigits) + 1;
    const std::string_view number = text.substr(begin);
    if (number.empty() || begin < before.size() || text.substr(begin - before.size(), before.size()) != before)
        return {};
    text.remove_suffix(number.size() + before.size());
    return number;
}

// A finding without its end.
std::optional<XmlFinding> findingOf(std::string_view text) {
    const Level* level = levelOf(text);
    if (level == nullptr) return {};
    text.remove_prefix(level->head.size());
    const auto column = takeNumber(text, kBeforeColumn);
    if (!column) return {};
    const auto line = takeNumber(text, kBeforeLine);
    if (!line) return {};
    return XmlFinding{std::string(level->name), std::string(text), std::string(*line), std::string(*column)};
}

// The finding at the head of the text, which is taken off.
XmlFinding takeFinding(std::string_view& text) {
    for (std::size_t end = text.find(kEnd); end != text.npos; end = text.find(kEnd, end + 1)) {
        const std::string_view behind = text.substr(end + kEnd.size());
        if (!behind.empty() && levelOf(behind) == nullptr) continue;
        auto finding = findingOf(text.substr(0, end));
        if (!finding) continue;
        text = behind;
        return *std::move(finding);
    }
    throw Failure("the parser gave up: " + shown(text));
}

}  // namespace

std::vector<XmlFinding> cutXmlReply(std::string_view reply) {
    std::string_view text = reply.substr(0, reply.find('\0'));
    std::vector<XmlFinding> findings;
    while (!text.empty())
        findings.push_back(takeFinding(text));
    return findings;
}

}  // namespace edicheck
