// SegLists: the list of located segments.
#include "rules/seglists.h"

#include "common/text.h"

namespace {

char* append(char* position, char const* text, std::size_t length) {
    if (length > 0) std::memcpy(position, text, length);
    return position + length;
}

/// What stands behind the first delimiter of a line's text. A NUL as delimiter finds nothing.
char const* behindFirstDelimiter(Elements const& elements) {
    bool const canBeFound = elements.text && elements.delimiter[0] != '\0';
    char const* delimiter = canBeFound ? std::strchr(elements.text, elements.delimiter[0]) : nullptr;
    return delimiter ? delimiter + 1 : "";
}

}  // namespace

void SegLists::add(char const* segmentId, char const* identifier, char const* loopId, char* text) {
    SegListInfo& line = (*this)[count];
    copyText(line.segmentId, segmentId, 3);
    if (identifier) copyText(line.identifier, identifier, 5);
    if (loopId) copyText(line.loopId, loopId, 6);
    if (text) {
        line.elements.length = static_cast<int>(std::strlen(text));
        line.elements.text = text;
        line.elements.delimiter[0] = elementDelimiter;
    }
    ++count;
}

std::size_t SegLists::loopTextSize() const {
    // The ids at their longest and the two delimiters.
    constexpr std::size_t headLength = 3 + 6 + 2;
    std::size_t total = 1;
    for (int index = 0; index < count; ++index)
        total += static_cast<std::size_t>(data[index].elements.length + terminatorLength) + headLength;
    return total;
}

void SegLists::printLoopText(char* reply) const {
    for (int index = 0; index < count; ++index) {
        SegListInfo const& line = data[index];
        char const* elementText = behindFirstDelimiter(line.elements);
        reply = append(reply, line.segmentId, std::strlen(line.segmentId));
        reply = append(reply, line.elements.delimiter, 1);
        reply = append(reply, line.loopId, std::strlen(line.loopId));
        reply = append(reply, line.elements.delimiter, 1);
        reply = append(reply, elementText, std::strlen(elementText));
        reply = append(reply, terminatorText, static_cast<std::size_t>(terminatorLength));
    }
}
