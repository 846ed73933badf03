// ManagedArray<T>: the growable array under every list of records.
//
// It holds no count of elements in use: each owner keeps that beside the array, and reserves by index. Storage comes
// from malloc and realloc, so T must be trivially copyable; T's default constructor gives a new element its texts.
// Element addresses do not survive an access that grows the array.
#pragma once

#include <new>
#include <type_traits>

#include "common/exitparam.h"

template <typename T>
class ManagedArray {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>,
                  "elements are moved by realloc");

public:
    T* data = nullptr;  // owned, from malloc; array of `size`
    int size = 0;       // elements that exist and have been constructed
    int growBy = 0;     // growth step; 0 is worked out when it is next needed

    ManagedArray() = default;
    ManagedArray(ManagedArray const&) = delete;
    ManagedArray& operator=(ManagedArray const&) = delete;
    ~ManagedArray() { std::free(data); }

    /// Opens the array with `newSize` elements and a growth step. On a live array a larger size means one step of
    /// growth, not the difference, and a smaller one abandons the elements behind it. Throws szFailure where there is
    /// no memory.
    void setSize(int newSize, int newGrowBy) {
        if (newGrowBy > 0) growBy = newGrowBy;
        if (newSize == 0) {
            release();
        } else if (!data) {
            data = static_cast<T*>(mallocOrThrow(bytes(newSize)));
            constructElements(data, newSize);
            size = newSize;
        } else if (newSize < size) {
            size = newSize;
        } else {
            grow(-1);
        }
    }

    /// One step of growth: to `newSize`, or with -1 by the step. The first growth of an empty array gives 128 elements
    /// and a step of 32, whatever step was set. Throws szFailure where there is no memory.
    void grow(int newSize) {
        if (size == 0 && newSize == -1) {
            growBy = firstGrowBy;
            newSize = firstSize;
        } else if (size == 0 || growBy == 0) {
            growBy = static_cast<int>(static_cast<double>(static_cast<float>(size)) * 0.1);
        }
        if (newSize == -1) newSize = size + growBy;
        if (newSize <= size) return;
        data = static_cast<T*>(reallocOrThrow(data, bytes(newSize)));
        constructElements(data + size, newSize - size);
        size = newSize;
    }

    void constructElements(T* first, int number) {
        if (!first) return;
        for (int index = 0; index < number; ++index)
            new (first + index) T();
    }

    /// The element at `index`. An index at or behind the end grows the array by one step, and by no more than one: an
    /// index that still lies outside throws szFailure, as does a negative one.
    T& operator[](int index) {
        if (index >= size) grow(-1);
        if (index < 0 || index >= size) throwFailure();
        return data[index];
    }

private:
    static constexpr int firstSize = 128;
    static constexpr int firstGrowBy = 32;

    static std::size_t bytes(int number) { return static_cast<std::size_t>(number) * sizeof(T); }

    void release() {
        std::free(data);
        data = nullptr;
        size = 0;
    }
};
