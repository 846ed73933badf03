// The reader of interchange files.
#include "interchange.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace edicheck {
namespace {

const std::string kIsa =
    "ISA*00*          *00*          *ZZ*SENDER         *ZZ*RECEIVER       *200101*1200*^*00501*000000001*0*T*:~";

std::vector<std::string> textsOf(const Transaction& transaction) {
    std::vector<std::string> texts;
    for (const Segment& segment : transaction.segments)
        texts.emplace_back(segment.text);
    return texts;
}

std::vector<std::size_t> linesOf(const Transaction& transaction) {
    std::vector<std::size_t> lines;
    for (const Segment& segment : transaction.segments)
        lines.push_back(segment.line);
    return lines;
}

using Texts = std::vector<std::string>;
using Lines = std::vector<std::size_t>;

TEST(X12Reader, takesTheDelimitersFromTheIsa) {
    ASSERT_EQ(kIsa.size(), 106u);
    const std::string text = kIsa + "GS*PO*A*B~ST*850*0001~BEG*00*SA~SE*3*0001~GE*1*1~IEA*1*000000001~";
    const auto file = readInterchanges(text);
    EXPECT_FALSE(file.error);
    EXPECT_TRUE(file.notes.empty());
    ASSERT_EQ(file.transactions.size(), 1u);
    const Transaction& transaction = file.transactions[0];
    EXPECT_EQ(transaction.type, "850");
    EXPECT_EQ(transaction.control, "0001");
    EXPECT_EQ(transaction.delimiters.element, '*');
    EXPECT_EQ(transaction.delimiters.component, ':');
    EXPECT_EQ(transaction.delimiters.terminator, '~');
    EXPECT_FALSE(transaction.delimiters.release);
    EXPECT_EQ(textsOf(transaction), (Texts{"ST*850*0001", "BEG*00*SA", "SE*3*0001"}));
}

TEST(X12Reader, takesAQuestionMarkAsData) {
    const std::string text = kIsa + "ST*850*1~MSG*WHY?~SE*3*1~IEA*1*1~";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*850*1", "MSG*WHY?", "SE*3*1"}));
}

TEST(X12Reader, findsTheDelimitersOfAnIsaWhoseFieldsAreNotFilledUp) {
    const auto file =
        readInterchanges("ISA*00* *00* *01*A*01*B*070101*1200*U*00200*1*1*P*@!\nST*850*1!\nSE*2*1!\nIEA*1*1!");
    EXPECT_FALSE(file.error);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(file.transactions[0].delimiters.component, '@');
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*850*1", "SE*2*1"}));
}

TEST(X12Reader, passesOverLineBreaksBehindTerminators) {
    const std::string text = kIsa + "\r\nGS*PO~\r\nST*850*1~\r\nBEG*00~SE*3*1~\r\n\r\nIEA*1*1~\r\n";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*850*1", "BEG*00", "SE*3*1"}));
    EXPECT_EQ(linesOf(file.transactions[0]), (Lines{3, 4, 4}));
    EXPECT_TRUE(file.notes.empty());
}

TEST(X12Reader, takesALineBreakAsTerminator) {
    for (const std::string lineBreak : {"\n", "\r\n", "\r"}) {
        const std::string text = kIsa.substr(0, 105) + lineBreak + "ST*856*8" + lineBreak + "HL*1**S" + lineBreak +
                                 lineBreak + "SE*3*8" + lineBreak + "IEA*1*1";
        const auto file = readInterchanges(text);
        ASSERT_EQ(file.transactions.size(), 1u);
        EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*856*8", "HL*1**S", "SE*3*8"}));
        EXPECT_TRUE(file.notes.empty());
    }
}

TEST(X12Reader, readsGroupsAndInterchangesOneAfterTheOther) {
    std::string second = kIsa;
    second[3] = '|';
    for (char& character : second) {
        if (character == '*') character = '|';
    }
    second.back() = '\'';
    const std::string text = kIsa +
                             "GS*PO~ST*850*1~SE*2*1~ST*850*2~SE*2*2~GE*2*1~GS*IN~ST*810*3~SE*2*3~GE*1*2~IEA*2*1~\n" +
                             second + "GS|FA'ST|997|4'SE|2|4'GE|1|1'IEA|1|1'";
    const auto file = readInterchanges(text);
    EXPECT_FALSE(file.error);
    EXPECT_TRUE(file.notes.empty());
    ASSERT_EQ(file.transactions.size(), 4u);
    EXPECT_EQ(file.transactions[1].control, "2");
    EXPECT_EQ(file.transactions[2].type, "810");
    EXPECT_EQ(file.transactions[3].type, "997");
    EXPECT_EQ(file.transactions[3].delimiters.terminator, '\'');
    EXPECT_EQ(linesOf(file.transactions[3]), (Lines{2, 2}));
}

TEST(X12Reader, endsATransactionWithoutTrailerWhereTheNextThingBegins) {
    const std::string text = kIsa + "ST*850*1~BEG*00~ST*850*2~BEG*01~GE*1*1~IEA*1*1~";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.transactions.size(), 2u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*850*1", "BEG*00"}));
    EXPECT_EQ(textsOf(file.transactions[1]), (Texts{"ST*850*2", "BEG*01"}));
    ASSERT_EQ(file.notes.size(), 2u);
    EXPECT_NE(file.notes[0].text.find("850 1 has no SE segment"), std::string::npos);
    EXPECT_NE(file.notes[1].text.find("850 2 has no SE segment"), std::string::npos);
}

TEST(X12Reader, keepsALastSegmentWithoutTerminator) {
    const std::string text = kIsa + "ST*850*1~BEG*0";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*850*1", "BEG*0"}));
    ASSERT_EQ(file.notes.size(), 2u);
    EXPECT_NE(file.notes[0].text.find("no SE segment"), std::string::npos);
    EXPECT_NE(file.notes[1].text.find("no IEA segment"), std::string::npos);
}

TEST(X12Reader, tellsSegmentsThatStandOutsideOfATransaction) {
    const std::string text = kIsa + "ST*850*1~SE*2*1~\nREF*1~DTM*2~IEA*1*1~";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.notes.size(), 1u);
    EXPECT_EQ(file.notes[0].line, 2u);
    EXPECT_NE(file.notes[0].text.find("REF"), std::string::npos);
}

