// A rules file: the rule records as the library takes them, and what looks wrong about them.
//
// The file may have line breaks between records, but not within one, where they would become part of a field. Lines
// whose first character is '#' (blanks in front of it don't matter) are comments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "interchange.h"

namespace edicheck {

class RuleFile {
public:
    // Takes the text of a rules file. Throws Failure, which names the line, when a record is not ended by '$' on the line
    // on which it begins, and when there is no record.
    explicit RuleFile(std::string_view fileText);

    // The records, one behind the other.
    const std::string& text() const { return text_; }

    // What the library would take without a word, though it can hardly be meant.
    const std::vector<Note>& warnings() const { return warnings_; }

private:
    void readLine(std::string_view text, std::size_t line);
    void inspect(std::string_view record, std::size_t line);

    std::string text_;
    std::vector<Note> warnings_;
};

}  // namespace edicheck
