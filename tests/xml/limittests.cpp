// Documents that are large, deep, or made to do harm.
#include <gmock/gmock.h>

#include <ctime>

#include "xmlcalls.h"

namespace xmltests {
namespace {

using testing::HasSubstr;

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t large = 5'000'000;  // everything is several times slower and larger there
#else
constexpr std::size_t large = 50'000'000;
#endif

// What the process spent, which other processes have no part in.
double secondsOf(const std::function<void()>& act) {
    const std::clock_t begin = std::clock();
    act();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

const std::string lineType = "<!DOCTYPE lines [<!ELEMENT lines (line*)><!ELEMENT line (#PCDATA)>]>\n";

// An element takes 60 bytes, its line break included.
const std::string element = "<line>Forty-six characters of text that mean nothing</line>\n";

std::string lines(std::size_t size) {
    return "<lines>\n" + repeated(element, size / element.size()) + "</lines>\n";
}

TEST(LargeDocument, that_is_clean_is_read_to_its_end) {
    ASSERT_EQ(element.size(), 60U);
    const Object object;
    EXPECT_EQ(object.validate(lineType + lines(large)), "");
    const auto findings = findingsOf(object.validate(lineType + lines(large) + "<more/>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_EQ(findings[0].line, static_cast<long>(large / element.size() + 4));
}

TEST(LargeDocument, has_a_finding_for_each_of_its_elements) {
    const std::string text = validate(lines(large));
    const auto findings = findingsOf(text);
    ASSERT_EQ(findings.size(), large / element.size() + 1);
    for (std::size_t i = 1; i < findings.size(); ++i)
        ASSERT_EQ(placeOf(findings[i]), "Error " + std::to_string(i + 1) + ":7");
}

TEST(LargeDocument, takes_time_in_proportion_to_its_findings) {
    const Object object;
    object.validate("<a/>");
    const double part = secondsOf([&] { object.validate(lines(large / 5)); });
    const double whole = secondsOf([&] { object.validate(lines(large)); });
    EXPECT_LT(whole, 5 * 2.5 * part + 0.5) << part << " s for a fifth of it, " << whole << " s for all";
}

TEST(LargeDocument, may_be_one_text_one_attribute_or_one_comment) {
    const std::string type = "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA #IMPLIED>]>";
    const std::string text(large / 5, 'x');
    EXPECT_EQ(validate(type + "<a>" + text + "</a>"), "");
    EXPECT_EQ(validate(type + "<a b='" + text + "'/>"), "");
    EXPECT_EQ(validate(type + "<a><!--" + text + "--></a>"), "");
    EXPECT_EQ(validate(type + "<a><![CDATA[" + text + "]]></a>"), "");
}

TEST(DeepDocument, of_ten_thousand_elements_is_read_to_its_end) {
    constexpr std::size_t depth = 10'000;
    const std::string type = "<!DOCTYPE a [<!ELEMENT a (a?)>]>";
    EXPECT_EQ(validate(type + repeated("<a>", depth) + repeated("</a>", depth)), "");
    const auto findings = findingsOf(validate(type + repeated("<a>", depth)));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
}

TEST(DeepDocument, has_a_finding_for_each_of_its_elements) {
    constexpr std::size_t depth = 10'000;
    const auto findings = findingsOf(validate(repeated("<a>", depth) + repeated("</a>", depth)));
    ASSERT_EQ(findings.size(), depth);
    EXPECT_EQ(placeOf(findings.back()), "Error 1:30001");
}

constexpr double boundedSeconds = 20;

// The document is stopped at the limit of 1,000 expansions, which the message names.
void expectStopped(const std::string& document) {
    std::string text;
    EXPECT_LT(secondsOf([&] { text = validate(document); }), boundedSeconds);
    const auto findings = findingsOf(text);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_THAT(findings[0].message, HasSubstr("1000"));
    EXPECT_THAT(findings[0].message, HasSubstr("expansion"));
}

std::string entityType(const std::string& declarations) {
    return "<!DOCTYPE a [<!ELEMENT a (#PCDATA)><!ATTLIST a b CDATA #IMPLIED>" + declarations + "]>";
}

// Ten entities, of which each stands for ten of the one before: 3,000,000,000 characters.
std::string billionLaughs() {
    std::string declarations = "<!ENTITY e0 'lol'>";
    for (int i = 1; i < 10; ++i) {
        declarations +=
            "<!ENTITY e" + std::to_string(i) + " '" + repeated("&e" + std::to_string(i - 1) + ';', 10) + "'>";
    }
    return entityType(declarations);
}

TEST(EntityBomb, of_a_billion_laughs_is_stopped) {
    expectStopped(billionLaughs() + "<a>&e9;</a>");
    expectStopped(billionLaughs() + "<a b='&e9;'/>");
}

TEST(EntityBomb, that_lies_idle_does_no_harm) {
    EXPECT_EQ(validate(billionLaughs() + "<a/>"), "");
}

// 100,000 references to a text of 100,000 characters: 10,000,000,000 characters.
TEST(EntityBomb, of_one_long_text_is_stopped) {
    const std::string type = entityType("<!ENTITY e '" + std::string(100'000, 'x') + "'>");
    const std::string references = repeated("&e;", 100'000);
    expectStopped(type + "<a>" + references + "</a>");
    expectStopped(type + "<a b='" + references + "'/>");
}

TEST(EntityBomb, that_holds_itself_is_fatal) {
    const auto findings = findingsOf(validate(entityType("<!ENTITY x '&y;'><!ENTITY y '&x;'>") + "<a>&x;</a>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
}

TEST(Entities, may_be_expanded_a_thousand_times) {
    const std::string type = entityType("<!ENTITY e 'x'>");
    EXPECT_EQ(validate(type + "<a>" + repeated("&e;", 1000) + "</a>"), "");
    expectStopped(type + "<a>" + repeated("&e;", 1001) + "</a>");
    EXPECT_EQ(validate(type + "<a b='" + repeated("&e;", 500) + "'>" + repeated("&e;", 500) + "</a>"), "");
    expectStopped(type + "<a b='" + repeated("&e;", 500) + "'>" + repeated("&e;", 501) + "</a>");
}

TEST(Entities, that_the_parser_knows_by_itself_are_not_counted) {
    EXPECT_EQ(validate(entityType("") + "<a>" + repeated("&amp;&lt;&#65;", 5000) + "</a>"), "");
}

TEST(Entities, are_counted_anew_in_each_call) {
    const Object object;
    const std::string document = entityType("<!ENTITY e 'x'>") + "<a>" + repeated("&e;", 900) + "</a>";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(object.validate(document), "");
}

}  // namespace
}  // namespace xmltests
