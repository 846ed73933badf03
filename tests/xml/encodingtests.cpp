// Documents in other encodings. The schema demands the one letter a with diaeresis, so a document conforms only if its
// bytes were read as what they are.
#include <gmock/gmock.h>

#include "xmlcalls.h"

namespace xmltests {
namespace {

using testing::HasSubstr;
using namespace std::string_literals;

const std::string utf8Letter = "\xC3\xA4";
const std::string latin1Letter = "\xE4";

// On one line behind the declaration.
std::string letter(const std::string& declaration, const std::string& bytes) {
    return declaration +
           "<letter xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:noNamespaceSchemaLocation='letter.xsd'>" +
           bytes + "</letter>";
}

std::string declared(const std::string& encoding) {
    return "<?xml version='1.0' encoding='" + encoding + "'?>\n";
}

class Encoding : public InSchemaFolder {};

TEST_F(Encoding, without_a_declaration_is_utf_8) {
    EXPECT_EQ(validate(letter("", utf8Letter)), "");
    EXPECT_EQ(validate(letter("<?xml version='1.0'?>", utf8Letter)), "");
}

TEST_F(Encoding, utf_8_may_begin_with_its_mark) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(validate(letter(mark, utf8Letter)), "");
    EXPECT_EQ(validate(letter(mark + declared("UTF-8"), utf8Letter)), "");
    EXPECT_EQ(placesOf(validate(mark)), (std::vector<std::string>{"Fatal Error 1:1"}));
}

TEST_F(Encoding, is_the_one_that_is_declared) {
    EXPECT_EQ(validate(letter(declared("ISO-8859-1"), latin1Letter)), "");
    EXPECT_EQ(validate(letter(declared("windows-1252"), latin1Letter)), "");
    EXPECT_EQ(validate(letter(declared("UTF-8"), utf8Letter)), "");
    EXPECT_EQ(validate(letter(declared("US-ASCII"), "&#xE4;")), "");
}

// Two characters of ISO-8859-1: neither the length nor the letter is right.
TEST_F(Encoding, of_another_declaration_makes_other_letters) {
    const auto findings = findingsOf(validate(letter(declared("ISO-8859-1"), utf8Letter)));
    ASSERT_GE(findings.size(), 1U);
    for (const Finding& finding : findings) {
        EXPECT_EQ(finding.level, "Error");
        EXPECT_EQ(finding.line, 2);
    }
}

TEST_F(Encoding, of_messages_is_utf_8_whatever_that_of_the_document_is) {
    const std::string latin1Element = '<' + latin1Letter + "/>";
    for (const std::string& document : {'<' + utf8Letter + "/>", declared("ISO-8859-1") + latin1Element}) {
        const auto findings = findingsOf(validate(document));
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_THAT(findings[0].message, HasSubstr('\'' + utf8Letter + '\''));
        EXPECT_EQ(findings[0].column, 5);
    }
}

TEST_F(Encoding, whose_bytes_are_wrong_is_fatal) {
    const auto findings = findingsOf(validate(letter(declared("UTF-8"), latin1Letter)));
    ASSERT_GE(findings.size(), 1U);
    EXPECT_EQ(findings.back().level, "Fatal Error");
}

TEST_F(Encoding, that_nobody_knows_is_fatal) {
    const auto findings = findingsOf(validate(letter(declared("KLINGON"), "x")));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_THAT(findings[0].message, HasSubstr("'KLINGON'"));
}

// A text that the library receives has bytes of their own for each character, so this declaration can't be true.
TEST_F(Encoding, utf_16_that_is_declared_and_not_there_is_a_warning) {
    const auto findings = findingsOf(validate(letter(declared("UTF-16"), utf8Letter)));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Warning");
    EXPECT_EQ(findings[0].line, 1);
    EXPECT_THAT(findings[0].message, HasSubstr("'UTF-16'"));
}

// The mark and "<", or "<" alone, are all that stands in front of the first NUL; with the other order of bytes, the mark
// alone, or nothing.
TEST_F(Encoding, utf_16_ends_at_its_first_nul) {
    for (const std::string& start :
         {"\xFF\xFE<\0a\0/\0>\0"s, "<\0a\0/\0>\0"s, "\xFE\xFF\0<\0a\0/\0>"s, "\0<\0a\0/\0>"s}) {
        const auto findings = findingsOf(validate(start));
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_EQ(findings[0].level, "Fatal Error");
        EXPECT_EQ(findings[0].line, 1);
    }
}

TEST_F(Encoding, ebcdic_without_a_declaration_is_fatal) {
    const auto findings = findingsOf(validate("\x4C\x6F\xA7\x94\x93\x40"));  // "<?xml "
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
}

TEST_F(Encoding, of_a_declaration_that_cannot_be_read_is_fatal) {
    for (const std::string& text :
         {"<?xml version='1.0' enc\xFF\xFF ?><a/>"s, "<?xml version='1.0'" + std::string(100000, ' ') + "?><a/>",
          "<?xml version='1.0' encoding='" + std::string(5000, 'E') + "'?><a/>", "\xFF\xFE"s, "\xFE\xFF"s}) {
        const auto findings = findingsOf(validate(text));
        ASSERT_EQ(findings.size(), 1U) << text.substr(0, 60);
        EXPECT_EQ(findings[0].level, "Fatal Error") << text.substr(0, 60);
    }
}

}  // namespace
}  // namespace xmltests
