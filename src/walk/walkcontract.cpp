// What the walks of all nodes share.
#include "walk/walkcontract.h"

#include "common/text.h"

DataSegment::DataSegment() = default;

DataSegment::~DataSegment() = default;

// There is no test for the end of the data: the record behind the last one is empty and no note.
void advance(DataSegment& data, unsigned long flags) {
    do {
        ++data.currentSegment;
    } while ((flags & skipNotes) && equal(data.onOffer().segmentId, "NTE"));
}

char const* identifierOnOffer(DataSegment& data, IdentifierBuffer const* identifiers) {
    int const offset = data.onOffer().identifierOffsets[0];
    return identifiers && offset != 0 ? identifiers->at(offset) : nullptr;
}

bool offer(ValidationContext& parent, Validator& child, DataSegment& data, char const* loopContext, int kind,
           IdentifierBuffer* identifiers) {
    parent.matched = 0;
    child.context = &parent;
    if (data.depth >= deepestWalk) return false;
    ++data.depth;
    int const result = child.validateLoop(&data, data.onOffer().segmentId, identifierOnOffer(data, identifiers),
                                          loopContext, kind, identifiers);
    --data.depth;
    if (result != 0) parent.matched = 1;
    return parent.matched == 1;
}

bool isNamed(char const* name, char const* id) {
    return *id != '\0' && equal(name, id);
}

bool isTrailer(char const* name) {
    return equal(name, "SE") || equal(name, "UNT");
}

char const* loopIdOf(char const* name) {
    return tailFrom(name, 5);
}

void addStandardError(ErrorInfos& errors, int number, char const* name, char const* code, char const* loopText) {
    errors.add(number, 0, name, code, loopText, "NONE", "SEG", "ERROR", "Element Text", "00");
}
