// exitparam: the host's call record, and the one failure that travels to the host as a reply.
//
// The library throws nothing but a pointer to szFailure, where memory runs out. The exports that have a frame for it
// answer with that text.
#pragma once

#include <cstddef>
#include <cstdlib>

#include "ediexit.h"

inline constexpr char szFailure[] = "-99";

[[noreturn]] inline void throwFailure() { throw static_cast<char const*>(szFailure); }

/// Takes `size` bytes from malloc, for free. Throws szFailure where there are none.
inline void* mallocOrThrow(std::size_t size) {
    void* memory = std::malloc(size > 0 ? size : 1);
    if (!memory) throwFailure();
    return memory;
}

/// Moves `memory` to `size` bytes by realloc. Throws szFailure where there are none; `memory` is then as it was.
inline void* reallocOrThrow(void* memory, std::size_t size) {
    void* moved = std::realloc(memory, size > 0 ? size : 1);
    if (!moved) throwFailure();
    return moved;
}
