// Printing of tables.
#include "table.h"

#include <algorithm>
#include <utility>

#include "print.h"

namespace edicheck {

namespace {

constexpr std::size_t kGap = 2;  // blanks between columns

// Characters of UTF-8 text: bytes that don't continue one.
std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

}  // namespace

Table::Table(std::vector<std::string> heads) : rows_{std::move(heads)} {}

void Table::add(std::vector<std::string> row) {
    for (std::string& cell : row)
        cell = shown(cell);
    rows_.push_back(std::move(row));
}

void Table::print(std::ostream& out, const std::string& indent) const {
    const std::size_t columns = rows_.front().size();
    std::vector<std::size_t> widths(columns, 0);
    std::vector<bool> used(columns, false);
    for (const auto& row : rows_) {
        for (std::size_t column = 0; column < columns; ++column) {
            widths[column] = std::max(widths[column], widthOf(row[column]));
            if (&row != &rows_.front() && !row[column].empty()) used[column] = true;
        }
    }
    for (const auto& row : rows_) {
        std::string line = indent;
        for (std::size_t column = 0; column < columns; ++column) {
            if (used[column]) line += row[column] + std::string(widths[column] - widthOf(row[column]) + kGap, ' ');
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

}  // namespace edicheck
