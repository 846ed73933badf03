// What the tests say about the layout of classes that offsetof doesn't reach: the order of their members, and the order
// of their virtual operations.
#pragma once

#include <cstdint>
#include <cstring>

/// Whether the members lie one behind the other, in the order in which they are named.
template <typename... Members>
bool lieInOrder(Members const&... members) {
    std::uintptr_t behind = 0;
    bool ordered = true;
    auto const look = [&](std::uintptr_t address, std::size_t size) {
        ordered = ordered && address >= behind;
        behind = address + size;
    };
    (look(reinterpret_cast<std::uintptr_t>(&members), sizeof members), ...);
    return ordered;
}

#if defined(__x86_64__)
#define EDIEXIT_KNOWS_VIRTUAL_SLOTS

/// The place of a virtual operation in its class's table; -1 for an operation that isn't virtual. The destructor takes
/// the places 0 and 1. A pointer to a virtual operation holds the offset in the table, plus 1.
template <typename Operation>
long virtualSlot(Operation operation) {
    std::uintptr_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return word % 2 == 1 ? static_cast<long>((word - 1) / sizeof(void*)) : -1;
}
#endif
