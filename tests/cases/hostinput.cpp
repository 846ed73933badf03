#include "hostinput.h"

#include <algorithm>
#include <array>
#include <map>

namespace cases {
namespace {

constexpr size_t idWidth = 3;
constexpr size_t identifierWidth = 5;
constexpr size_t unreadWidth = 7;
constexpr char kind1End = '$';
constexpr char kind1ElementDelimiter = '*';

std::string padded(const Line& line, const char* what, const std::string& text, size_t width) {
    if (text.size() > width) {
        throw CaseError(line.number, std::string(what) + " '" + text + "' is wider than its field; see [stream]");
    }
    return text + std::string(width - text.size(), ' ');
}

struct MessageLine {
    Line line;
    std::string id;
    std::string identifier;
    std::string elements;
};

/* "<identifier> elements", where the angle brackets and what is in them may be left out. */
MessageLine parseMessageLine(const Line& line, char elementDelimiter, const std::string& terminator) {
    MessageLine result{line, "", "", unescape(line)};
    if (result.elements.front() == '<') {
        const size_t close = result.elements.find("> ");
        if (close == std::string::npos || close == 1) {
            throw CaseError(line.number, "an identifier is written in front of the segment as '<identifier> '");
        }
        result.identifier = result.elements.substr(1, close - 1);
        result.elements.erase(0, close + 2);
    }
    if (!terminator.empty() && result.elements.find(terminator) != std::string::npos) {
        throw CaseError(line.number, "the segment contains the terminator; see [stream]");
    }
    result.id = result.elements.substr(0, result.elements.find(elementDelimiter));
    return result;
}

std::vector<MessageLine> parseMessage(const Section& message, char elementDelimiter, const std::string& terminator) {
    std::vector<MessageLine> lines;
    for (const Line& line : message.lines) {
        if (!line.text.empty()) lines.push_back(parseMessageLine(line, elementDelimiter, terminator));
    }
    return lines;
}

/* The fields of a rule record: where each name's texts go, and how many texts it takes. */
struct FieldRange {
    size_t first;
    size_t number;
};

constexpr size_t fieldNumber = 33;
using Fields = std::array<std::string, fieldNumber>;

const std::map<std::string, FieldRange>& fieldsByName() {
    static const std::map<std::string, FieldRange> fields = {
        {"number", {0, 1}},      {"outer", {1, 1}},    {"scope-segment", {2, 1}}, {"inner-segment", {3, 1}},
        {"left", {4, 5}},        {"left2", {9, 5}},    {"right", {14, 5}},        {"right2", {19, 5}},
        {"scope", {24, 1}},      {"order", {25, 1}},   {"error", {26, 1}},        {"txn", {27, 1}},
        {"seg", {28, 1}},        {"message", {29, 1}}, {"argument30", {30, 1}},   {"argument31", {31, 1}},
        {"argument32", {32, 1}},
    };
    return fields;
}

/* Takes the text up to the next run of blanks off the line's front. */
std::string takeWord(std::string& text) {
    const size_t end = std::min(text.find(' '), text.size());
    const std::string word = text.substr(0, end);
    text = trim(text.substr(end));
    return word;
}

/* "name text", or for a side "name loop segment elements sub-elements values"; the last text may contain blanks. */
void readField(const Line& line, Fields& fields) {
    std::string rest = trim(line.text);
    const std::string name = takeWord(rest);
    const auto found = fieldsByName().find(name);
    if (found == fieldsByName().end()) throw CaseError(line.number, "a rule has no field '" + name + "'");
    const FieldRange range = found->second;
    for (size_t i = 0; i < range.number && !rest.empty(); ++i) {
        const bool isLast = i + 1 == range.number;
        const std::string text = isLast ? rest : takeWord(rest);
        std::string& field = fields[range.first + i];
        if (!field.empty()) throw CaseError(line.number, "the rule's field '" + name + "' is given twice");
        if (text != "-") field = unescape({line.number, text});
    }
}

std::string ruleRecord(const Line& firstLine, const Fields& fields) {
    if (fields[0].empty()) throw CaseError(firstLine.number, "the rule has no number");
    std::string record = fields[0];
    for (size_t i = 1; i < fieldNumber; ++i)
        record += "|" + fields[i];
    return record + "$";
}

}  // namespace

Delimiters readDelimiters(const std::string& delimiterText) {
    constexpr size_t terminatorStart = 2;
    const size_t marker = delimiterText.find('X', terminatorStart);
    const bool isWhole = delimiterText.size() > terminatorStart && marker != std::string::npos;
    return {delimiterText.empty() ? '\0' : delimiterText[0],
            isWhole ? delimiterText.substr(terminatorStart, marker - terminatorStart) : ""};
}

std::string streamOfKind1(const Section& message) {
    std::string stream;
    for (const MessageLine& line : parseMessage(message, kind1ElementDelimiter, std::string(1, kind1End))) {
        if (!line.identifier.empty()) throw CaseError(line.line.number, "a message of kind 1 has no identifiers");
        stream += padded(line.line, "the segment id", line.id, idWidth) + line.elements + kind1End;
    }
    return stream;
}

std::string streamOfKind2(const Section& message, const Delimiters& delimiters) {
    std::string stream;
    for (const MessageLine& line : parseMessage(message, delimiters.element, delimiters.terminator)) {
        stream += padded(line.line, "the segment id", line.id, idWidth) +
                  padded(line.line, "the identifier", line.identifier, identifierWidth) +
                  std::string(unreadWidth, ' ') + line.elements + delimiters.terminator;
    }
    return stream;
}

std::string ruleRecords(const Section& rules) {
    std::string records;
    for (size_t i = 0; i < rules.lines.size();) {
        if (rules.lines[i].text.empty()) {
            ++i;
            continue;
        }
        const Line& firstLine = rules.lines[i];
        Fields fields;
        for (; i < rules.lines.size() && !rules.lines[i].text.empty(); ++i)
            readField(rules.lines[i], fields);
        records += ruleRecord(firstLine, fields);
    }
    return records;
}

std::string joined(const Section& section, const std::string& separator) {
    std::string text;
    for (size_t i = 0; i < section.lines.size(); ++i) {
        text += (i == 0 ? "" : separator) + unescape(section.lines[i]);
    }
    return text;
}

}  // namespace cases
