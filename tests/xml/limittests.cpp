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

const std::string tooManyExpansions = "more than '10000' entity expansions";
const std::string tooMuchWork = "the document type asks for more work than its document may cause";

// The document is stopped, with one finding that says why.
void expectStopped(const std::string& document, const std::string& reason) {
    std::string text;
    EXPECT_LT(secondsOf([&] { text = validate(document); }), boundedSeconds);
    const auto findings = findingsOf(text);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_THAT(findings[0].message, HasSubstr(reason));
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
    expectStopped(billionLaughs() + "<a>&e9;</a>", tooManyExpansions);
    expectStopped(billionLaughs() + "<a b='&e9;'/>", tooManyExpansions);
}

// Expansions in the document type are not among those that the parser counts.
TEST(EntityBomb, in_a_default_value_is_stopped) {
    std::string type = billionLaughs();
    type.replace(type.rfind("]>"), 2, "<!ATTLIST a c CDATA '&e9;'>]>");
    expectStopped(type + "<a/>", tooMuchWork);
}

TEST(EntityBomb, of_parameter_entities_is_stopped) {
    std::string declarations = "<!ENTITY % e0 '<!-- -->'>";
    for (int i = 1; i < 10; ++i) {
        declarations +=
            "<!ENTITY % e" + std::to_string(i) + " '" + repeated("&#37;e" + std::to_string(i - 1) + ';', 10) + "'>";
    }
    expectStopped(entityType(declarations + "%e9;") + "<a/>", tooMuchWork);
}

TEST(EntityBomb, that_lies_idle_does_no_harm) {
    EXPECT_EQ(validate(billionLaughs() + "<a/>"), "");
}

// 100,000 references to a text of 100,000 characters: 10,000,000,000 characters.
TEST(EntityBomb, of_one_long_text_is_stopped) {
    const std::string type = entityType("<!ENTITY e '" + std::string(100'000, 'x') + "'>");
    const std::string references = repeated("&e;", 100'000);
    expectStopped(type + "<a>" + references + "</a>", tooManyExpansions);
    expectStopped(type + "<a b='" + references + "'/>", tooMuchWork);
}

TEST(EntityBomb, that_holds_itself_is_fatal) {
    const auto findings = findingsOf(validate(entityType("<!ENTITY x '&y;'><!ENTITY y '&x;'>") + "<a>&x;</a>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
}

TEST(Entities, may_be_expanded_ten_thousand_times) {
    const std::string type = entityType("<!ENTITY e 'x'>");
    const std::string half = repeated("&e;", 5'000);
    EXPECT_EQ(validate(type + "<a>" + half + half + "</a>"), "");
    expectStopped(type + "<a>" + half + half + "&e;</a>", tooManyExpansions);
    EXPECT_EQ(validate(type + "<a b='" + half + "'>" + half + "</a>"), "");
    expectStopped(type + "<a b='" + half + "'>" + half + "&e;</a>", tooManyExpansions);
}

TEST(Entities, that_the_parser_knows_by_itself_are_not_counted) {
    EXPECT_EQ(validate(entityType("") + "<a>" + repeated("&amp;&lt;&#65;", 5000) + "</a>"), "");
}

// Which of the two a stands for shows only behind as many elements as there are choices, so the parser's table would have
// a row for each of the 2^40 ways in which they may come.
TEST(ContentModel, that_is_not_deterministic_is_stopped) {
    const std::string type = "<!DOCTYPE a [<!ELEMENT a ((a|b)*,a" + repeated(",(a|b)", 40) + ")><!ELEMENT b EMPTY>]>";
    expectStopped(type + "<a><b/></a>", tooMuchWork);
}

// A list of `size` names has one operator fewer.
std::string contentModel(int size) {
    std::string names = "n0";
    for (int i = 1; i < size; ++i)
        names += "|n" + std::to_string(i);
    return "<!DOCTYPE a [<!ELEMENT a (" + names + ")>]>";
}

TEST(ContentModel, may_have_two_thousand_names) {
    const auto findings = findingsOf(validate(contentModel(2000) + "<a><n1999/></a>"));
    for (const Finding& finding : findings)  // that the names are not declared, and no more
        EXPECT_THAT(finding.message, testing::AnyOf(HasSubstr("never declared"), HasSubstr("no declaration found")));
    expectStopped(contentModel(2001) + "<a><n1999/></a>", tooMuchWork);
}

// The parser compares the names of a mixed model with each other before it tells of the declaration.
TEST(ContentModel, that_is_mixed_is_stopped_before_its_names_are_compared) {
    std::string names;
    for (int i = 0; i < 100'000; ++i)
        names += "|n" + std::to_string(i);
    expectStopped("<!DOCTYPE a [<!ELEMENT a (#PCDATA" + names + ")*>]><a/>", tooMuchWork);
}

TEST(Declarations, may_be_as_many_as_there_are) {
    std::string declarations;
    for (int i = 0; i < 20'000; ++i) {
        const std::string name = 'n' + std::to_string(i);
        declarations += "<!ELEMENT " + name + " EMPTY><!ATTLIST " + name + " x CDATA #IMPLIED y CDATA #IMPLIED>";
        declarations += "<!ENTITY " + name + " 'x'>";
    }
    EXPECT_EQ(validate("<!DOCTYPE n0 [" + declarations + "]><n0/>"), "");
}

std::string attributes(int size) {
    std::string attributes;
    for (int i = 0; i < size; ++i)
        attributes += " n" + std::to_string(i) + " CDATA ''";
    return "<!DOCTYPE a [<!ELEMENT a EMPTY><!ATTLIST a" + attributes + ">]><a/>";
}

TEST(Attributes, may_be_five_hundred_to_an_element) {
    EXPECT_EQ(validate(attributes(500)), "");
    expectStopped(attributes(501), tooMuchWork);
}

// The values v1000 to v4332, with a blank between two of them, are 3,333 * 6 - 1 characters; one more has six more.
TEST(Enumeration, may_have_twenty_thousand_characters) {
    std::string values = "v1000";
    for (int i = 1001; i <= 4332; ++i)
        values += "|v" + std::to_string(i);
    const auto document = [](const std::string& list) {
        return "<!DOCTYPE a [<!ELEMENT a EMPTY><!ATTLIST a b (" + list + ") #IMPLIED>]><a b='v4332'/>";
    };
    EXPECT_EQ(validate(document(values)), "");
    expectStopped(document(values + "|v4333"), tooMuchWork);
}

TEST(StoppedDocument, stops_no_other) {
    const Object object;
    const auto findings = findingsOf(object.validate(contentModel(2001) + "<a/>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].message, tooMuchWork);
    EXPECT_EQ(object.validate(entityType("") + "<a/>"), "");
}

TEST(Entities, are_counted_anew_in_each_call) {
    const Object object;
    const std::string document = entityType("<!ENTITY e 'x'>") + "<a>" + repeated("&e;", 9'000) + "</a>";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(object.validate(document), "");
}

}  // namespace
}  // namespace xmltests
