// Findings in the short form of the examples' .expected files and of docs/grammars.md: number|name|code|loop.
#pragma once

#include <string>
#include <vector>

// The lines of a report of the library, each in the short form. A line break behind a line is passed over. What is left
// at the end of a report that isn't made of whole lines comes out as a finding of its own.
std::vector<std::string> shortFindings(const std::string& report);

// The lines of a text that are not empty.
std::vector<std::string> filledLines(const std::string& text);

// The whole of a file. Throws std::runtime_error where there is none.
std::string readFile(const std::string& path);
