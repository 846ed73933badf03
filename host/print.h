// Printing of what was found, for a person to read.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "grammar.h"
#include "report.h"
#include "stream.h"

namespace edicheck {

// The text as one line of a terminal: control characters as \xNN, the end of a long text left out.
std::string shown(std::string_view text);

// "1 finding", "2 findings".
std::string counted(std::size_t count, const std::string& what);

// The findings, grouped by segment.
void printFindings(std::ostream& out, const std::vector<Record>& records, const std::vector<Explanation>& explanations);

// The whole message, indented by loop, each finding behind its segment.
void printMessage(std::ostream& out, const std::vector<Record>& records, const std::vector<Explanation>& explanations,
                  const std::vector<LocatedRecord>& located, const Grammar& grammar);

// The values that rules took out of the message, as a table. `located` are the lines that rules speak of.
void printContents(std::ostream& out, const std::vector<Content>& contents, const std::vector<LocatedRecord>& located);

// The located segments in the library's order, each with its loop.
void printLocated(std::ostream& out, const std::vector<Record>& records, const std::vector<LocatedRecord>& located);

}  // namespace edicheck
