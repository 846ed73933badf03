// Cutting and wording of reports.
//
// The line of the report:
//
//   width  column
//      10  number of the record, one more if it is negative
//       3  position of the element, more if it is wide
//       2  position of the sub-element
//       8  segment id
//       5  error code
//       6  loop
//       4  word of the transaction
//       4  word of the segment
//      80  error text
//      50  element text
//       1  '$'
#include "report.h"

#include <charconv>

#include "failure.h"

namespace edicheck {

namespace {

constexpr std::size_t kNumberWidth = 10;
constexpr std::size_t kPositionWidth = 3;
constexpr std::size_t kWidestPosition = 11;  // a sign and ten digits
constexpr std::size_t kSubElementWidth = 2;
constexpr std::size_t kSegmentIdWidth = 8;
constexpr std::size_t kCodeWidth = 5;
constexpr std::size_t kLoopWidth = 6;
constexpr std::size_t kWordsWidth = 8;
constexpr std::size_t kErrorTextWidth = 80;
constexpr std::size_t kElementTextWidth = 50;
constexpr std::size_t kTextsWidth =
    kSubElementWidth + kSegmentIdWidth + kCodeWidth + kLoopWidth + kWordsWidth + kErrorTextWidth + kElementTextWidth;
constexpr std::string_view kRootLoop = "LOOP";

// Takes columns off the front of a text.
class Columns {
public:
    explicit Columns(std::string_view text) : text_(text) {}

    std::string take(std::size_t width) {
        std::string_view column = text_.substr(0, width);
        text_.remove_prefix(column.size());
        const std::size_t last = column.find_last_not_of(' ');
        return std::string(column.substr(0, last == column.npos ? 0 : last + 1));
    }

