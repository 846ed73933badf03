// The walk of a Loop: as many iterations as the records allow.
//
// validateLoop decides what a record means to the loop; validateStructure walks one iteration behind its initiator.
#include "common/text.h"
#include "rules/seglists.h"
#include "walk/walkcontract.h"

// One iteration: the children from the first behind the initiator, in order. There is no test for the end of the data:
// the empty record behind it goes past every child. On return the cursor stands one short of the first record that the
// iteration did not consume, for the caller's advance step.
void Loop::validateStructure(DataSegment* data, char const*, char const*, char const* loopContext, int kind,
                             IdentifierBuffer* identifiers) {
    currentChild = 1;
    advance(*data, flags);
    // The loop's id, of either form of the context, as long as the id begins with a digit.
    char const* loopText = isDigit(loopContext[0]) ? loopContext : loopIdOf(loopContext);
    for (int index = currentChild; index < children.count; ++index) {
        Validator& child = *children.data[index];
        while (offer(*this, child, *data, loopContext, kind, identifiers)) {
            advance(*data, flags);
            currentChild = index;
        }
        bool const isMissing = child.isMandatory() && child.repeatCount == 0;
        // Unlike at the root, a child that was never seen is too few as well: a mandatory one is then reported twice.
        bool const isTooFew = child.repeatCount < child.minRepeat && child.minRepeat > 0;
        if (!isMissing && !isTooFew) continue;
        char const* name = child.getObjectName();
        if (isTrailer(name)) continue;
        int const number = data->currentSegment;
        if (isMissing) addStandardError(*errorInfos, number, name, ERR_SEG_MISSING_MANDATORY, loopText);
        if (isTooFew) addStandardError(*errorInfos, number, name, ERR_SEG_TOO_FEW, loopText);
    }
    --data->currentSegment;
}

int Loop::validateLoop(DataSegment* data, char const* segment, char const*, char const*, int kind,
                       IdentifierBuffer* identifiers) {
    loopIdMissing = 0;
    if (children.count == 0) return 0;
    char const* id = segment;
    int unclaimable = 0;  // the record from which an iteration without initiator consumed nothing
    for (;;) {
        Verdict const verdict = judge(id, data->onOffer().identifierOffsets[0], identifiers);
        if (verdict == accepted) {
            if (!runIteration(data, id, kind, identifiers)) return 0;
        } else {
            if (flags & noInitiatorSearch) return 0;
            if (verdict == identifierMiss) loopIdMissing = 1;
            // An iteration that consumed nothing would come back to its record for ever: it is not begun a second time.
            if (data->currentSegment == unclaimable || !hasLaterChildNamed(id)) return 0;
            unclaimable = data->currentSegment;
            runIterationWithoutInitiator(data, kind, identifiers);
        }
        advance(*data, flags);
        id = data->onOffer().segmentId;
    }
}

Loop::Verdict Loop::judge(char const* id, int identifierOffset, IdentifierBuffer* identifiers) {
    Validator& initiator = *children.data[0];
    if (!isNamed(initiator.getObjectName(), id)) return rejected;
    if (!identifiers || initiator.identifierOffsets[0] == 0) return accepted;
    if (identifierOffset == 0) {
        ++unidentifiedCount;
        return accepted;
    }
    return allowsIdentifier(identifiers->at(identifierOffset), identifiers) ? accepted : identifierMiss;
}

bool Loop::allowsIdentifier(char const* identifier, IdentifierBuffer* identifiers) const {
    for (int offset : children.data[0]->identifierOffsets)
        if (offset != 0 && equal(identifiers->at(offset), identifier)) return true;
    return false;
}

/// A nested loop answers by the text of its grammar record, which is no id: only segments and groups can claim a
/// record.
bool Loop::hasLaterChildNamed(char const* id) const {
    for (int index = 1; index < children.count; ++index) {
        Validator& child = *children.data[index];
        if (isNamed(child.getType() == groupType ? child.getObjectName() : child.segmentId, id)) return true;
    }
    return false;
}

/// An iteration from its initiator on. Answers false where it goes beyond the limit and has findings of its own: they
/// go, the limit's with them, and the cursor stays on the last record that it consumed, which the parent then offers to
/// its next child. The lines that it listed stay listed. That retreat is meant: without it the report of a message with
/// one iteration too many would change.
bool Loop::runIteration(DataSegment* data, char const* id, int kind, IdentifierBuffer* identifiers) {
    clearCounters(0);
    ++repeatCount;
    int const mark = errorInfos->count;
    bool const overLimit = reportLimit(data->currentSegment);
    int const limitMark = errorInfos->count;
    char const* loopId = loopIdOf(segmentId);
    if (kind == 2) segLists->add(id, identifierOnOffer(*data, identifiers), loopId, data->onOffer().text);
    children.data[0]->context = this;
    validateStructure(data, nullptr, nullptr, loopId, kind, identifiers);
    if (!overLimit || errorInfos->count <= limitMark) return true;
    errorInfos->count = mark;
    return false;
}

/// An iteration that begins at a later child, whose initiator has gone missing. Nothing is listed for the absent
/// initiator, and the lines carry the loop's whole name in place of its id.
void Loop::runIterationWithoutInitiator(DataSegment* data, int kind, IdentifierBuffer* identifiers) {
    clearCounters(1);
    Validator& initiator = *children.data[0];
    addStandardError(*errorInfos, data->currentSegment, initiator.segmentId, ERR_LOOP_MISSING_INITIATOR,
                     loopIdOf(segmentId));
    ++repeatCount;
    reportLimit(data->currentSegment);
    --data->currentSegment;  // the first advance step of the iteration brings the same record on offer again
    initiator.context = this;
    validateStructure(data, nullptr, nullptr, segmentId, kind, identifiers);
}

void Loop::clearCounters(int firstChild) {
    for (int index = firstChild; index < children.count; ++index) {
        children.data[index]->repeatCount = 0;
        children.data[index]->unidentifiedCount = 0;
    }
}

/// Iterations that began at a record without an identifier don't count against the limit.
bool Loop::isOverLimit() const {
    if (maxRepeat == 0 || repeatCount <= maxRepeat) return false;
    return unidentifiedCount == 0 || maxRepeat < repeatCount - unidentifiedCount;
}

bool Loop::reportLimit(int number) {
    if (!isOverLimit()) return false;
    char const* code = getLoopSize() == 1 ? ERR_SEG_EXCEED_LIMIT : ERR_LOOP_TOO_MANY_ITERATION;
    addStandardError(*errorInfos, number, children.data[0]->segmentId, code, loopIdOf(segmentId));
    return true;
}
