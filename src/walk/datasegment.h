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

    DataSegment();
    virtual ~DataSegment();

    /// The record on offer. Behind the last record it is an empty one, which no node accepts.
    SegmentData& onOffer() { return segments[currentSegment - 1]; }
};
