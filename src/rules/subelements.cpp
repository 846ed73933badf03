// SubElements: the private copy of an element.
#include "rules/subelements.h"

#include <cstring>

#include "common/exitparam.h"

SubElements::~SubElements() {
    std::free(copy);
}

void SubElements::split(char const* element, char delimiter) {
    elements = Elements();
    if (!element) return;
    std::size_t const length = std::strlen(element);
    if (length >= capacity) {
        copy = static_cast<char*>(reallocOrThrow(copy, length + 1));
        capacity = length + 1;
    }
    std::memcpy(copy, element, length + 1);
    elements.text = copy;
    elements.length = static_cast<int>(length);
    elements.delimiter[0] = delimiter;
}
