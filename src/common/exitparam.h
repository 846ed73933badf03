// exitparam: the host's call record, and the one failure that travels to the host as a reply.
//
// The library throws nothing but a pointer to szFailure, where memory runs out. The exports that have a frame for it
// answer with that text.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "ediexit.h"

inline constexpr char szFailure[] = "-99";

[[noreturn]] inline void throwFailure() {
    throw static_cast<char const*>(szFailure);
}

/// Asks the kernel to back a large block by large pages. The lists of a long message are touched once, page by page,
/// and the page faults cost more than the walk. It is a hint: where it is refused, nothing is different.
inline void preferLargePages(void* memory, std::size_t size) {
    constexpr std::size_t worthwhile = std::size_t{4} << 20;
    constexpr std::uintptr_t pageSize = 4096;
    if (size < worthwhile) return;
    auto const address = reinterpret_cast<std::uintptr_t>(memory);
    std::uintptr_t const start = address / pageSize * pageSize;
    madvise(reinterpret_cast<void*>(start), size + (address - start), MADV_HUGEPAGE);
}

/// Takes `size` bytes from malloc, for free. Throws szFailure where there are none.
inline void* mallocOrThrow(std::size_t size) {
    void* memory = std::malloc(size > 0 ? size : 1);
    if (!memory) throwFailure();
    preferLargePages(memory, size);
    return memory;
}

/// Moves `memory` to `size` bytes by realloc. Throws szFailure where there are none; `memory` is then as it was.
inline void* reallocOrThrow(void* memory, std::size_t size) {
    void* moved = std::realloc(memory, size > 0 ? size : 1);
    if (!moved) throwFailure();
    preferLargePages(moved, size);
    return moved;
}
