// Reading an interchange file: X12 (ISA to IEA) and EDIFACT (UNA or UNB to UNZ), several of them one after the other.
//
// Segments are views of the text that was read, which has to outlive them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace edicheck {

struct Delimiters {
    char element;
    char component;
    char terminator;
    std::optional<char> release;  // takes the meaning from the character behind it; X12 has none
};

struct Segment {
    std::string_view text;  // as it stands in the file, without terminator
    std::size_t line;       // 1-based line of the file on which it begins
};

// One transaction set (ST to SE) or message (UNH to UNT), both ends included.
struct Transaction {
    std::string type;     // such as 850 or ORDERS
    std::string control;  // its control number
    Delimiters delimiters;
    std::vector<Segment> segments;
};

// Something that is wrong with the envelope, which no grammar looks at.
struct Note {
    std::size_t line;
    std::string text;
};

struct InterchangeFile {
    std::vector<Transaction> transactions;
    std::vector<Note> notes;
    std::optional<Note> error;  // why reading ended early; what stood before it is in `transactions`
};

// Takes any text. White space between segments is passed over, so a line break may follow a terminator, or be one.
InterchangeFile readInterchanges(std::string_view text);

// What a character of a segment is, once the release character is undone.
enum class Role { Text, ElementDelimiter, ComponentDelimiter };

// Calls visit(character, role) for each character of a segment's text, release characters left out.
template <class Visit>
void visitCharacters(std::string_view text, const Delimiters& delimiters, Visit visit) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == delimiters.release) {
            if (++i < text.size()) visit(text[i], Role::Text);
        } else if (character == delimiters.element) {
            visit(character, Role::ElementDelimiter);
        } else if (character == delimiters.component) {
            visit(character, Role::ComponentDelimiter);
        } else {
            visit(character, Role::Text);
        }
    }
}

// The first component of an element; element 0 is the segment's id. Empty where there is no such element.
std::string firstComponent(std::string_view text, const Delimiters& delimiters, std::size_t element);

}  // namespace edicheck
