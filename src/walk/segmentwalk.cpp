// The walk of a leaf: one segment of the grammar.
#include "common/text.h"
#include "rules/seglists.h"
#include "walk/walkcontract.h"

// The cursor stays: the walker that offered the record advances it. Only loops look at identifiers.
void SegmentValidator::validateStructure(DataSegment* data, char const* segment, char const* identifier,
                                         char const* loopContext, int kind, IdentifierBuffer*) {
    if (!equal(segmentId, segment)) return;
    ++repeatCount;
    context->currentChild = position;
    context->advanced = 1;
    if (kind == 2) context->segLists->add(segmentId, identifier, loopContext, data->onOffer().text);
    if (repeatCount > maxRepeat && maxRepeat != 0) {
        // In a normal iteration the context is the loop's bare id, of which usually nothing is left here. Hosts know
        // the report so; with the whole id, every such line would change.
        char const* loopText = loopContext ? loopIdOf(loopContext) : "LOOP";
        addStandardError(*context->errorInfos, data->currentSegment, segmentId, ERR_SEG_EXCEED_LIMIT, loopText);
    }
    context->matched = 1;
}
