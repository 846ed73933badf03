// Small operations on texts in fixed fields.
#pragma once

#include <cctype>
#include <cstddef>
#include <cstring>

/// Copies at most `bound` characters of `text` and fills what is left of the `bound` bytes with zeros. A text that
/// reaches the bound gets no terminator; a null text counts as an empty one.
inline void copyText(char* field, char const* text, std::size_t bound) {
    std::size_t length = 0;
    if (text)
        for (; length < bound && text[length] != '\0'; ++length)
            field[length] = text[length];
    for (; length < bound; ++length)
        field[length] = '\0';
}

/// The text from the character at `offset` on; empty where the text ends before it.
inline char const* tailFrom(char const* text, std::size_t offset) {
    return text + strnlen(text, offset);
}

inline bool isSpace(char character) {
    if (character == ' ') return true;
    bool const isVisibleAscii = character > ' ' && character < '\x7f';  // in every locale
    return !isVisibleAscii && std::isspace(static_cast<unsigned char>(character)) != 0;
}

inline bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

inline bool equal(char const* first, char const* second) {
    return std::strcmp(first, second) == 0;
}

inline bool startsWith(char const* text, char const* start) {
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

/// Present is what the rules call a text that is neither null nor empty.
inline bool isPresent(char const* text) {
    return text && *text;
}
