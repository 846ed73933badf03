// SegLists: the located segments of a message, in the order of the data. It is all that the rules see of a message.
//
// A position in it, a 0-based index called a line, is what all navigation hands around; -1 is no line. Lines are
// written once, in the walk. Afterwards only their element texts change: they are split in place when an element is
// first read.
#pragma once

#include <cstddef>

#include "common/elements.h"
#include "common/managedarray.h"

/// One line.
struct SegListInfo {
    char segmentId[4] = "";   // of the node that accepted the segment, at most 3 characters
    char loopId[7] = "";      // of the loop that encloses it, at most 6 characters; empty at the root of the grammar
    char identifier[6] = "";  // from the data stream; empty where there is none
    Elements elements;        // over the element text, which lies in the root's copy of the stream
};

class SegLists : public ManagedArray<SegListInfo> {
public:
    static constexpr int longestTerminator = 4;

    int count = 0;                                // lines in use
    char elementDelimiter = '\0';                 // splits a line's text into elements
    char subElementDelimiter = '\0';              // splits an element into sub-elements
    char terminatorText[longestTerminator] = {};  // `terminatorLength` characters, without a terminator of its own
    int terminatorLength = 0;

    /// Appends a line. Ids are cut to their fields; a null text leaves its field empty. `text` must outlive the list.
    /// Throws szFailure where there is no memory.
    void add(char const* segmentId, char const* identifier, char const* loopId, char* text);

    /// Bytes that the loop text takes at most, its terminating NUL included.
    std::size_t loopTextSize() const;

    /// Writes each line as segment id, delimiter, loop id, delimiter, the element text from behind its first delimiter,
    /// and the segment terminator. A line whose elements have been read has lost its delimiters, and comes out without
    /// them.
    void printLoopText(char* reply) const;
};
