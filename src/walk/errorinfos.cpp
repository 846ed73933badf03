// ErrorInfos: the list of findings and its report.
#include "walk/errorinfos.h"

#include <cstdio>

#include "common/text.h"

namespace {

/// Prints one line, or with a null `reply` and no room measures it. Answers its length.
std::size_t printLine(char* reply, std::size_t room, ErrorInfo const& record) {
    return static_cast<std::size_t>(std::snprintf(
        reply, room, "%10.10d%3.3d%-2.2s%-8.8s%-5.5s%-6.6s%-4.4s%-4.4s%-80.80s%-50.50s$", record.lineNumber,
        record.elementPosition, record.subElementText, record.segmentId, record.errorCode, record.loopId,
        record.txnText, record.segText, record.errorText, record.elementText));
}

std::size_t printedLength(ErrorInfo const& record) {
    bool const fits = record.lineNumber >= 0 && record.elementPosition >= 0 && record.elementPosition <= 999;
    return fits ? ErrorInfos::lineLength : printLine(nullptr, 0, record);
}

}  // namespace

ErrorInfos::ErrorInfos() {
    records.setSize(16, 1024);
}

ErrorInfos::~ErrorInfos() = default;

void ErrorInfos::add(int lineNumber, int elementPosition, char const* segmentId, char const* errorCode,
                     char const* loopId, char const* txnText, char const* segText, char const* errorText,
                     char const* elementText, char const* subElementText) {
    ErrorInfo& record = records[count];
    record.lineNumber = lineNumber;
    record.elementPosition = elementPosition;
    copyText(record.segmentId, segmentId, 31);
    copyText(record.errorCode, errorCode, 5);
    copyText(record.loopId, loopId, 6);
    copyText(record.txnText, txnText, 4);
    copyText(record.segText, segText, 3);
    copyText(record.errorText, errorText, 80);
    copyText(record.elementText, elementText, 50);
    copyText(record.subElementText, subElementText, 2);
    ++count;
}

std::size_t ErrorInfos::reportLength() const {
    std::size_t length = 0;
    for (int index = 0; index < count; ++index)
        length += printedLength(records.data[index]);
    return length;
}

void ErrorInfos::printReport(char* reply) const {
    std::size_t room = reportLength() + 1;
    for (int index = 0; index < count; ++index) {
        std::size_t const printed = printLine(reply, room, records.data[index]);
        reply += printed;
        room -= printed;
    }
}
