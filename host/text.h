// What the readers of files have in common.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

namespace edicheck {

inline bool startsWith(std::string_view text, std::string_view head) {
    return text.substr(0, head.size()) == head;
}

inline bool isSpace(char character) {
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}

// Editors of some systems put it in front of a text.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// 1-based line of the text on which `position` stands, given that `knownPosition` in front of it stands on `knownLine`.
inline std::size_t lineAt(std::string_view text, std::size_t position, std::size_t knownPosition,
                          std::size_t knownLine) {
    const auto between = text.substr(knownPosition, position - knownPosition);
    return knownLine + static_cast<std::size_t>(std::count(between.begin(), between.end(), '\n'));
}

}  // namespace edicheck
