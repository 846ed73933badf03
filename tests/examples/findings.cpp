// Where the columns of a finding stand in the report's line.
#include "findings.h"

#include <fstream>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace {

constexpr std::size_t kLineLength = 173;

std::string trimmed(const std::string& text) {
    const std::size_t last = text.find_last_not_of(' ');
    return last == text.npos ? "" : text.substr(0, last + 1);
}

std::string shortForm(const std::string& line) {
    const std::string number = std::to_string(std::stoul(line.substr(0, 10)));
    return number + '|' + trimmed(line.substr(15, 8)) + '|' + trimmed(line.substr(23, 5)) + '|' +
           trimmed(line.substr(28, 6));
}

bool isLine(const std::string& line) {
    return line.size() == kLineLength && line.back() == '$' && line.find_first_not_of("0123456789") >= 10;
}

// Widths of the columns of a line. The first two are numbers.
using Widths = std::vector<std::size_t>;
const Widths kRuleFindingWidths = {10, 3, 2, 8, 5, 6, 4, 4, 80, 50};
const Widths kRuleContentWidths = {10, 3, 2, 8, 5, 6, 4, 4, 80, 20, 8, 8, 8, 2, 4, 50};

std::string withoutLeadingZeros(const std::string& digits) {
    const std::size_t first = digits.find_first_not_of('0');
    return first == digits.npos ? "0" : digits.substr(first);
}

std::string columnsOf(const std::string& line, const Widths& widths) {
    const std::size_t length = std::accumulate(widths.begin(), widths.end(), std::size_t{1});
    if (line.size() != length || line.back() != '$') return "not a line of a report: " + line;
    std::string columns;
    std::size_t position = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const std::string column = trimmed(line.substr(position, widths[i]));
        columns += (i == 0 ? "" : "|") + (i < 2 ? withoutLeadingZeros(column) : column);
        position += widths[i];
    }
    return columns;
}

std::vector<std::string> columnsOfLines(const std::string& output, const Widths& widths) {
    std::vector<std::string> lines = filledLines(output);
    for (std::string& line : lines)
        line = columnsOf(line, widths);
    return lines;
}

}  // namespace

std::vector<std::string> ruleFindings(const std::string& output) {
    return columnsOfLines(output, kRuleFindingWidths);
}

std::vector<std::string> ruleContents(const std::string& output) {
    return columnsOfLines(output, kRuleContentWidths);
}

std::vector<std::string> shortFindings(const std::string& report) {
    std::vector<std::string> findings;
    for (std::size_t position = 0; position < report.size(); position += kLineLength) {
        if (report[position] == '\n' && ++position == report.size()) break;
        const std::string line = report.substr(position, kLineLength);
        findings.push_back(isLine(line) ? shortForm(line) : "not a line of a report: " + line);
    }
    return findings;
}

std::vector<std::string> filledLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}
