// Cutting the library's reply to an XML document.
#include <gtest/gtest.h>

#include <ostream>

#include "failure.h"
#include "xmlreply.h"

namespace edicheck {

bool operator==(const XmlFinding& a, const XmlFinding& b) {
    return a.level == b.level && a.message == b.message && a.line == b.line && a.column == b.column;
}

void PrintTo(const XmlFinding& finding, std::ostream* out) {
    *out << finding.line << ':' << finding.column << ' ' << finding.level << " \"" << finding.message << '"';
}

namespace {

using namespace std::string_literals;
using Findings = std::vector<XmlFinding>;

TEST(XmlReply, ofNothingButNulsHasNoFindings) {
    EXPECT_EQ(cutXmlReply("\0\0"s), Findings());
    EXPECT_EQ(cutXmlReply(""), Findings());
}

TEST(XmlReply, isCutIntoItsFindings) {
    EXPECT_EQ(
        cutXmlReply("Warning. perhaps found on line 0, column 0.$Error. wrong found on line 12, column 345.$"
                    "Fatal Error. broken found on line 6, column 7.$\0\0"s),
        (Findings{
            {"warning", "perhaps", "0", "0"}, {"error", "wrong", "12", "345"}, {"fatal error", "broken", "6", "7"}}));
}

TEST(XmlReply, mayQuoteWhatFindingsAreMadeOf) {
    EXPECT_EQ(cutXmlReply("Error. value 'a.$ found on line 1, column 2' found on line 3, column 4.$"),
              (Findings{{"error", "value 'a.$ found on line 1, column 2'", "3", "4"}}));
    EXPECT_EQ(cutXmlReply("Error. value 'b found on line 1, column 2.$x' found on line 3, column 4.$"),
              (Findings{{"error", "value 'b found on line 1, column 2.$x'", "3", "4"}}));
    EXPECT_EQ(cutXmlReply("Error. value '.$Error. ' found on line 3, column 4.$"),
              (Findings{{"error", "value '.$Error. '", "3", "4"}}));
    EXPECT_EQ(cutXmlReply("Error. value '\n$' found on line 3, column 4.$"),
              (Findings{{"error", "value '\n$'", "3", "4"}}));
}

TEST(XmlReply, thatIsNotMadeOfFindingsIsAFailure) {
    for (const std::string reply :
         {"the parser's own exception", "Error. no place.$", "Error. no column found on line 1.$",
          "Error. no number found on line , column .$", "Notice. no level found on line 1, column 2.$",
          "Error. no end found on line 1, column 2", "Error. whole found on line 1, column 2.$and more", ", column 2.$",
          "Error. , column 2.$", ".$"}) {
        EXPECT_THROW(cutXmlReply(reply), Failure) << reply;
    }
}

}  // namespace
}  // namespace edicheck