TEST(X12Reader, keepsABlankSegmentSoThatNumbersDoNotShift) {
    const std::string text = kIsa + "ST*850*1~~*X~SE*4*1~IEA*1*1~";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"ST*850*1", "", "*X", "SE*4*1"}));
}

TEST(X12Reader, refusesAnIsaThatDoesNotTellTheDelimiters) {
    for (const std::string& text :
         {std::string("ISA"), std::string("ISA*00*"), kIsa.substr(0, 105),
          std::string("ISA*00*X*00*~GS*HC*A*B*2020*1705*1*X*005~ST*837*1~BHT*1*2*3~SE*3*1~IEA*1*1~")}) {
        const auto file = readInterchanges(text);
        EXPECT_TRUE(file.transactions.empty());
        ASSERT_TRUE(file.error) << text;
        EXPECT_NE(file.error->text.find("ISA"), std::string::npos);
    }
}

TEST(X12Reader, keepsWhatStandsBeforeADamagedInterchange) {
    const std::string text = kIsa + "ST*850*1~SE*2*1~IEA*1*1~\nISA*00*";
    const auto file = readInterchanges(text);
    EXPECT_EQ(file.transactions.size(), 1u);
    ASSERT_TRUE(file.error);
    EXPECT_EQ(file.error->line, 2u);
}

TEST(EdifactReader, takesTheUsualDelimitersWithoutUna) {
    const std::string text =
        "UNB+UNOA:1+A+B+200101:1200+1'\nUNH+M1+ORDERS:D:96A:UN'\nBGM+220+1'\nUNT+3+M1'\nUNZ+1+1'\n";
    const auto file = readInterchanges(text);
    EXPECT_FALSE(file.error);
    EXPECT_TRUE(file.notes.empty());
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(file.transactions[0].type, "ORDERS");
    EXPECT_EQ(file.transactions[0].control, "M1");
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"UNH+M1+ORDERS:D:96A:UN", "BGM+220+1", "UNT+3+M1"}));
    EXPECT_EQ(linesOf(file.transactions[0]), (Lines{2, 3, 4}));
}

TEST(EdifactReader, takesTheDelimitersOfAUna) {
    const std::string text = "UNA=*.! ~\r\nUNB*UNOA=1*A*B~UNH*7*INVOIC=D~FTX*a!~b!!~UNT*3*7~UNZ*1*1~";
    const auto file = readInterchanges(text);
    EXPECT_FALSE(file.error);
    ASSERT_EQ(file.transactions.size(), 1u);
    const Transaction& transaction = file.transactions[0];
    EXPECT_EQ(transaction.type, "INVOIC");
    EXPECT_EQ(transaction.delimiters.release, '!');
    EXPECT_EQ(textsOf(transaction), (Texts{"UNH*7*INVOIC=D", "FTX*a!~b!!", "UNT*3*7"}));
    EXPECT_EQ(firstComponent(transaction.segments[1].text, transaction.delimiters, 1), "a~b!");
}

