/*
 * The fixed-width lines of the two reports, formatted from a table of widths, and the difference between two reports
 * told by column. Nothing here comes from the library: this is the tests' own idea of a report.
 */
#pragma once

#include <string>
#include <vector>

namespace cases {

struct Column {
    const char* name;
    size_t width;
    bool isNumber;  // zero-filled on the left, where a text is filled with blanks on the right
};

using Layout = std::vector<Column>;

/* The layouts of a finding, 173 bytes, and of a content record, 223 bytes, the '$' at the end included. */
const Layout& findingLayout();
const Layout& contentLayout();

size_t lineLength(const Layout& layout);

/* The line of a record, one text a column. Throws std::invalid_argument where a text is no number in a column of
 * numbers, is wider than its column, or where there are more texts than columns; a column without a text is left blank.
 */
std::string formatLine(const Layout& layout, const std::vector<std::string>& texts);

/* Says in words how the reply differs from the expected lines: for each record, the columns that differ with the
 * expected and the actual text. Empty if there is no difference. */
std::string explainDifference(const Layout& layout, const std::vector<std::string>& expectedLines,
                              const std::string& actualReply);

}  // namespace cases
