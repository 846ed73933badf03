// Printing of findings and of messages.
#include "print.h"

#include <iomanip>

#include "table.h"

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

// The explanation behind `lead`, and its context on a line of its own below it.
void printExplanation(std::ostream& out, const std::string& lead, const Explanation& explanation,
                      const std::vector<Record>& records) {
    const std::string code = explanation.codes.empty() ? "" : " " + explanation.codes;
    out << lead << shown((explanation.ofRule ? "rule" : "code") + code + ": " + explanation.words) << '\n';
    if (!explanation.context) return;
    const std::size_t record = explanation.context->record;
    out << std::string(lead.size() + kIndent, ' ')
        << "context: " << (record == 0 ? "no segment" : headingOf(record, records)) << shown(explanation.context->words)
        << '\n';
}

void printBehind(std::ostream& out, const std::vector<const Explanation*>& explanations,
                 const std::vector<Record>& records) {
    for (const Explanation* explanation : explanations)
        printExplanation(out, std::string(kNumberColumn, ' ') + "  ^ ", *explanation, records);
}

std::string numberOrNothing(long long number) {
    return number == 0 ? "" : std::to_string(number);
}

// The library writes `unused` where the rule asks for no such text.
std::string unlessUnused(const std::string& text, std::string_view unused) {
    return text == unused ? "" : text;
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
        printExplanation(out, "    ", explanation, records);
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
        printBehind(out, at[i + 1], records);
    }
    for (const std::size_t elsewhere : {records.size() + 1, std::size_t{0}}) {
        if (at[elsewhere].empty()) continue;
        out << "  " << headingOf(elsewhere, records) << '\n';
        printBehind(out, at[elsewhere], records);
    }
}

void printContents(std::ostream& out, const std::vector<Content>& contents, const std::vector<LocatedRecord>& located) {
    Table table({"segment", "loop", "id", "element", "component", "value", "qualifier", "key", "date", "V1", "V2",
                 "table", "code", "TXN", "SEG", "message"});
    for (const Content& content : contents) {
        table.add({numberOrNothing(static_cast<long long>(recordOfLine(content.number, located))), content.loopId,
                   content.segmentId, numberOrNothing(content.elementPosition),
                   numberOrNothing(content.subElementPosition), content.value,
                   unlessUnused(content.qualifier, "QualVal"), unlessUnused(content.key, "KeyVal"),
                   unlessUnused(content.date, "DateVal"), content.v1, content.v2, content.codeTable, content.code,
                   content.transactionText, content.segmentText, content.message});
    }
    table.print(out, "  ");
}

void printLocated(std::ostream& out, const std::vector<Record>& records, const std::vector<LocatedRecord>& located) {
    for (const LocatedRecord& place : located) {
        printSegment(out, place.number, place.loopId, 0, records[place.number - 1].text);
    }
}

}  // namespace edicheck
