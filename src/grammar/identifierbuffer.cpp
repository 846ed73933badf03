// IdentifierBuffer: the string pool.
#include "grammar/identifierbuffer.h"

#include <climits>
#include <cstring>

#include "common/exitparam.h"

namespace {

constexpr int alignment = 8;

int roundUp(int size) {
    return (size + alignment - 1) / alignment * alignment;
}

}  // namespace

IdentifierBuffer::IdentifierBuffer() : bytes(static_cast<char*>(mallocOrThrow(static_cast<std::size_t>(capacity)))) {
    std::memset(bytes, 0, static_cast<std::size_t>(capacity));
}

IdentifierBuffer::~IdentifierBuffer() {
    std::free(bytes);
}

int IdentifierBuffer::add(char const* text) {
    std::size_t const length = std::strlen(text);
    std::size_t const needed = static_cast<std::size_t>(used) + length + 1;
    if (needed > INT_MAX - 2 * alignment) throwFailure();
    if (needed >= static_cast<std::size_t>(capacity)) {
        // One step serves every text of a usual width; a longer one takes as many steps as it needs at once.
        int const missing = static_cast<int>(needed) - capacity;
        int const steps = missing <= growBy ? 1 : (missing - 1) / growBy + 1;
        if (steps > (INT_MAX - capacity) / growBy) throwFailure();
        growTo(capacity + steps * growBy);
    }
    int const offset = used;
    used = roundUp(used + static_cast<int>(length) + 2);
    std::memcpy(bytes + offset, text, length);
    return offset;
}

void IdentifierBuffer::reserve(int poolSize) {
    int const half = static_cast<int>(poolSize * 0.5);
    if (half != 0 && half > growBy) growBy = roundUp(half);
    int const target = poolSize == 0 ? capacity + growBy : roundUp(poolSize);
    if (target > capacity) growTo(target);
}

void IdentifierBuffer::growTo(int newCapacity) {
    bytes = static_cast<char*>(reallocOrThrow(bytes, static_cast<std::size_t>(newCapacity)));
    std::memset(bytes + capacity, 0, static_cast<std::size_t>(newCapacity - capacity));
    capacity = newCapacity;
}
