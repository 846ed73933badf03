// The data stream: from bytes to records.
#include "walk/datastream.h"

#include <algorithm>

#include "common/text.h"
#include "walk/datasegment.h"

namespace {

constexpr std::size_t idWidth = 3;
constexpr std::size_t identifierOffset = 3;
constexpr std::size_t identifierWidth = 4;
constexpr std::ptrdiff_t elementTextOffset = 15;

void copyWhole(char* value, char const* field, std::size_t length) {
    for (std::size_t index = 0; index < length; ++index)
        value[index] = field[index];
    value[length] = '\0';
}

/// Copies a value without the white space at its end.
void copyTrimmed(char* value, char const* field, std::size_t length) {
    while (length > 0 && isSpace(field[length - 1]))
        --length;
    copyWhole(value, field, length);
}

/// An id that the record's end cuts short ends with the record's NUL, which is no white space: it keeps its blanks.
void readSegmentId(char* id, char const* record) {
    std::size_t const length = strnlen(record, idWidth);
    if (length == idWidth)
        copyTrimmed(id, record, idWidth);
    else
        copyWhole(id, record, length);
}

/// The fifth byte decides whether the value is trimmed and is no part of it: an identifier of five characters loses its
/// last one.
void readIdentifier(char* identifier, char const* field) {
    std::size_t const length = strnlen(field, identifierWidth + 1);
    if (length > identifierWidth && isSpace(field[identifierWidth]))
        copyTrimmed(identifier, field, identifierWidth);
    else
        copyWhole(identifier, field, std::min(length, identifierWidth));
}

/// The next terminator from `start` on; null where there is none. After a mismatch the search goes on from the
/// character that failed, so that an overlapping terminator before it is passed over.
char* findTerminator(char* start, char const* end, Terminator terminator) {
    while (start < end) {
        auto* hit = static_cast<char*>(std::memchr(start, terminator.text[0], static_cast<std::size_t>(end - start)));
        if (!hit) return nullptr;
        if (terminator.length > 1 && hit[1] != terminator.text[1])
            start = hit + 1;
        else if (terminator.length == 3 && hit[2] != terminator.text[2])
            start = hit + 2;
        else
            return hit;
    }
    return nullptr;
}

}  // namespace

void readDataStream(char* text, std::size_t length, Terminator terminator, DataSegment& data, IdentifierBuffer* pool) {
    if (terminator.length < 1) return;
    char* const end = text + length;
    char* record = text;
    while (char* recordEnd = findTerminator(record, end, terminator)) {
        *recordEnd = '\0';
        SegmentData& entry = data.segments[data.recordCount];
        entry.position = data.recordCount++;
        readSegmentId(entry.segmentId, record);
        if (pool) {
            char identifier[identifierWidth + 1] = "";
            if (recordEnd - record >= static_cast<std::ptrdiff_t>(identifierOffset))
                readIdentifier(identifier, record + identifierOffset);
            entry.identifierOffsets[0] = *identifier ? pool->add(identifier) : 0;
            entry.text = record + std::min(elementTextOffset, end - record);
        }
        record = recordEnd + terminator.length;
        while (record < end && isSpace(*record))
            ++record;
        if (record >= end) return;
    }
}
