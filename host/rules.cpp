// Reading a rules file.
#include "rules.h"

#include <algorithm>
#include <cstdlib>

#include "failure.h"
#include "text.h"

namespace edicheck {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::size_t kFields = 33;
constexpr std::size_t kOrderField = 25;
constexpr std::size_t kLoopIdFields[] = {4, 9, 14, 19, 24};
constexpr std::size_t kSegmentIdFields[] = {5, 10, 15, 20};
constexpr std::size_t kLongestLoopId = 6;
constexpr std::size_t kLongestSegmentId = 3;

struct NumberRange {
    long first;
    long last;
};

constexpr NumberRange kKnownNumbers[] = {{1, 22}, {24, 42}, {48, 53}, {58, 61}, {70, 71}, {80, 80}};
constexpr NumberRange kNumbersWithoutFindings[] = {{32, 36}, {58, 59}, {70, 71}, {80, 80}};

template <std::size_t count>
bool isIn(const NumberRange (&ranges)[count], long number) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [number](const NumberRange& range) { return range.first <= number && number <= range.last; });
}

// Unlike in a grammar, an empty field stays in its place.
std::vector<std::string> fieldsOf(std::string_view record) {
    std::vector<std::string> fields;
    while (true) {
        const std::size_t end = std::min(record.find('|'), record.size());
        fields.emplace_back(record.substr(0, end));
        if (end == record.size()) return fields;
        record.remove_prefix(end + 1);
    }
}

std::string fieldOf(const std::vector<std::string>& fields, std::size_t index) {
    return index < fields.size() ? fields[index] : "";
}

}  // namespace

RuleFile::RuleFile(std::string_view fileText) {
    if (startsWith(fileText, kByteOrderMark)) fileText.remove_prefix(kByteOrderMark.size());
    for (std::size_t line = 1; !fileText.empty(); ++line) {
        const std::size_t end = std::min(fileText.find('\n'), fileText.size());
        readLine(fileText.substr(0, end), line);
        fileText.remove_prefix(std::min(end + 1, fileText.size()));
    }
    if (text_.empty()) throw Failure("holds no rule");
}

void RuleFile::readLine(std::string_view text, std::size_t line) {
    for (bool first = true;; first = false) {
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        if (text.empty() || (first && text[0] == '#')) return;
        const std::size_t end = text.find('$');
        if (end == text.npos) {
            throw Failure("line " + std::to_string(line) +
                          ": the rule that begins here is not ended by '$'; a rule stands on one line");
        }
        inspect(text.substr(0, end), line);
        text_.append(text.substr(0, end + 1));
        text.remove_prefix(end + 1);
    }
}

void RuleFile::inspect(std::string_view record, std::size_t line) {
    const std::vector<std::string> fields = fieldsOf(record);
    const auto warn = [&](const std::string& what) { warnings_.push_back({line, "warning: " + what}); };

    const long number = std::strtol(fields[0].c_str(), nullptr, 10);
    if (!isIn(kKnownNumbers, number)) {
        warn("there is no rule " + std::to_string(number) + "; the record has no effect");
        return;
    }
    if (fields.size() > kFields) {
        warn("the record has " + std::to_string(fields.size()) + " fields, and those behind the " +
             std::to_string(kFields) + "rd are not read");
    }
    const auto tellLong = [&](std::size_t index, std::size_t longest, const std::string& what) {
        const std::string id = fieldOf(fields, index);
        if (id.size() > longest) {
            warn("field " + std::to_string(index) + ": the " + what + " \"" + id + "\" has more than " +
                 std::to_string(longest) + " characters, and no segment bears it");
        }
    };
    for (const std::size_t index : kLoopIdFields)
        tellLong(index, kLongestLoopId, "loop id");
    for (const std::size_t index : kSegmentIdFields)
        tellLong(index, kLongestSegmentId, "segment id");
    const std::string order = fieldOf(fields, kOrderField);
    if (!startsWith(order, "L") && !startsWith(order, "R") && !isIn(kNumbersWithoutFindings, number)) {
        warn("field " + std::to_string(kOrderField) + ": the order \"" + order +
             "\" is neither L nor R, so that no finding of this rule is reported");
    }
}

}  // namespace edicheck
