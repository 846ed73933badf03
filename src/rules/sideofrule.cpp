// SideOfRule: one operand of a rule.
#include "rules/sideofrule.h"

#include "common/text.h"

SideOfRule::~SideOfRule() = default;

void SideOfRule::setIds(char const* newLoopId, char const* newSegmentId) {
    setId(0, segmentIdAt, newLoopId);
    setId(segmentIdAt, segmentIdWidth, newSegmentId);
}

void SideOfRule::setId(int at, int width, char const* id) {
    if (!isPresent(id)) {
        std::memset(ids + at, 0, static_cast<std::size_t>(width));
        return;
    }
    std::size_t const length = strnlen(id, static_cast<std::size_t>(idBytes - at - 1));
    std::memcpy(ids + at, id, length);
    ids[static_cast<std::size_t>(at) + length] = '\0';
}

int SideOfRule::subElementNumber(int index) const {
    return static_cast<int>(static_cast<unsigned>(subElementPositions[index]) + 1U);
}
