// Cutting replies.
//
//   width  of a finding               of a value
//      10  number of the segment, one more if it is negative
//       3  position of the element, more if it is wide
//       2  position of the sub-element
//       8  segment id
//       5  error code
//       6  loop
//       4  word of the transaction
//       4  word of the segment
//      80  text of the error
//          50  text of the element    20  value
//                                      8  qualifier
//                                      8  key
//                                      8  date
//                                      2  V1
//                                      4  V2
//                                     50  code table
//       1  '$'
//
// No code table holds a '$', since it comes from a rule record, which a '$' would have ended. So the byte at which a
// finding ends tells the two apart.
#include "reply.h"

#include <charconv>
#include <optional>

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
constexpr std::size_t kWordWidth = 4;
constexpr std::size_t kErrorTextWidth = 80;
constexpr std::size_t kElementTextWidth = 50;
constexpr std::size_t kValueWidth = 20;
constexpr std::size_t kKeyWidth = 8;  // of the qualifier and the date as well
constexpr std::size_t kV1Width = 2;
constexpr std::size_t kV2Width = 4;
constexpr std::size_t kCodeTableWidth = 50;

// What stands between the position of the element and the '$'.
constexpr std::size_t kCommonRest =
    kSubElementWidth + kSegmentIdWidth + kCodeWidth + kLoopWidth + 2 * kWordWidth + kErrorTextWidth;
constexpr std::size_t kFindingRest = kCommonRest + kElementTextWidth;
constexpr std::size_t kContentRest = kCommonRest + kValueWidth + 3 * kKeyWidth + kV1Width + kV2Width + kCodeTableWidth;

Failure unreadable(const std::string& why) {
    return Failure("the library's report cannot be read: " + why);
}

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
            throw unreadable("\"" + column + "\" stands where a number should");
        }
        return number;
    }

private:
    std::string_view text_;
};

std::size_t numberWidthOf(std::string_view reply) {
    return kNumberWidth + (reply.substr(0, 1) == "-" ? 1 : 0);
}

// The narrowest width of the position column with which the first line ends in '$'. Where the sub-element of a value is
// the wide one, it is taken for the position: the digits alone don't tell.
std::optional<std::size_t> positionWidthOf(std::string_view reply, std::size_t rest) {
    const std::size_t numberWidth = numberWidthOf(reply);
    for (std::size_t width = kPositionWidth; width <= kWidestPosition; ++width) {
        if (numberWidth + width + rest >= reply.size()) break;
        if (reply[numberWidth + width + rest] == '$') return width;
    }
    return std::nullopt;
}

struct Line {
    std::string_view text;
    std::size_t numberWidth;
    std::size_t positionWidth;
};

Line takeLine(std::string_view& reply, std::size_t rest) {
    const std::size_t numberWidth = numberWidthOf(reply);
    if (reply.size() < numberWidth + kPositionWidth + rest + 1) throw unreadable("it ends within a line");
    const auto positionWidth = positionWidthOf(reply, rest);
    if (!positionWidth) throw unreadable("a line of it does not end in '$'");
    const Line line = {reply.substr(0, numberWidth + *positionWidth + rest + 1), numberWidth, *positionWidth};
    reply.remove_prefix(line.text.size());
    return line;
}

Finding findingOf(const Line& line) {
    Columns columns(line.text);
    Finding finding;
    finding.line = line.text;
    finding.number = columns.takeNumber<long long>(line.numberWidth);
    finding.elementPosition = columns.takeNumber<int>(line.positionWidth);
    finding.subElement = columns.take(kSubElementWidth);
    finding.segmentId = columns.take(kSegmentIdWidth);
    finding.code = columns.take(kCodeWidth);
    finding.loopId = columns.take(kLoopWidth);
    columns.take(2 * kWordWidth);
    finding.errorText = columns.take(kErrorTextWidth);
    finding.elementText = columns.take(kElementTextWidth);
    return finding;
}

Content contentOf(const Line& line) {
    Columns columns(line.text);
    Content content;
    content.line = line.text;
    content.number = columns.takeNumber<long long>(line.numberWidth);
    content.elementPosition = columns.takeNumber<int>(line.positionWidth);
    content.subElementPosition = columns.takeNumber<int>(kSubElementWidth);
    content.segmentId = columns.take(kSegmentIdWidth);
    content.code = columns.take(kCodeWidth);
    content.loopId = columns.take(kLoopWidth);
    content.transactionText = columns.take(kWordWidth);
    content.segmentText = columns.take(kWordWidth);
    content.message = columns.take(kErrorTextWidth);
    content.value = columns.take(kValueWidth);
    content.qualifier = columns.take(kKeyWidth);
    content.key = columns.take(kKeyWidth);
    content.date = columns.take(kKeyWidth);
    content.v1 = columns.take(kV1Width);
    content.v2 = columns.take(kV2Width);
    content.codeTable = columns.take(kCodeTableWidth);
    return content;
}

}  // namespace

std::vector<Finding> cutReport(std::string_view reply) {
    std::vector<Finding> findings;
    while (!reply.empty())
        findings.push_back(findingOf(takeLine(reply, kFindingRest)));
    return findings;
}

std::vector<Content> cutContents(std::string_view reply) {
    std::vector<Content> contents;
    while (!reply.empty())
        contents.push_back(contentOf(takeLine(reply, kContentRest)));
    return contents;
}

bool holdsContents(std::string_view reply) {
    return !positionWidthOf(reply, kFindingRest) && positionWidthOf(reply, kContentRest);
}

}  // namespace edicheck
