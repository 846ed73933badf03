// Printing of findings and of messages.
#include "print.h"

#include <iomanip>

namespace edicheck {

namespace {

constexpr std::size_t kShownCharacters = 200;
constexpr int kNumberColumn = 6;
constexpr int kLoopColumn = 6;
constexpr std::size_t kIndent = 2;                  // blanks for each loop
constexpr std::string_view kNotLocated = "------";  // in the place of a loop

// Where an explanation belongs that is not about a segment.
std::string headingOf(std::size_t record, const std::vector<Record>& records) {
    if (record == 0) return "without a place in the message";
    if (record > records.size()) return "at the end of the message";
    const Record& at = records[record - 1];
    return "segment " + std::to_string(record) + " (line " + std::to_string(at.line) + "): " + shown(at.text);
}

void printSegment(std::ostream& out, std::size_t number, std::string_view loop, std::size_t indent,
                  std::string_view text) {
    out << std::setw(kNumberColumn) << number << "  " << std::left << std::setw(kLoopColumn) << loop << std::right
        << "  " << std::string(indent, ' ') << shown(text) << '\n';
}

std::string wordsOf(const Explanation& explanation) {
    return shown("code " + explanation.codes + ": " + explanation.words);
}

void printBehind(std::ostream& out, const std::vector<const Explanation*>& explanations) {
    for (const Explanation* explanation : explanations) {
        out << std::string(kNumberColumn, ' ') << "  ^ " << wordsOf(*explanation) << '\n';
    }
}

}  // namespace

std::string shown(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char character : text.substr(0, kShownCharacters)) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F) {
            result.append("\\x").append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
        } else {
            result += character;
        }
    }
    return text.size() > kShownCharacters ? result + " ..." : result;
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void printFindings(std::ostream& out, const std::vector<Record>& records,
                   const std::vector<Explanation>& explanations) {
    const Explanation* previous = nullptr;
    for (const Explanation& explanation : explanations) {
        if (previous == nullptr || previous->record != explanation.record) {
            out << "  " << headingOf(explanation.record, records) << '\n';
        }
        out << "    " << wordsOf(explanation) << '\n';
        previous = &explanation;
    }
}

void printMessage(std::ostream& out, const std::vector<Record>& records, const std::vector<Explanation>& explanations,
                  const std::vector<LocatedRecord>& located, const Grammar& grammar) {
    std::vector<const LocatedRecord*> places(records.size(), nullptr);
    // A record that is listed twice was taken back from an iteration over the limit: its last place counts.
    for (const LocatedRecord& place : located)
        places[place.number - 1] = &place;
    std::vector<std::vector<const Explanation*>> at(records.size() + 2);
    for (const Explanation& explanation : explanations)
        at[explanation.record].push_back(&explanation);

    std::size_t indent = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (places[i] != nullptr) indent = kIndent * grammar.depthOfLoop(places[i]->loopId);
        printSegment(out, i + 1, places[i] != nullptr ? places[i]->loopId : kNotLocated, indent, records[i].text);
        printBehind(out, at[i + 1]);
    }
    for (const std::size_t elsewhere : {records.size() + 1, std::size_t{0}}) {
        if (at[elsewhere].empty()) continue;
        out << "  " << headingOf(elsewhere, records) << '\n';
        printBehind(out, at[elsewhere]);
    }
}

void printLocated(std::ostream& out, const std::vector<Record>& records, const std::vector<LocatedRecord>& located) {
    for (const LocatedRecord& place : located) {
        printSegment(out, place.number, place.loopId, 0, records[place.number - 1].text);
    }
}

}  // namespace edicheck
