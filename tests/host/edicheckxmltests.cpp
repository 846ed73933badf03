// edicheck as a person runs it: XML documents.
#include <gmock/gmock.h>

#include <filesystem>

#include "toolrun.h"

namespace edicheck {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

const std::string kSchema =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n"
    "  <xs:element name='order'>\n"
    "    <xs:complexType><xs:sequence><xs:element name='number' type='xs:integer'/></xs:sequence></xs:complexType>\n"
    "  </xs:element>\n"
    "</xs:schema>\n";

// The number stands on line 2, behind two blanks.
std::string order(const std::string& number, const std::string& schema = "order.xsd") {
    return "<order xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:noNamespaceSchemaLocation='" + schema +
           "'>\n  " + number + "\n</order>\n";
}

class Xml : public ToolTest {
protected:
    Xml() { file("order.xsd", kSchema); }
};

TEST_F(Xml, findsNothingInACleanDocument) {
    const auto result = run({"xml", file("order.xml", order("<number>1</number>"))});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "\n1 file, 0 findings\n");
}

TEST_F(Xml, findsItsLibraryBesideItself) {
    EXPECT_EQ(runBare({"xml", file("order.xml", order("<number>1</number>"))}).exitCode, 0);
}

// "<number>one</number>" has 20 characters.
TEST_F(Xml, tellsAFindingOnALineOfItsOwn) {
    const auto result = run({"xml", file("order.xml", order("<number>one</number>"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith(path("order.xml") + ":2:23: error: "));
    EXPECT_THAT(result.out, MatchesRegex("[^\n]*'one'[^\n]*\n\n1 file, 1 finding\n"));
}

TEST_F(Xml, tellsEachLevel) {
    const auto fatal = run({"xml", file("fatal.xml", order("<number>1</numb>"))});
    EXPECT_EQ(fatal.exitCode, 1);
    EXPECT_THAT(fatal.out, StartsWith(path("fatal.xml") + ":2:"));
    EXPECT_THAT(fatal.out, HasSubstr(": fatal error: "));
    const auto warning = run({"xml", file("warning.xml", "<!DOCTYPE a [<!ELEMENT a (b?)>]>\n<a/>\n")});
    EXPECT_EQ(warning.exitCode, 1);
    EXPECT_THAT(warning.out, StartsWith(path("warning.xml") + ":1:"));
    EXPECT_THAT(warning.out, HasSubstr(": warning: "));
    EXPECT_THAT(warning.out, HasSubstr("\n1 file, 1 finding\n"));
}

TEST_F(Xml, tellsNoPlaceWhereThereIsNone) {
    const auto result = run({"xml", file("order.xml", order("<number>1</number>", "gone.xsd"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, StartsWith(path("order.xml") + ": warning: "));
    EXPECT_THAT(result.out, HasSubstr("gone.xsd"));
}

// The place is one in the schema: its second line, "  <xs:element name='order' type='nowhere'/>", has 43 characters.
TEST_F(Xml, tellsWhatIsWrongWithASchema) {
    file("wrong.xsd",
         "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n"
         "  <xs:element name='order' type='nowhere'/>\n"
         "</xs:schema>\n");
    const auto result = run({"xml", file("order.xml", order("<number>1</number>", "wrong.xsd"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, StartsWith(path("order.xml") + ":2:44: error: "));
    EXPECT_THAT(result.out, HasSubstr("nowhere"));
}

TEST_F(Xml, leavesOutErrorsWhereWellFormednessIsAskedFor) {
    const auto wrong = run({"xml", "--well-formed", file("wrong.xml", order("<number>one</number>"))});
    EXPECT_EQ(wrong.exitCode, 0);
    EXPECT_EQ(wrong.out, "\n1 file, 0 findings\n");
    EXPECT_EQ(run({"xml", "--well-formed", file("free.xml", "<a><b/></a>")}).exitCode, 0);
    const auto torn = run({"xml", "--well-formed", file("torn.xml", "<a>\n<b>\n</a>")});
    EXPECT_EQ(torn.exitCode, 1);
    EXPECT_THAT(torn.out, StartsWith(path("torn.xml") + ":3:3: fatal error: "));
}

TEST_F(Xml, looksForSchemasFromTheFolderOfEachDocument) {
    std::filesystem::create_directory(path("one"));
    std::filesystem::create_directory(path("two"));
    file("two/order.xsd",
         "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
         "<xs:element name='order'/></xs:schema>");
    const std::string one = file("one/order.xml", order("<number>one</number>", "../order.xsd"));
    const std::string two = file("two/order.xml", order("<number>two</number>"));
    const std::string own = file("order.xml", order("<number>own</number>"));
    const auto result = run({"xml", one, two, own});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, MatchesRegex("[^\n]*one/order.xml:2:23: error: [^\n]*'one'[^\n]*\n"
                                         "[^\n]*/order.xml:2:23: error: [^\n]*'own'[^\n]*\n"
                                         "\n3 files, 2 findings\n"));
}

// The folders change under its feet, and the names of the files still count from where it was started.
TEST_F(Xml, takesFilesByRelativeNames) {
    const std::filesystem::path before = std::filesystem::current_path();
    file("order.xml", order("<number>1</number>"));
    std::filesystem::create_directory(path("sub"));
    file("sub/order.xml", order("<number>2</number>", "../order.xsd"));
    std::filesystem::current_path(path(""));
    const auto result = run({"xml", "sub/order.xml", "order.xml", "sub/order.xml"});
    std::filesystem::current_path(before);
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    EXPECT_EQ(result.out, "\n3 files, 0 findings\n");
}

TEST_F(Xml, showsMessagesOnOneLine) {
    const auto result = run({"xml", file("order.xml", order("<number>1&#10;\x1B[31m2.$Error. </number>"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, Not(HasSubstr("\x1B")));
    const auto lines = run({"xml", file("order.xml", order("<number>1&#10;2.$Error. </number>"))});
    EXPECT_EQ(lines.exitCode, 1);
    EXPECT_THAT(lines.out, HasSubstr("\n1 file, 1 finding\n"));
}

TEST_F(Xml, takesDocumentsInOtherEncodings) {
    const std::string latin1 =
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!DOCTYPE a [<!ELEMENT a ANY>]><a>\xE4</a>";
    EXPECT_EQ(run({"xml", file("latin1.xml", latin1)}).exitCode, 0);
}

TEST_F(Xml, cannotCheckDocumentsInUtf16) {
    const std::string good = file("good.xml", order("<number>1</number>"));
    const auto result = run({"xml", file("utf16.xml", std::string("\xFF\xFE<\0\n\0a\0/\0>\0", 12)), good});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, StartsWith("edicheck: " + path("utf16.xml") + ": line 1 holds a NUL"));
    EXPECT_THAT(result.err, HasSubstr("UTF-16"));
    EXPECT_EQ(result.out, "\n2 files, 0 findings, 1 file not checked\n");
}

TEST_F(Xml, cannotCheckFilesThatAreEmptyOrMissing) {
    std::filesystem::create_directory(path("folder"));
    const auto result = run({"xml", path("absent"), path("folder"), file("empty", ""), path("no/such/folder")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr("edicheck: " + path("absent") + ": cannot be opened: "));
    EXPECT_THAT(result.err, HasSubstr("edicheck: " + path("folder") + ": is a directory"));
    EXPECT_THAT(result.err, HasSubstr("edicheck: " + path("empty") + ": is empty\n"));
    EXPECT_EQ(result.out, "\n4 files, 0 findings, 4 files not checked\n");
}

TEST_F(Xml, endsWithTheWorstOfItsFiles) {
    const std::string clean = file("clean.xml", order("<number>1</number>"));
    const std::string faulty = file("faulty.xml", order("<number>one</number>"));
    EXPECT_EQ(run({"xml", clean, faulty, clean}).exitCode, 1);
    EXPECT_EQ(run({"xml", faulty, path("absent"), clean}).exitCode, 2);
}

TEST_F(Xml, tellsWrongUsage) {
    const std::string clean = file("clean.xml", order("<number>1</number>"));
    const std::vector<std::vector<std::string>> wrong = {
        {"xml"}, {"xml", "--well-formed"}, {"xml", "--grammar", "g", clean}, {"xml", clean, "--unknown"}};
    for (const auto& arguments : wrong) {
        const auto result = runBare(arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(result.out, "") << testing::PrintToString(arguments);
        EXPECT_NE(result.err, "") << testing::PrintToString(arguments);
    }
    EXPECT_THAT(runBare({"xml", "--help"}).out, HasSubstr("works in that folder"));
}

TEST_F(Xml, needsALibraryThatHasTheExport) {
    const std::string clean = file("clean.xml", order("<number>1</number>"));
    const auto result = runBare({"xml", clean, "--library", FAKE_LIBRARY_NOTHING});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("ValidateXML"));
}

}  // namespace
}  // namespace edicheck
