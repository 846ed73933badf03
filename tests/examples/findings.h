// Findings in the short form of the examples' .expected files and of docs/grammars.md: number|name|code|loop.
#pragma once

#include <string>
#include <vector>

// The lines of a report of the library, each in the short form. A line break behind a line is passed over. What is left
// at the end of a report that isn't made of whole lines comes out as a finding of its own.
std::vector<std::string> shortFindings(const std::string& report);

// The lines that edicheck prints of what rules find, each in the form of the examples' .rules.expected files, its columns:
// line|element|sub-element|segment|code|loop|word|word|text|value. Numbers have no leading zeros. A line that isn't one of
// a report comes out as it is, behind words that say so.
std::vector<std::string> ruleFindings(const std::string& output);

// The same for the values that rules take out of a message, in the form of the .contents.expected files:
// line|element|sub-element|segment|code|loop|word|word|text|value|qualifier|key|date|V1|V2|code table.
std::vector<std::string> ruleContents(const std::string& output);

// The lines of a text that are not empty.
std::vector<std::string> filledLines(const std::string& text);

// The whole of a file. Throws std::runtime_error where there is none.
std::string readFile(const std::string& path);
