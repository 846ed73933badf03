// Documents and the schemas that they name. Lines and columns are counted by hand: a finding stands behind the last
// character that the parser had read, which is the '>' of a start tag for what is wrong with an element or its attributes,
// and that of the end tag for what is wrong with its content.
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <set>

#include "xmlcalls.h"

namespace xmltests {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;

class Schema : public InSchemaFolder {};
class Namespaces : public InSchemaFolder {};
class Level : public InSchemaFolder {};
class DocumentType : public InSchemaFolder {};

std::string parts(const std::string& location, const std::string& content) {
    return "<parts xmlns=\"urn:example:parts\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
           "       xsi:schemaLocation=\"urn:example:parts " +
           location + "\">\n" + content + "\n</parts>";
}

TEST_F(Schema, beside_the_document_is_found_from_the_current_folder) {
    EXPECT_EQ(validate(order("order.xsd", goodContent)), "");
}

TEST_F(Schema, in_another_folder_is_found_by_a_relative_path) {
    EXPECT_EQ(validate(order("../schemas/order.xsd", goodContent)), "");
    std::filesystem::current_path("..");
    EXPECT_EQ(validate(order("schemas/order.xsd", goodContent)), "");
}

TEST_F(Schema, is_found_by_an_absolute_path_from_anywhere) {
    std::filesystem::current_path("/");
    const std::string path = (schemaFolder() / "order.xsd").string();
    EXPECT_EQ(validate(order(path, goodContent)), "");
    EXPECT_EQ(validate(order("file://" + path, goodContent)), "");
    EXPECT_EQ(validate(parts((schemaFolder() / "parts.xsd").string(), "<part>A123</part>")), "");
}

TEST_F(Schema, that_is_not_there_is_a_warning_and_leaves_the_document_without_declarations) {
    const auto findings = findingsOf(validate(order("gone.xsd", goodContent)));
    ASSERT_GE(findings.size(), 2U);
    EXPECT_EQ(placeOf(findings[0]), "Warning 0:0");
    EXPECT_THAT(findings[0].message, HasSubstr("gone.xsd"));
    EXPECT_EQ(findings[1].level, "Error");
    EXPECT_THAT(findings[1].message, HasSubstr("'order'"));
    EXPECT_EQ(findings[1].line, 1);
}

TEST_F(Schema, that_is_not_named_leaves_every_element_undeclared) {
    const auto findings = findingsOf(validate("<a>\n <b/>\n</a>"));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(placeOf(findings[0]), "Error 1:4");
    EXPECT_THAT(findings[0].message, HasSubstr("'a'"));
    EXPECT_EQ(placeOf(findings[1]), "Error 2:6");
    EXPECT_THAT(findings[1].message, HasSubstr("'b'"));
}

// The place is one in the schema: its third line ends with "/>" in the columns 42 and 43.
TEST_F(Schema, that_names_an_unknown_type_is_an_error_in_the_schema) {
    const auto findings = findingsOf(validate(order("unknown-type.xsd", goodContent)));
    ASSERT_GE(findings.size(), 1U);
    EXPECT_EQ(placeOf(findings[0]), "Error 3:44");
    EXPECT_THAT(findings[0].message, HasSubstr("nowhere"));
}

// Schemas are checked in full: a document that conforms is told of one that is ambiguous.
TEST_F(Schema, that_is_ambiguous_is_an_error) {
    const auto findings = findingsOf(validate(order("ambiguous.xsd", "<number>17</number>")));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Error");
    EXPECT_THAT(findings[0].message, HasSubstr("number"));
    EXPECT_THAT(findings[0].message, HasSubstr("nique"));
}

// "</xs:schema>" stands on the fourth line where "</xs:element>" was due, and the parser stops behind "</".
TEST_F(Schema, that_is_not_well_formed_is_fatal) {
    const auto findings = findingsOf(validate(order("unclosed.xsd", goodContent)));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(placeOf(findings[0]), "Fatal Error 4:3");
    EXPECT_THAT(findings[0].message, HasSubstr("xs:element"));
    EXPECT_EQ(findings[1].level, "Fatal Error");
    EXPECT_THAT(findings[1].message, HasSubstr("schema"));
    EXPECT_EQ(findings[1].line, 1);
}

TEST_F(Schema, that_is_a_folder_is_fatal) {
    const auto findings = findingsOf(validate(order("parts", goodContent)));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_EQ(findings[1].level, "Fatal Error");
    EXPECT_EQ(findings[1].line, 1);
}

// A port that was free a moment ago: nobody listens there.
std::string urlOfNobody() {
    const int socketNumber = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(socketNumber, generic, length), 0);
    EXPECT_EQ(getsockname(socketNumber, generic, &length), 0);
    close(socketNumber);
    return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/order.xsd";
}

