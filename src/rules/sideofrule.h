// SideOfRule: one operand of a rule. Which loop, which segment, which element positions, which values.
#pragma once

#include "common/elements.h"

/// How many positions a list of a rule record keeps.
inline constexpr int positionsAtMost = 256;

class SideOfRule {
public:
    Elements values;          // over the record's field; split at first use
    Elements subElementText;  // the list that `subElementPositions` came from
    int elementCount = 0;
    int subElementCount = 0;
    int elementPositions[positionsAtMost] = {};     // as given: 0 is the segment id itself, 1 the first data element
    int subElementPositions[positionsAtMost] = {};  // given minus 1: 0 is the first sub-element
    int lineIndex = -1;                             // the line of the last hit, from which a continuing search goes on

    SideOfRule() = default;
    SideOfRule(SideOfRule const&) = default;
    SideOfRule& operator=(SideOfRule const&) = default;
    virtual ~SideOfRule();

    /// The loop that the side names; empty for none.
    char const* loopId() const { return ids; }
    /// The segment that the side names; empty for none.
    char const* segmentId() const { return ids + segmentIdAt; }

    bool hasLoop() const { return ids[0] != '\0'; }
    bool hasSegment() const { return ids[segmentIdAt] != '\0'; }

    /// Takes the two ids from a record; null or empty for none. An id that is wider than its field runs on, see `ids`.
    void setIds(char const* newLoopId, char const* newSegmentId);

    /// The first of the side's values; null where it has none.
    char* firstValue() { return values.GetElement(0); }

    /// The 1-based number of the sub-element at `index` of the list, as the record gives it.
    int subElementNumber(int index) const;

private:
    // The loop id, 7 bytes, and the segment id, 4 bytes, lie side by side with five spare bytes behind them. A loop id
    // of more than six characters runs on into the segment id, which is then written over it, and a long segment id
    // runs on into the spare bytes; both end at the last byte. Reading goes up to the first NUL. So a side with a
    // segment id of four characters and more names no line, and reports show it whole.
    static constexpr int segmentIdAt = 7;
    static constexpr int segmentIdWidth = 4;
    static constexpr int idBytes = 16;
    char ids[idBytes] = {};

    void setId(int at, int width, char const* id);
};
