// SubElements: a private copy of an element, split into its sub-elements. A rule never splits a line's own element by
// sub-element: that would cut it in place for good.
#pragma once

#include <cstddef>

#include "common/elements.h"

class SubElements {
public:
    SubElements() = default;
    SubElements(SubElements const&) = delete;
    SubElements& operator=(SubElements const&) = delete;
    ~SubElements();

    /// Takes a copy of `element` in place of the one before. A null element has no sub-elements.
    /// Throws szFailure where there is no memory.
    void split(char const* element, char delimiter);

    /// The sub-element at 0-based `position`; null where there is none. Stays valid until the next split.
    char* at(int position) { return elements.GetElement(position); }

private:
    Elements elements;
    char* copy = nullptr;  // owned, from malloc; array of `capacity`
    std::size_t capacity = 0;
};
