// The walk of the root: records are offered to its children in grammar order, never to an earlier child again, until
// the data ends or a record has no place.
#include <algorithm>

#include "rules/seglists.h"
#include "walk/walkcontract.h"

namespace {

constexpr char rootLoopText[] = "LOOP";

/// Makes room for the lines of a message, behind those that an earlier one may have left.
void sizeForRecords(SegLists& lines, int recordCount) {
    int const growBy = std::max(static_cast<int>(static_cast<float>(recordCount) * 0.1), 10);
    lines.setSize(lines.count + recordCount, growBy);
}

}  // namespace

void EDI_Structure::validateStructure(DataSegment* data, char const*, char const*, char const*, int kind,
                                      IdentifierBuffer* identifiers) {
    currentChild = 0;
    grammarKind = kind;
    if (kind == 2) sizeForRecords(*segLists, data->recordCount);
    context = this;
    while (data->currentSegment < data->recordCount) {
        advance(*data, flags);
        advanced = 0;
        int const mark = errorInfos->count;
        if (!placeRecord(data, kind, identifiers)) {
            reportUnplacedRecord(data, mark);
            break;
        }
    }
    closingCheck();
}

/// One pass: offers the record on offer to the children from the current one on, until a segment child takes it. A loop
/// or group that consumed records has moved the cursor, and the children behind it see the record that it left.
bool EDI_Structure::placeRecord(DataSegment* data, int kind, IdentifierBuffer* identifiers) {
    for (int index = currentChild; index < children.count; ++index) {
        Validator& child = *children.data[index];
        if (offer(*this, child, *data, nullptr, kind, identifiers)) {
            currentChild = index;
            break;
        }
        reportPassedChild(child, data->currentSegment);
    }
    return advanced != 0;
}

void EDI_Structure::reportPassedChild(Validator& child, int number) {
    bool const isMissing = child.isMandatory() && child.repeatCount == 0;
    // Unlike in a Loop, a child that was never seen is not too few.
    bool const isTooFew = child.repeatCount > 0 && child.repeatCount < child.minRepeat;
    if (!isMissing && !isTooFew) return;
    char const* name = child.getObjectName();
    if (isTrailer(name)) return;
    if (isMissing) addStandardError(*errorInfos, number, name, ERR_SEG_MISSING_MANDATORY, rootLoopText);
    if (isTooFew) addStandardError(*errorInfos, number, name, ERR_SEG_TOO_FEW, rootLoopText);
}

void EDI_Structure::reportUnplacedRecord(DataSegment* data, int mark) {
    if ((flags & dropFailedPassErrors) && errorInfos->count > mark) errorInfos->count = mark;
    addStandardError(*errorInfos, data->currentSegment, data->onOffer().segmentId, ERR_SEG_OUT_OF_SEQUENCE,
                     rootLoopText);
}

/// Reports the mandatory children behind the current one that never came. The number is the child's place, not a
/// record's.
void EDI_Structure::closingCheck() {
    for (int index = currentChild + 1; index < children.count; ++index) {
        Validator& child = *children.data[index];
        if (!child.isMandatory() || child.repeatCount != 0) continue;
        char const* name = child.getObjectName();
        if (!isTrailer(name)) addStandardError(*errorInfos, index + 1, name, ERR_SEG_MISSING_MANDATORY, rootLoopText);
    }
}
