// The walk of an unordered group: passes over the children, until one pass consumes nothing.
#include <algorithm>

#include "common/text.h"
#include "walk/walkcontract.h"

namespace {

constexpr char groupKeyword[] = "UnorderedGroup";

/// A limit below this counts as this one: a report begins at the limit and goes up from there.
constexpr int lowestLimit = -16;

/// The name of a group behind the keyword and its separator.
char const* groupTail(char const* name) {
    return tailFrom(name, sizeof groupKeyword);
}

/// The text by which a group's limit findings name it: its tail from the first digit on.
char const* groupText(char const* name) {
    char const* text = groupTail(name);
    while (*text != '\0' && !isDigit(*text))
        ++text;
    return *text != '\0' ? text : "LOOP";
}

}  // namespace

void choiceLoop::validateStructure(DataSegment* data, char const*, char const*, char const*, int kind,
                                   IdentifierBuffer* identifiers) {
    if (data->position() != quietPosition && walkPasses(data, kind, identifiers))
        for (int index = 0; index < children.count; ++index)
            settle(*children.data[index], data->currentSegment);
    bool const single = children.count > 0 && children.data[children.count - 1]->getLoopSize() == 1;
    reportLimit(static_cast<long>(data->currentSegment) - repeatCount + maxRepeat, single);
}

/// Walks passes until one consumes nothing. Answers whether any consumed a record.
bool choiceLoop::walkPasses(DataSegment* data, int kind, IdentifierBuffer* identifiers) {
    for (int index = 0; index < children.count; ++index)
        children.data[index]->repeatCount = 0;
    int const findings = errorInfos->count;
    bool consumed = false;
    while (children.count > 0) {
        if (walkPass(data, kind, identifiers)) {
            consumed = true;
        } else if (sawUnknownIdentifier()) {
            reportUnknownIdentifier(data, identifiers);
            advance(*data, flags);
            consumed = true;
        } else {
            break;
        }
    }
    bool const isSilent = !consumed && errorInfos->count == findings;
    quietPosition = isSilent && isQuiet(data->position()) ? data->position() : 0;
    return consumed;
}

/// Whether no child has counted anything, and the groups among them are quiet themselves.
bool choiceLoop::isQuiet(long offered) const {
    for (int index = 0; index < children.count; ++index) {
        Validator& child = *children.data[index];
        if (child.repeatCount != 0) return false;
        if (child.getType() == groupType && static_cast<choiceLoop&>(child).quietPosition != offered) return false;
    }
    return true;
}

/// One pass over all children. Answers whether any consumed a record, which the children behind it then don't see.
bool choiceLoop::walkPass(DataSegment* data, int kind, IdentifierBuffer* identifiers) {
    bool consumed = false;
    for (int index = 0; index < children.count; ++index) {
        int const offered = data->currentSegment;
        offer(*this, *children.data[index], *data, segmentId, kind, identifiers);
        if (data->currentSegment == offered) continue;
        reportLimit(static_cast<long>(maxRepeat) - repeatCount + 1 + data->currentSegment, children.count == 1);
        consumed = true;
    }
    return consumed;
}

bool choiceLoop::sawUnknownIdentifier() {
    bool seen = false;
    for (int index = 0; index < children.count; ++index)
        if (children.data[index]->checkLoopId() != 0) seen = true;
    return seen;
}

/// A record whose initiator is right and whose identifier no child knows: two findings, and the walk steps over it.
void choiceLoop::reportUnknownIdentifier(DataSegment* data, IdentifierBuffer* identifiers) {
    Validator& first = *children.data[0];
    char const* name = first.getObjectName();
    int const number = data->currentSegment;
    addStandardError(*errorInfos, number, name, ERR_SEG_DATA_ELEMENT, loopIdOf(first.segmentId));
    char const* identifier = identifierOnOffer(*data, identifiers);
    if (!identifier) return;
    char const* value = std::strchr(identifier, '$') ? " " : identifier;
    // The identifier of BHT and ENT is their second element, and is reported at the first all the same.
    int const elementPosition = equal(name, "HL") ? 3 : 1;
    errorInfos->add(number, elementPosition, name, ERR_LOOP_MISSING_ID, "", "", "", "", value, "00");
}

/// Adds a child's occurrences to the group's, and reports what it lacks.
void choiceLoop::settle(Validator& child, int number) {
    bool const isCapped = child.maxRepeat > 0 && child.maxRepeat < child.repeatCount;
    repeatCount += isCapped ? child.maxRepeat : child.repeatCount;

    char loopText[segmentIdLength + 1];  // a copy: the name may be rewritten below
    copyText(loopText, loopIdOf(child.segmentId), sizeof loopText);
    char const* name = reportName(child);
    if (child.isMandatory() && child.repeatCount == 0) reportShortage(child, number, name, loopText);
    // A group has no too-few report: a second missing one stands for it, once, however great the shortage.
    if (child.repeatCount < child.minRepeat && child.minRepeat > 0)
        reportShortage(child, number, reportName(child), loopText);
}

void choiceLoop::reportShortage(Validator& child, int number, char const* name, char const* loopText) {
    addStandardError(*errorInfos, number, name, ERR_SEG_MISSING_MANDATORY, loopText);
    ++child.repeatCount;
    ++repeatCount;
}

/// The name under which a child is reported missing. For a Loop it is that of the group's first child, whichever the
/// child at hand is. A nested group loses its keyword for good: its node goes by the bare tail from then on.
char const* choiceLoop::reportName(Validator& child) {
    if (startsWith(child.segmentId, "Loop")) return children.data[0]->getObjectName();
    if (startsWith(child.segmentId, groupKeyword)) {
        char const* tail = groupTail(child.segmentId);
        std::memmove(child.segmentId, tail, std::strlen(tail) + 1);
    }
    return child.segmentId;
}

/// One finding for each occurrence beyond the limit, the numbers worked back from the cursor as though the excess
/// occurrences were the last ones.
void choiceLoop::reportLimit(long startNumber, bool single) {
    if (maxRepeat == 0 || repeatCount <= maxRepeat) return;
    char const* code = single ? ERR_SEG_EXCEED_LIMIT : ERR_LOOP_TOO_MANY_ITERATION;
    char const* name = getObjectName();
    char const* loopText = groupText(segmentId);
    int const first = std::max(maxRepeat, lowestLimit);
    for (int occurrence = first; occurrence < repeatCount; ++occurrence) {
        long const number = startNumber + occurrence - maxRepeat;
        addStandardError(*errorInfos, static_cast<int>(number), name, code, loopText);
    }
}
