#include "casefile.h"

#include <cctype>
#include <fstream>
#include <iterator>
#include <sstream>

namespace cases {
namespace {

bool isComment(const std::string& text) {
    return !text.empty() && text[0] == '#';
}
bool isHeading(const std::string& text) {
    return !text.empty() && text[0] == '[';
}

/* "[name]" or "[name] text", where the text is the first line of the section. */
Section parseHeading(const Line& line) {
    const size_t close = line.text.find(']');
    if (close == std::string::npos) {
        throw CaseError(line.number, "a heading needs its ']'; a text that begins with '[' is written \\[");
    }
    Section section{line.text.substr(1, close - 1), line.number, {}};
    const std::string rest = line.text.substr(close + 1);
    if (rest.empty()) return section;
    if (rest[0] != ' ' || rest.size() == 1) {
        throw CaseError(line.number, "one blank and the text, or nothing at all, stands behind a heading's ']'");
    }
    section.lines.push_back({line.number, rest.substr(1)});
    return section;
}

/* Blank lines at the end of a section set it apart from the next and are not part of it. */
void dropBlankLinesAtEnd(Section& section) {
    while (!section.lines.empty() && section.lines.back().text.empty())
        section.lines.pop_back();
}

char unescapeHex(const Line& line, size_t at) {
    if (at + 1 >= line.text.size() || !std::isxdigit(static_cast<unsigned char>(line.text[at])) ||
        !std::isxdigit(static_cast<unsigned char>(line.text[at + 1]))) {
        throw CaseError(line.number, "\\x needs two hexadecimal digits");
    }
    return static_cast<char>(std::stoi(line.text.substr(at, 2), nullptr, 16));
}

}  // namespace

CaseFile parseCase(const std::string& path, const std::string& text) {
    CaseFile caseFile{path, {}};
    std::istringstream stream(text);
    Line line{0, ""};
    while (std::getline(stream, line.text)) {
        ++line.number;
        if (line.number == 1 && !isComment(line.text)) {
            throw CaseError(1, "a case begins with a comment that says what it shows");
        }
        if (isComment(line.text)) continue;
        if (isHeading(line.text)) {
            caseFile.sections.push_back(parseHeading(line));
        } else if (!caseFile.sections.empty()) {
            caseFile.sections.back().lines.push_back(line);
        } else if (!line.text.empty()) {
            throw CaseError(line.number, "a text in front of the first heading");
        }
    }
    if (caseFile.sections.empty()) throw CaseError(0, "the case has no section");
    for (Section& section : caseFile.sections)
        dropBlankLinesAtEnd(section);
    return caseFile;
}

CaseFile readCase(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw CaseError(0, "the file can't be read");
    return parseCase(path, std::string(std::istreambuf_iterator<char>(file), {}));
}

std::string unescape(const Line& line) {
    std::string result;
    for (size_t i = 0; i < line.text.size(); ++i) {
        if (line.text[i] != '\\') {
            result += line.text[i];
            continue;
        }
        const char kind = ++i < line.text.size() ? line.text[i] : '\0';
        switch (kind) {
            case 'n':
                result += '\n';
                break;
            case 'r':
                result += '\r';
                break;
            case 't':
                result += '\t';
                break;
            case '0':
                result += '\0';
                break;
            case '\\':
            case '#':
            case '[':
                result += kind;
                break;
            case 'x':
                result += unescapeHex(line, i + 1);
                i += 2;
                break;
            default:
                throw CaseError(line.number, "an unknown escape: the backslash itself is written \\\\");
        }
    }
    return result;
}

std::string escape(const std::string& text) {
    static const char* const digits = "0123456789abcdef";
    std::string result;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\\') {
            result += "\\\\";
        } else if (character == '\n') {
            result += "\\n";
        } else if (character == '\r') {
            result += "\\r";
        } else if (character == '\t') {
            result += "\\t";
        } else if (byte < 0x20 || byte > 0x7e) {
            result += std::string("\\x") + digits[byte >> 4] + digits[byte & 15];
        } else {
            result += character;
        }
    }
    return result;
}

std::string trim(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace cases
