// Contents: the list of values and its report.
#include "rules/contents.h"

#include <cstdio>

#include "common/text.h"

namespace {

/// What column 16 shows. A code table id that fills its field has no terminator, and the print runs on through the two
/// fields behind it.
class CodeTableColumn {
public:
    explicit CodeTableColumn(Content const& record) {
        append(record.codeTableIdVal, sizeof record.codeTableIdVal) && append(record.v1Val, sizeof record.v1Val) &&
            append(record.v2PatternId, sizeof record.v2PatternId);
        text[length] = '\0';
    }
    char const* get() const { return text; }

private:
    char text[sizeof(Content::codeTableIdVal) + sizeof(Content::v1Val) + sizeof(Content::v2PatternId) + 1];
    std::size_t length = 0;

    /// Answers whether the field was full, so that what stands behind it is read on.
    bool append(char const* field, std::size_t width) {
        std::size_t const used = strnlen(field, width);
        std::memcpy(text + length, field, used);
        length += used;
        return used == width;
    }
};

/// Prints one line, or with a null `reply` and no room measures it. Answers its length.
std::size_t printLine(char* reply, std::size_t room, Content const& record) {
    return static_cast<std::size_t>(std::snprintf(
        reply, room,
        "%10.10d%3.3d%2.2d%-8.8s%-5.5s%-6.6s%-4.4s%-4.4s%-80.80s%-20.20s%-8.8s%-8.8s%-8.8s%-2.2s%-4.2s%-50.50s$",
        record.lineNumber, record.elementPosition, record.subElementPosition, record.segmentText, record.errorCode,
        record.loopId, record.txnText, record.segText, record.errorText, record.codeVal, record.qualVal, record.keyVal,
        record.dateVal, record.v1Val, record.v2PatternId, CodeTableColumn(record).get()));
}

std::size_t printedLength(Content const& record) {
    bool const fits = record.lineNumber >= 0 && record.elementPosition >= 0 && record.elementPosition <= 999 &&
                      record.subElementPosition >= 0 && record.subElementPosition <= 99;
    return fits ? Contents::lineLength : printLine(nullptr, 0, record);
}

}  // namespace

Contents::Contents() {
    records.setSize(16, 20);
}

Contents::~Contents() = default;

void Contents::add(int lineNumber, int elementPosition, int subElementPosition, char const* segmentText,
                   char const* codeVal, char const* qualVal, char const* keyVal, char const* dateVal,
                   char const* codeTableIdVal, char const* v1Val, char const* v2PatternId, char const* errorCode,
                   char const* loopId, char const* txnText, char const* segText, char const* errorText) {
    Content& record = records[count];
    record.lineNumber = lineNumber;
    record.elementPosition = elementPosition;
    record.subElementPosition = subElementPosition;
    copyText(record.segmentText, segmentText, 31);
    copyText(record.codeVal, codeVal, 20);
    copyText(record.qualVal, qualVal, 8);
    copyText(record.keyVal, keyVal, 8);
    copyText(record.dateVal, dateVal, 8);
    copyText(record.codeTableIdVal, codeTableIdVal, 20);
    copyText(record.v1Val, v1Val, 2);
    copyText(record.v2PatternId, v2PatternId, 20);
    copyText(record.errorCode, errorCode, 5);
    copyText(record.loopId, loopId, 6);
    copyText(record.txnText, txnText, 4);
    copyText(record.segText, segText, 3);
    copyText(record.errorText, errorText, 80);
    ++count;
}

std::size_t Contents::reportLength() const {
    std::size_t length = 0;
    for (int index = 0; index < count; ++index)
        length += printedLength(records.data[index]);
    return length;
}

void Contents::printReport(char* reply) const {
    std::size_t room = reportLength() + 1;
    for (int index = 0; index < count; ++index) {
        std::size_t const printed = printLine(reply, room, records.data[index]);
        reply += printed;
        room -= printed;
    }
}