TEST(EdifactReader, hasNoReleaseCharacterWhereTheUnaLeavesItBlank) {
    const std::string text = "UNA:+.  'UNB+UNOA:1'UNH+1+ORDERS'FTX+a?'b'UNT+3+1'UNZ+1+1'";
    const auto file = readInterchanges(text);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"UNH+1+ORDERS", "FTX+a?", "b", "UNT+3+1"}));
}

TEST(EdifactReader, refusesAUnbWithOtherDelimitersAndNoUna) {
    const auto file = readInterchanges("UNB*UNOA=1*A*B~");
    ASSERT_TRUE(file.error);
    EXPECT_NE(file.error->text.find("UNB"), std::string::npos);
}

TEST(EdifactReader, refusesAUnaThatIsCutShortOrNamesOneCharacterTwice) {
    EXPECT_TRUE(readInterchanges("UNA:+.? ").error);
    EXPECT_TRUE(readInterchanges("UNA++.? 'UNB+UNOA'").error);
}

TEST(EdifactReader, endsAtAReleaseCharacterThatIsTheLastOne) {
    const auto file = readInterchanges("UNB+UNOA'UNH+1+ORDERS'FTX+a?");
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(textsOf(file.transactions[0]), (Texts{"UNH+1+ORDERS", "FTX+a?"}));
    EXPECT_EQ(firstComponent("FTX+a?", file.transactions[0].delimiters, 1), "a");
}

TEST(Reader, refusesWhatIsNoInterchange) {
    for (const std::string text :
         {"", "   \n", "ISAAC NEWTON", "hello", "<?xml version=\"1.0\"?>", "ST*850*1~SE*2*1~"}) {
        const auto file = readInterchanges(text);
        EXPECT_TRUE(file.transactions.empty());
        EXPECT_TRUE(file.error) << text;
    }
}

TEST(Reader, passesOverAByteOrderMarkAndWhiteSpace) {
    const auto file = readInterchanges("\xEF\xBB\xBF\n UNB+UNOA'UNH+1+ORDERS'UNT+2+1'UNZ+1+1'");
    EXPECT_FALSE(file.error);
    ASSERT_EQ(file.transactions.size(), 1u);
    EXPECT_EQ(file.transactions[0].segments[0].line, 2u);
}

TEST(Reader, tellsWhatStandsBehindTheInterchange) {
    const auto file = readInterchanges("UNB+UNOA'UNH+1+ORDERS'UNT+2+1'UNZ+1+1'\n\x1A");
    EXPECT_FALSE(file.error);
    ASSERT_EQ(file.notes.size(), 1u);
    EXPECT_EQ(file.notes[0].line, 2u);
}

TEST(Reader, findsComponentsOfElements) {
    const Delimiters delimiters = {'+', ':', '\'', '?'};
    EXPECT_EQ(firstComponent("NAD+BY+541:9", delimiters, 0), "NAD");
    EXPECT_EQ(firstComponent("NAD+BY+541:9", delimiters, 2), "541");
    EXPECT_EQ(firstComponent("NAD+BY+541:9", delimiters, 3), "");
    EXPECT_EQ(firstComponent("NAD++:9", delimiters, 2), "");
    EXPECT_EQ(firstComponent("FTX+a?+b?:c:d", delimiters, 1), "a+b:c");
}

// What a cut leaves is told in every case: as an error, or as a note.
TEST(Reader, staysCalmAtEveryCutOfAFile) {
    const std::string x12 = kIsa + "\nGS*PO~ST*850*1~HL*1**20~SE*3*1~GE*1*1~IEA*1*1~";
    const std::string edifact = "UNA:+.? 'UNB+UNOA:1'UNH+1+ORDERS:D'FTX+it?'s'UNT+3+1'UNZ+1+1'";
    for (const auto& [whole, end] : {std::pair{x12, x12.find("IEA*1*1")}, std::pair{edifact, edifact.find("UNZ")}}) {
        for (std::size_t cut = 0; cut < whole.size(); ++cut) {
            const auto file = readInterchanges(std::string_view(whole).substr(0, cut));
            const bool told = file.error || !file.notes.empty();
            EXPECT_EQ(told, cut < end + 3) << cut;
            EXPECT_LE(file.transactions.size(), 1u);
        }
    }
}

}  // namespace
}  // namespace edicheck