TEST_F(Schema, that_cannot_be_fetched_is_fatal_and_holds_nobody_up) {
    const auto begin = std::chrono::steady_clock::now();
    const auto findings = findingsOf(validate(order(urlOfNobody(), goodContent)));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(placeOf(findings[0]), "Fatal Error 0:0");
    EXPECT_EQ(findings[1].level, "Fatal Error");
    EXPECT_EQ(findings[1].line, 1);
}

TEST_F(Schema, of_an_address_that_is_not_latin_1_is_fatal) {
    const auto findings = findingsOf(validate(order("http://\xD2\x86.invalid/order.xsd", goodContent)));
    ASSERT_GE(findings.size(), 2U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_THAT(findings[0].message, HasSubstr("0x486"));
    EXPECT_EQ(findings[1].level, "Fatal Error");
}

TEST_F(Schema, is_read_anew_by_each_call) {
    const Object object;
    const auto folder = std::filesystem::temp_directory_path() / ("ediexit-xml-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const std::string document = order((folder / "order.xsd").string(), goodContent);
    EXPECT_NE(object.validate(document), "");
    std::filesystem::copy_file("order.xsd", folder / "order.xsd");
    EXPECT_EQ(object.validate(document), "");
    std::filesystem::remove_all(folder);
    EXPECT_NE(object.validate(document), "");
}

// "<number>0</number>" has 18 characters, "<line>" has 6, "<extra/>" has 8, and "</order>" has 8.
TEST_F(Level, error_is_what_contradicts_the_schema) {
    const auto findings = findingsOf(validate(order("order.xsd", "<number>0</number>\n<line>Bolt</line>\n<extra/>")));
    ASSERT_EQ(findings.size(), 4U);
    EXPECT_EQ(placeOf(findings[0]), "Error 2:19");
    EXPECT_THAT(findings[0].message, HasSubstr("'0'"));
    EXPECT_EQ(placeOf(findings[1]), "Error 3:7");
    EXPECT_THAT(findings[1].message, HasSubstr("'quantity'"));
    EXPECT_EQ(placeOf(findings[2]), "Error 4:9");
    EXPECT_THAT(findings[2].message, HasSubstr("'extra'"));
    EXPECT_EQ(placeOf(findings[3]), "Error 5:9");
    EXPECT_THAT(findings[3].message, HasSubstr("'extra'"));
}

// The parser stops where the name differs, behind "<line quantity="2">Bolt</", which has 25 characters.
TEST_F(Level, fatal_error_is_what_is_not_well_formed_and_ends_the_parse) {
    const auto findings =
        findingsOf(validate(order("order.xsd", "<number>0</number>\n<line quantity=\"2\">Bolt</lin>")));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(placeOf(findings[0]), "Error 2:19");
    EXPECT_EQ(placeOf(findings[1]), "Fatal Error 3:26");
    EXPECT_THAT(findings[1].message, HasSubstr("'line'"));
}

// The content model names an element that is declared nowhere.
TEST_F(Level, warning_is_what_may_still_be_right) {
    const auto findings = findingsOf(validate("<!DOCTYPE a [<!ELEMENT a (b?)>]><a/>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Warning");
    EXPECT_THAT(findings[0].message, HasSubstr("'b'"));
    EXPECT_EQ(findings[0].line, 1);
}

TEST_F(Level, error_alone_is_left_out_by_the_number_101) {
    const std::string allLevels = order("gone.xsd", "<number>0</number>\n<line>");
    const auto levels = [&](const std::string& option) {
        std::set<std::string> found;
        for (const Finding& finding : findingsOf(validate(allLevels, option)))
            found.insert(finding.level);
        return found;
    };
    EXPECT_THAT(levels("000"), UnorderedElementsAre("Warning", "Error", "Fatal Error"));
    EXPECT_THAT(levels("101"), UnorderedElementsAre("Warning", "Fatal Error"));
}

TEST_F(Level, error_alone_gives_an_empty_text_under_the_number_101) {
    EXPECT_EQ(validate(order("order.xsd", "<number>0</number>"), "101"), "");
}

TEST_F(Namespaces, are_those_of_the_schema) {
    EXPECT_EQ(validate(parts("parts.xsd", "<part>A123</part><part>B456</part>")), "");
    EXPECT_EQ(validate("<p:parts xmlns:p='urn:example:parts' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                       "xsi:schemaLocation='urn:example:parts parts.xsd'><p:part>A123</p:part></p:parts>"),
              "");
}

// The type comes from an included file: relative to the schema, not to the current folder.
TEST_F(Namespaces, reach_what_the_schema_includes) {
    const auto findings = findingsOf(validate(parts("parts.xsd", "<part>A123</part>\n<part>a123</part>")));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(placeOf(findings[0]), "Error 4:18");
    EXPECT_THAT(findings[0].message, HasSubstr("'a123'"));
}

TEST_F(Namespaces, tell_elements_apart) {
    const auto findings = findingsOf(validate(parts("parts.xsd", "<part xmlns=\"\">A123</part>")));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(placeOf(findings[0]), "Error 3:16");
    EXPECT_THAT(findings[0].message, HasSubstr("'part'"));
}

// "<p:a/>" has 6 characters.
TEST_F(Namespaces, have_a_prefix_that_is_declared) {
    const auto findings = findingsOf(validate("<p:a/>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(placeOf(findings[0]), "Fatal Error 1:7");
    EXPECT_THAT(findings[0].message, HasSubstr("'p'"));
}

TEST_F(Namespaces, are_named_in_pairs_with_their_places) {
    const auto findings =
        findingsOf(validate("<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                            "xsi:schemaLocation='urn:example:parts'/>"));
    ASSERT_GE(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_EQ(findings[0].line, 1);
    EXPECT_THAT(findings[0].message, HasSubstr("schemaLocation"));
}

TEST_F(DocumentType, is_read_from_the_file_that_it_names) {
    EXPECT_EQ(validate("<!DOCTYPE order SYSTEM 'order.dtd'>\n<order><line quantity='1'>Bolt</line></order>"), "");
    const auto findings = findingsOf(validate("<!DOCTYPE order SYSTEM 'order.dtd'>\n<order><line>Bolt</line></order>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(placeOf(findings[0]), "Error 2:14");
    EXPECT_THAT(findings[0].message, HasSubstr("'quantity'"));
}

TEST_F(DocumentType, that_is_not_there_is_fatal) {
    const auto findings = findingsOf(validate("<!DOCTYPE order SYSTEM 'gone.dtd'>\n<order/>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_THAT(findings[0].message, HasSubstr("gone.dtd"));
}

TEST_F(DocumentType, may_take_an_entity_from_a_file) {
    EXPECT_EQ(validate("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e SYSTEM 'entity.txt'>]><a>&e;</a>"), "");
    const auto findings =
        findingsOf(validate("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e SYSTEM 'gone.txt'>]><a>&e;</a>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_THAT(findings[0].message, HasSubstr("gone.txt"));
}

// What a host must know that takes documents from strangers: where the schema demands a number, the message shows what was
// there, and that is the text of the file.
TEST_F(DocumentType, can_bring_the_text_of_a_file_into_a_message) {
    const auto findings =
        findingsOf(validate("<!DOCTYPE order [<!ENTITY e SYSTEM 'entity.txt'>]>\n" +
                            order("order.xsd", "<number>&e;</number>\n<line quantity=\"2\">Bolt</line>")));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Error");
    EXPECT_THAT(findings[0].message, HasSubstr("A text that a document takes in."));
}

// The parser's own switch, which a host can set before it loads the library.
TEST_F(DocumentType, is_refused_where_the_environment_says_so) {
    const std::string document = "<!DOCTYPE a [<!ELEMENT a EMPTY>]>\n<a/>";
    setenv("XERCES_DISABLE_DTD", "1", 1);
    const auto findings = findingsOf(validate(document));
    const std::string withSchema = validate(order("order.xsd", goodContent));
    unsetenv("XERCES_DISABLE_DTD");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].level, "Fatal Error");
    EXPECT_EQ(findings[0].line, 1);
    EXPECT_EQ(withSchema, "");
    EXPECT_EQ(validate(document), "");
}

}  // namespace
}  // namespace xmltests
