/*
 * Reads a case file into its sections. README.md tells the format; what a section means is the runner's business.
 */
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace cases {

struct Line {
    int number;  // 1-based, in the file
    std::string text;
};

struct Section {
    std::string name;
    int line;  // of its heading
    std::vector<Line> lines;
};

struct CaseFile {
    std::string path;
    std::vector<Section> sections;
};

/* A fault of the case file itself, at one of its lines. */
class CaseError : public std::runtime_error {
public:
    CaseError(int atLine, const std::string& text) : std::runtime_error(text), line(atLine) {}
    const int line;
};

/* Both throw CaseError; line 0 means the file as a whole. */
CaseFile parseCase(const std::string& path, const std::string& text);
CaseFile readCase(const std::string& path);

/* A line's text with its escapes replaced. */
std::string unescape(const Line& line);

/* A text as a case file would write it: control characters, bytes that are no ASCII and the backslash become escapes.
 */
std::string escape(const std::string& text);

/* The text without the blanks at both its ends. */
std::string trim(const std::string& text);

}  // namespace cases
