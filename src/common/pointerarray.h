// PointerArray<T>: a list of pointers that grows by half of its capacity.
#pragma once

#include "common/exitparam.h"

template <typename T>
class PointerArray {
public:
    T** data;  // owned, from malloc; array of `capacity`, of which `count` are in use
    int capacity;
    int growBy;  // places that the next growth adds
    int count = 0;

    /// Throws szFailure where there is no memory.
    PointerArray(int firstCapacity, int firstGrowBy)
        : data(static_cast<T**>(mallocOrThrow(bytes(firstCapacity)))), capacity(firstCapacity), growBy(firstGrowBy) {}
    PointerArray(PointerArray const&) = delete;
    PointerArray& operator=(PointerArray const&) = delete;
    ~PointerArray() { std::free(data); }

    /// Appends a pointer. Throws szFailure where there is no memory; the list is then as it was.
    void add(T* pointer) {
        if (count >= capacity) {
            data = static_cast<T**>(reallocOrThrow(data, bytes(capacity + growBy)));
            capacity += growBy;
            growBy = static_cast<int>((capacity + 1) * 0.5);
        }
        data[count++] = pointer;
    }

private:
    static std::size_t bytes(int number) { return static_cast<std::size_t>(number) * sizeof(T*); }
};
