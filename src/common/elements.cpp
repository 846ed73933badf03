// Elements: the in-place field splitter.
#include "common/elements.h"

#include <cstring>

char* Elements::GetElement(int index) {
    if (!split) splitText();
    if (index > count) return nullptr;
    if (index == 0) return text;
    if (index < 0 || length < 1) return nullptr;
    return moveTo(index) ? text + lastOffset : nullptr;
}

int Elements::fieldCount() {
    if (!split) splitText();
    return count;
}

void Elements::splitText() {
    split = 1;
    lastIndex = lastOffset = 0;
    for (int offset = 0; offset < length; ++offset) {
        if (text[offset] != delimiter[0]) continue;
        text[offset] = '\0';
        ++count;
    }
    if (text && text[0] != '\0') ++count;
}

bool Elements::moveTo(int index) {
    bool const nearerToStart = index < lastIndex / 2;
    int field = nearerToStart ? 0 : lastIndex;
    int offset = nearerToStart ? 0 : lastOffset;
    while (field > index) {
        for (--offset; offset > 0 && text[offset - 1] != '\0';)
            --offset;
        --field;
    }
    while (field < index) {
        if (offset >= length) return false;
        void const* end = std::memchr(text + offset, '\0', static_cast<std::size_t>(length - offset));
        if (!end) return false;
        offset = static_cast<int>(static_cast<char const*>(end) - text) + 1;
        ++field;
    }
    lastIndex = field;
    lastOffset = offset;
    return true;
}
