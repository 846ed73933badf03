#include "reportlines.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

#include "casefile.h"

namespace cases {
namespace {

constexpr char lineEnd = '$';

std::string formatNumber(const Column& column, const std::string& text) {
    const bool isNegative = !text.empty() && text[0] == '-';
    const std::string digits = text.substr(isNegative ? 1 : 0);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        throw std::invalid_argument(std::string("the column '") + column.name + "' takes a number, not '" + text + "'");
    }
    const size_t fill = digits.size() < column.width ? column.width - digits.size() : 0;
    return (isNegative ? "-" : "") + std::string(fill, '0') + digits;
}

std::string formatText(const Column& column, const std::string& text) {
    if (text.size() > column.width) {
        throw std::invalid_argument(std::string("the column '") + column.name + "' shows " +
                                    std::to_string(column.width) + " characters, '" + text + "' is longer");
    }
    return text + std::string(column.width - text.size(), ' ');
}

std::vector<std::string> cut(const std::string& reply, size_t length) {
    std::vector<std::string> lines;
    for (size_t at = 0; at < reply.size(); at += length)
        lines.push_back(reply.substr(at, length));
    return lines;
}

std::string quoted(const std::string& text) {
    return "\"" + escape(text) + "\"";
}

/* The line's columns with the fill left out, as a case file would give them. */
std::string inColumns(const Layout& layout, const std::string& line) {
    if (line.size() != lineLength(layout)) return quoted(line);
    std::string result;
    size_t at = 0;
    for (const Column& column : layout) {
        std::string text = trim(line.substr(at, column.width));
        if (column.isNumber) text.erase(0, std::min(text.find_first_not_of('0'), text.size() - 1));
        result += (result.empty() ? "" : " | ") + escape(text);
        at += column.width;
    }
    return result;
}

std::string explainLine(const Layout& layout, const std::string& expected, const std::string& actual) {
    if (expected.size() != lineLength(layout) || actual.size() != expected.size()) {
        return "    expected " + quoted(expected) + "\n    found    " + quoted(actual) + "\n";
    }
    std::string result;
    size_t at = 0;
    for (const Column& column : layout) {
        const std::string expectedText = expected.substr(at, column.width);
        const std::string actualText = actual.substr(at, column.width);
        if (expectedText != actualText) {
            result += std::string("    ") + column.name + ": expected " + quoted(expectedText) + ", found " +
                      quoted(actualText) + "\n";
        }
        at += column.width;
    }
    if (expected.back() != actual.back()) result += "    the line does not end with '$'\n";
    return result;
}

}  // namespace

const Layout& findingLayout() {
    static const Layout layout = {
        {"line", 10, true}, {"element", 3, true}, {"sub", 2, false}, {"segment", 8, false}, {"code", 5, false},
        {"loop", 6, false}, {"txn", 4, false},    {"seg", 4, false}, {"text", 80, false},   {"value", 50, false},
    };
    return layout;
}

const Layout& contentLayout() {
    static const Layout layout = {
        {"line", 10, true},  {"element", 3, true}, {"sub", 2, true},        {"segment", 8, false},
        {"code", 5, false},  {"loop", 6, false},   {"txn", 4, false},       {"seg", 4, false},
        {"text", 80, false}, {"value", 20, false}, {"qualifier", 8, false}, {"key", 8, false},
        {"date", 8, false},  {"v1", 2, false},     {"pattern", 4, false},   {"table", 50, false},
    };
    return layout;
}

size_t lineLength(const Layout& layout) {
    const size_t lineEndWidth = 1;
    return std::accumulate(layout.begin(), layout.end(), lineEndWidth,
                           [](size_t sum, const Column& column) { return sum + column.width; });
}

std::string formatLine(const Layout& layout, const std::vector<std::string>& texts) {
    if (texts.size() > layout.size()) {
        throw std::invalid_argument("the record has " + std::to_string(layout.size()) + " columns, not " +
                                    std::to_string(texts.size()));
    }
    std::string line;
    for (size_t i = 0; i < layout.size(); ++i) {
        const std::string text = i < texts.size() ? texts[i] : "";
        line += layout[i].isNumber ? formatNumber(layout[i], text) : formatText(layout[i], text);
    }
    return line + lineEnd;
}

std::string explainDifference(const Layout& layout, const std::vector<std::string>& expectedLines,
                              const std::string& actualReply) {
    if (std::accumulate(expectedLines.begin(), expectedLines.end(), std::string()) == actualReply) return "";
    const std::vector<std::string> actualLines = cut(actualReply, lineLength(layout));
    std::string result = "the report differs (" + std::to_string(expectedLines.size()) + " records expected, " +
                         std::to_string(actualLines.size()) + " found)\n";
    for (size_t i = 0; i < std::max(expectedLines.size(), actualLines.size()); ++i) {
        const std::string number = "  record " + std::to_string(i + 1);
        if (i >= actualLines.size()) {
            result += number + " is missing:    " + inColumns(layout, expectedLines[i]) + "\n";
        } else if (i >= expectedLines.size()) {
            result += number + " is unexpected: " + inColumns(layout, actualLines[i]) + "\n";
        } else if (expectedLines[i] != actualLines[i]) {
            result += number + " is:            " + inColumns(layout, actualLines[i]) + "\n" +
                      explainLine(layout, expectedLines[i], actualLines[i]);
        }
    }
    return result;
}

}  // namespace cases
