// Calls of ValidateXML, and its reply taken apart.
#include "xmlcalls.h"

#include <ostream>
#include <string_view>

namespace xmltests {

using cases::Answer;

namespace {

constexpr std::string_view kEnd = ".$";
constexpr std::string_view kBeforeLine = " found on line ";
constexpr std::string_view kBeforeColumn = ", column ";
constexpr std::string_view kBehindLevel = ". ";

bool isNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

// Takes a finding apart that stands without its end.
Finding findingOf(const std::string& text) {
    const Finding none{"no finding", text};
    const std::size_t levelEnd = text.find(kBehindLevel);
    const std::size_t line = text.rfind(kBeforeLine);
    const std::size_t column = text.rfind(kBeforeColumn);
    if (levelEnd == text.npos || line == text.npos || column == text.npos || line < levelEnd || column < line)
        return none;
    const std::size_t messageBegin = levelEnd + kBehindLevel.size();
    const std::size_t lineBegin = line + kBeforeLine.size();
    const std::string lineText = text.substr(lineBegin, column - lineBegin);
    const std::string columnText = text.substr(column + kBeforeColumn.size());
    if (line < messageBegin || !isNumber(lineText) || !isNumber(columnText)) return none;
    const std::string level = text.substr(0, levelEnd);
    if (level != "Fatal Error" && level != "Error" && level != "Warning") return none;
    return {level, text.substr(messageBegin, line - messageBegin), std::stol(lineText), std::stol(columnText)};
}

}  // namespace

const cases::SymbolLookup& library() {
    static const cases::SymbolLookup symbols = cases::openLibrary();
    return symbols;
}

const cases::Host& host() {
    static const cases::Host theHost(library());
    return theHost;
}

Object::Object(const std::string& grammar) {
    const Answer creation = host().call("CreateStruct", grammar);
    EXPECT_EQ(creation.returnCode, 0);
    EXPECT_EQ(creation.output, Answer::Output::reply);
    handle_ = creation.reply;
}

Object::~Object() {
    EXPECT_EQ(call("DestroyStruct").returnCode, 0);
}

Answer Object::call(const std::string& exportName, const std::string& input) const {
    return host().call(exportName, handle_ + input);
}

std::string Object::validate(const std::string& document, const std::string& option) const {
    const Answer answer = call("ValidateXML", option + document);
    EXPECT_EQ(answer.breach, "");
    EXPECT_EQ(answer.returnCode, 0);
    EXPECT_EQ(answer.output, Answer::Output::reply);
    EXPECT_GE(answer.reply.size(), 2U);
    const std::string text = answer.reply.c_str();
    EXPECT_EQ(answer.reply.size(), text.size() + 2) << "the text is not followed by two bytes";
    EXPECT_EQ(answer.reply.back(), '\0');
    return text;
}

std::string validate(const std::string& document, const std::string& option) {
    return Object().validate(document, option);
}

void PrintTo(const Finding& finding, std::ostream* out) {
    *out << placeOf(finding) << ' ' << finding.message;
}

std::vector<Finding> findingsOf(const std::string& text) {
    std::vector<Finding> findings;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = text.find(kEnd, begin);
        if (end == text.npos) {
            findings.push_back({"no finding", text.substr(begin)});
            break;
        }
        findings.push_back(findingOf(text.substr(begin, end - begin)));
        begin = end + kEnd.size();
    }
    return findings;
}

std::string placeOf(const Finding& finding) {
    return finding.level + ' ' + std::to_string(finding.line) + ':' + std::to_string(finding.column);
}

std::vector<std::string> placesOf(const std::string& text) {
    std::vector<std::string> places;
    for (const Finding& finding : findingsOf(text))
        places.push_back(placeOf(finding));
    return places;
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

std::filesystem::path schemaFolder() {
    return SCHEMA_FOLDER;
}

std::string order(const std::string& location, const std::string& content) {
    return "<order xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:noNamespaceSchemaLocation=\"" +
           location + "\">\n" + content + "\n</order>\n";
}

const std::string goodContent = "<number>17</number>\n<line quantity=\"2\">Bolt</line>";

}  // namespace xmltests
