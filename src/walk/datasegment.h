// DataSegment: the records of one message, and the cursor of the walk over them.
#pragma once

#include "common/managedarray.h"
#include "grammar/validators.h"

class DataSegment {
public:
    int currentSegment = 0;  // 1-based number of the record on offer; 0 before the first
    ManagedArray<SegmentData> segments;
    int recordCount = 0;  // records in use
    int depth = 0;        // nodes that the walk is inside of
    int walk = 1;         // 1-based number of the message among those that the object has walked

    DataSegment();
    virtual ~DataSegment();

    /// The record on offer. Behind the last record it is an empty one, which no node accepts.
    SegmentData& onOffer() { return segments[currentSegment - 1]; }

    /// The record on offer, as a number that no other record of the object has.
    long position() const { return (static_cast<long>(walk) << 32) + currentSegment; }
};
