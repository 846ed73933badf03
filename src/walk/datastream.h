// The data stream of a message, as a host delivers it: records, each ended by a terminator, white space between them.
//
//   offset  width  content
//        0      3  segment id, filled up with white space on the right
//        3      5  identifier field: four characters of value, and a fifth byte that is white space where the value is
//                  to be trimmed (kind 2 only)
//        8      7  not read
//       15   rest  element text, whose first field is the segment id itself (kind 2 only)
#pragma once

#include <cstddef>

class DataSegment;
class IdentifierBuffer;

struct Terminator {
    char const* text;
    int length;  // 0: there are no records; above 3: the first two characters are compared
};

/// Cuts a stream into the records of `data`, whose array is sized already. The first character of each terminator
/// becomes a NUL. Text behind the last terminator is no record. With a pool, each record gets its identifier and
/// element text, which points into the stream; without one, its id alone.
///
/// `length` bytes are read, and where the terminator has several characters or there is a pool, up to
/// `streamPadding` NUL bytes behind them, which must be there.
void readDataStream(char* text, std::size_t length, Terminator terminator, DataSegment& data, IdentifierBuffer* pool);

inline constexpr std::size_t streamPadding = 4;