    // Throws Failure when the column is no number.
    template <class Number>
    Number takeNumber(std::size_t width) {
        const std::string column = take(width);
        Number number = 0;
        const auto [end, error] = std::from_chars(column.data(), column.data() + column.size(), number);
        if (error != std::errc() || end != column.data() + column.size()) {
            throw Failure("the library's report cannot be read: \"" + column + "\" stands where a number should");
        }
        return number;
    }

private:
    std::string_view text_;
};

// The narrowest width of the position column with which the line ends in '$'.
std::size_t positionWidthOf(std::string_view reply, std::size_t numberWidth) {
    for (std::size_t width = kPositionWidth; width <= kWidestPosition; ++width) {
        if (reply.substr(numberWidth + width + kTextsWidth, 1) == "$") return width;
        if (numberWidth + width + kTextsWidth >= reply.size()) break;
    }
    throw Failure("the library's report cannot be read: a line of it does not end in '$'");
}

Finding takeFinding(std::string_view& reply) {
    const std::size_t numberWidth = kNumberWidth + (reply.substr(0, 1) == "-" ? 1 : 0);
    if (reply.size() < numberWidth + kPositionWidth + kTextsWidth + 1) {
        throw Failure("the library's report cannot be read: it ends within a line");
    }
    const std::size_t positionWidth = positionWidthOf(reply, numberWidth);
    Finding finding;
    finding.line = reply.substr(0, numberWidth + positionWidth + kTextsWidth + 1);
    reply.remove_prefix(finding.line.size());

    Columns columns(finding.line);
    finding.number = columns.takeNumber<long long>(numberWidth);
    finding.elementPosition = columns.takeNumber<int>(positionWidth);
    columns.take(kSubElementWidth);
    finding.segmentId = columns.take(kSegmentIdWidth);
    finding.code = columns.take(kCodeWidth);
    finding.loopId = columns.take(kLoopWidth);
    columns.take(kWordsWidth);
    columns.take(kErrorTextWidth);
    finding.elementText = columns.take(kElementTextWidth);
    return finding;
}

std::string inLoop(const Finding& finding) {
    return finding.loopId.empty() || finding.loopId == kRootLoop ? "" : " (loop " + finding.loopId + ")";
}

std::string meaning(const Finding& finding) {
    const std::string& id = finding.segmentId;
    if (finding.code == "1") return "too few " + id + " in front of here" + inLoop(finding);
    if (finding.code == "2" && id.empty()) {
        return "the message ends within a loop or group, where a segment of the grammar's root, such as the trailer, "
               "should end it";
    }
    if (finding.code == "2") {
        return "out of sequence or not expected here; the rest of the message was not looked at";
    }
    if (finding.code == "3") {
        return "mandatory " + id + " (a segment, or the first one of a loop) is missing in front of here" +
               inLoop(finding);
    }
    if (finding.code == "4") return "too many iterations of the loop that begins with " + id + inLoop(finding);
    if (finding.code == "5") return id + " repeats beyond its limit" + inLoop(finding);
    if (finding.code == "7") return "identifier value \"" + finding.elementText + "\" of " + id + " is not known here";
    if (finding.code == "8") return "no loop here takes " + id + " with this identifier" + inLoop(finding);
    return "code without a meaning of its own: " + finding.code + " for " + id + inLoop(finding);
}

bool tellOfOneIdentifier(const Finding& first, const Finding& second) {
    return first.code == "8" && second.code == "7" && first.number == second.number;
}

std::string unknownIdentifier(const Finding& first, const Finding& second) {
    // The loop text of such a finding is that of the group's first loop.
    const std::string group = first.loopId.empty() ? "" : " (group of loop " + first.loopId + ")";
    return "no loop here takes " + first.segmentId + " with the identifier \"" + second.elementText + "\"" + group;
}

std::size_t placeOf(long long number, std::size_t records) {
    if (number < 1) return 0;
    return static_cast<unsigned long long>(number) > records ? records + 1 : static_cast<std::size_t>(number);
}

// Whether the finding names a child of the root by its place behind `lastMatched`, as those of the closing check do.
bool namesChildBehind(const Finding& finding, const std::vector<std::string>& names, std::size_t lastMatched) {
    if (finding.code != "3" || finding.loopId != kRootLoop || finding.number < 1) return false;
    const auto place = static_cast<unsigned long long>(finding.number);
    return place <= names.size() && place > lastMatched &&
           names[place - 1].substr(0, kSegmentIdWidth) == finding.segmentId;
}

// Where the findings of the closing check begin, which carry the child's place in the grammar and no record number.
//
// Behind a record without a place, all are such. Otherwise the walk came to the end of the data, the last record was
// taken by a child of the root, and the closing check names children behind that one; a finding from within the walk
// never does.
std::size_t beginOfClosingCheck(const std::vector<Finding>& findings, const Grammar& grammar,
                                const std::vector<Record>& records) {
    for (std::size_t i = 0; i < findings.size(); ++i) {
        if (findings[i].code == "2") return i + 1;
    }
    const std::vector<std::string>& names = grammar.rootNames();
    std::size_t lastMatched = 1;  // 1-based place; without a record the closing check begins behind the first child
    if (!records.empty()) {
        while (lastMatched <= names.size() && names[lastMatched - 1] != records.back().id)
            ++lastMatched;
    }
    std::size_t begin = findings.size();
    while (begin > 0 && namesChildBehind(findings[begin - 1], names, lastMatched))
        --begin;
    return begin;
}

}  // namespace

std::vector<Finding> cutReport(std::string_view reply) {
    std::vector<Finding> findings;
    while (!reply.empty())
        findings.push_back(takeFinding(reply));
    return findings;
}

std::vector<Explanation> explain(const std::vector<Finding>& findings, const Grammar& grammar,
                                 const std::vector<Record>& records) {
    std::vector<Explanation> explanations;
    const std::size_t closing = beginOfClosingCheck(findings, grammar, records);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const Finding& finding = findings[i];
        const std::size_t place = placeOf(finding.number, records.size());
        if (i >= closing) {
            explanations.push_back({records.size() + 1, finding.code, "missing at the end: " + finding.segmentId});
        } else if (i + 1 < closing && tellOfOneIdentifier(finding, findings[i + 1])) {
            explanations.push_back({place, "8 and 7", unknownIdentifier(finding, findings[i + 1])});
            ++i;
        } else {
            explanations.push_back({place, finding.code, meaning(finding)});
        }
    }
    return explanations;
}

}  // namespace edicheck
