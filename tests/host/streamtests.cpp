// The stream forms that are delivered to the library.
#include "stream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "failure.h"

namespace edicheck {
namespace {

const Delimiters kX12 = {'*', ':', '~', std::nullopt};
const Delimiters kEdifact = {'+', ':', '\'', '?'};

// The first bytes that are taken in the place of delimiters which can't serve.
const std::string kE = "\x1D";
const std::string kC = "\x1F";
const std::string kT = "\x1C";

Transaction transactionOf(const std::vector<std::string_view>& texts, const Delimiters& delimiters) {
    Transaction transaction{"850", "1", delimiters, {}};
    for (const std::string_view text : texts)
        transaction.segments.push_back({text, 1});
    return transaction;
}

std::string streamOf(std::string_view text, const Delimiters& delimiters, std::string_view identifiers = {}) {
    return deliverTransaction(transactionOf({text}, delimiters), 2, IdentifierElements(identifiers)).stream;
}

std::vector<std::string> idsOf(const Delivery& delivery) {
    std::vector<std::string> ids;
    for (const Record& record : delivery.records)
        ids.push_back(record.id);
    return ids;
}

using Ids = std::vector<std::string>;

TEST(Kind2Stream, hasIdIdentifierAndElementTextUnderTheMessagesOwnDelimiters) {
    const auto delivery =
        deliverTransaction(transactionOf({"ST*850*0001", "N1*BY*A:B"}, kX12), 2, IdentifierElements());
    EXPECT_EQ(delivery.delimiters, "*:~X");
    EXPECT_EQ(delivery.stream, "ST 850         ST*850*0001~N1 BY          N1*BY*A:B~");
    EXPECT_EQ(idsOf(delivery), (Ids{"ST", "N1"}));
    EXPECT_EQ(delivery.records[1].text, "N1*BY*A:B");
}

TEST(Kind2Stream, takesTheThirdElementOfHlAndTheFirstOfOthers) {
    EXPECT_EQ(streamOf("HL*2*1*22*0", kX12).substr(0, 15), "HL 22          ");
    EXPECT_EQ(streamOf("REF*EI*1", kX12).substr(0, 15), "REFEI          ");
}

TEST(Kind2Stream, takesTheElementThatAnOverrideNames) {
    EXPECT_EQ(streamOf("ENT*1*2J", kX12, "ENT=2").substr(0, 15), "ENT2J          ");
    EXPECT_EQ(streamOf("HL*2*1*22", kX12, "ENT=2,HL=1").substr(0, 15), "HL 2           ");
}

TEST(Kind2Stream, takesTheFirstComponentAsIdentifier) {
    EXPECT_EQ(streamOf("RFF+ON:123", kEdifact).substr(0, 15), "RFFON          ");
}

TEST(Kind2Stream, leavesTheIdentifierBlankWhereTheElementIsMissing) {
    EXPECT_EQ(streamOf("N1", kX12), "N1             N1~");
    EXPECT_EQ(streamOf("HL*1", kX12).substr(0, 15), "HL             ");
}

TEST(Kind2Stream, passesFourCharactersOfALongerIdentifier) {
    EXPECT_EQ(streamOf("REF*12345*1", kX12).substr(0, 15), "REF1234        ");
    EXPECT_EQ(streamOf("REF*1234*1", kX12).substr(0, 15), "REF1234        ");
}

// '+' and ':' are released and so are data; what they delimit travels under other bytes.
TEST(Kind2Stream, undoesReleaseCharacters) {
    EXPECT_EQ(streamOf("FTX+it?'s+a?+b?:c:d??", kEdifact),
              "FTXit's        FTX" + kE + "it's" + kE + "a+b:c" + kC + "d?" + kT);
    EXPECT_EQ(streamOf("FTX+a?:b+c", kEdifact), "FTXa:b         FTX+a:b+c'");
}

TEST(Kind2Stream, replacesOnlyTheDelimitersThatTheDataHold) {
    const auto delivery = deliverTransaction(transactionOf({"COM+?+49:TE"}, kEdifact), 2, IdentifierElements());
    EXPECT_EQ(delivery.delimiters, kE + ":'X");
    EXPECT_EQ(delivery.stream, "COM+49         COM" + kE + "+49:TE'");
}

// White space would be skipped at the head of a record, and an X would end the delimiter text.
TEST(Kind2Stream, replacesDelimitersThatNoDelimiterTextCanName) {
    EXPECT_EQ(deliverTransaction(transactionOf({"N1XBYXA B"}, {'X', ' ', '\n', std::nullopt}), 2, IdentifierElements())
                  .delimiters,
              kE + kC + kT + "X");
}

TEST(Kind2Stream, takesBytesThatTheMessageDoesNotHold) {
    const std::string text =
        "MSG+?+\x1D"
        "b?:\x1F"
        "c?'\x1C"
        "d\x01"
        "e";
    const auto delivery = deliverTransaction(transactionOf({text}, kEdifact), 2, IdentifierElements());
    EXPECT_EQ(delivery.delimiters, "\x02\x03\x04X");
    EXPECT_EQ(delivery.stream,
              "MSG+\x1D"
              "b:        MSG\x02"
              "+\x1D"
              "b:\x1F"
              "c'\x1C"
              "d\x01"
              "e\x04");
}

TEST(Kind2Stream, failsWhenEveryByteIsHeld) {
    std::string text;
    for (int byte = 0; byte < 256; ++byte)
        text.append(1, '?').append(1, static_cast<char>(byte));
    EXPECT_THROW(deliverTransaction(transactionOf({text}, kEdifact), 2, IdentifierElements()), Failure);
}

TEST(Kind2Stream, deliversAPlaceholderForAnIdThatCannotTravel) {
    using namespace std::string_literals;
    const std::string nul = "A\0*1"s;
    const auto delivery =
        deliverTransaction(transactionOf({"", "*A", "   *A", "SVCX*A", "\x81\x82*A", "A B*A", nul, "N1*A"}, kX12), 2,
                           IdentifierElements());
    EXPECT_EQ(idsOf(delivery), (Ids{"?", "?", "?", "?", "?", "?", "?", "N1"}));
    EXPECT_EQ(delivery.stream.substr(0, 16), "?              ~");
}

TEST(Kind2Stream, deliversNulAsAQuestionMark) {
    using namespace std::string_literals;
    const std::string text = "REF*A\0B*C\0D"s;
    EXPECT_EQ(streamOf(text, kX12), "REFA?B         REF*A?B*C?D~");
}

TEST(Kind1Stream, hasIdsAlone) {
    const auto delivery =
        deliverTransaction(transactionOf({"ST*850*1", "BEG*$", "A$*1", "N1"}, kX12), 1, IdentifierElements());
    EXPECT_EQ(delivery.stream, "ST $BEG$?  $N1 $");
    EXPECT_EQ(delivery.delimiters, "");
    EXPECT_EQ(idsOf(delivery), (Ids{"ST", "BEG", "?", "N1"}));
}

TEST(RawStream, isDeliveredAsItStands) {
    const std::string text = "ST 850  xxxxxxxST*850*1~\nN1 BY   xxxxxxxN1*BY~\n  rest";
    const auto delivery = deliverStream(text, 2, "*:~X");
    EXPECT_EQ(delivery.stream, text);
    EXPECT_EQ(delivery.delimiters, "*:~X");
    EXPECT_EQ(idsOf(delivery), (Ids{"ST", "N1"}));
    EXPECT_EQ(delivery.records[0].text, "ST*850*1");
    EXPECT_EQ(delivery.records[1].text, "N1*BY");
    EXPECT_EQ(delivery.records[1].line, 2u);
    EXPECT_EQ(delivery.unendedLine, 3u);
}

TEST(RawStream, ofKind1IsCutAtDollarSigns) {
    const auto delivery = deliverStream("ST XYZ$\n SE $N$", 1, "*:~X");
    EXPECT_EQ(delivery.delimiters, "");
    EXPECT_EQ(idsOf(delivery), (Ids{"ST", "SE", "N"}));
    EXPECT_EQ(delivery.records[0].text, "ST XYZ");
    EXPECT_FALSE(delivery.unendedLine);
}

TEST(RawStream, keepsTheBlankOfAnIdThatIsCutShort) {
    EXPECT_EQ(idsOf(deliverStream("S $", 1, "")), (Ids{"S "}));
}

TEST(RawStream, isNotCutAtHalfATerminator) {
    const auto delivery = deliverStream("MSG            MSG*a~b~\nSE             SE~~\n", 2, "*:~\nX");
    EXPECT_EQ(idsOf(delivery), (Ids{"MSG", "SE"}));
    EXPECT_EQ(delivery.records[0].text, "MSG*a~b");
    EXPECT_EQ(delivery.records[1].text, "SE~");
}

TEST(NumberedStream, carriesTheNumberOfEachRecordAsItsElementText) {
    const auto delivery = deliverTransaction(transactionOf({"ST*850*1", "N1*BY"}, kX12), 2, IdentifierElements());
    const auto withNumbers = numbered(delivery, Grammar(""));
    EXPECT_EQ(withNumbers.stream, "ST 850         " + kE + "1" + kT + "N1 BY          " + kE + "2" + kT);
    EXPECT_EQ(withNumbers.delimiters, kE + kC + kT + "X");
}

TEST(NumberedStream, fillsAShortHeadWithNulAsItWasReadBefore) {
    using namespace std::string_literals;
    const auto withNumbers = numbered(deliverStream("S ~", 2, "*:~X"), Grammar(""));
    EXPECT_EQ(withNumbers.stream, "S " + std::string(13, '\0') + kE + "1" + kT);
}

TEST(NumberedStream, takesDelimitersThatTheGrammarDoesNotHold) {
    const auto delivery = deliverTransaction(transactionOf({"ST*1"}, kX12), 2, IdentifierElements());
    EXPECT_EQ(numbered(delivery, Grammar("2O|0|0|Loop \x1C\x1D$")).delimiters, "\x1F\x01\x02X");
}

TEST(NumberedStream, tellsTheRecordsThatWereLocated) {
    const auto withNumbers = numbered(
        deliverTransaction(transactionOf({"ST*1", "N1*BY", "XX", "SE*4"}, kX12), 2, IdentifierElements()), Grammar(""));
    const auto located = cutLoopText("ST" + kE + kE + "1" + kT + "N1" + kE + "1000A" + kE + "2" + kT +  //
                                         "N1" + kE + "1000A" + kE + "2" + kT + "SE" + kE + kE + "4" + kT,
                                     withNumbers);
    ASSERT_EQ(located.size(), 4u);
    EXPECT_EQ(located[0].number, 1u);
    EXPECT_EQ(located[0].loopId, "");
    EXPECT_EQ(located[1].number, 2u);
    EXPECT_EQ(located[1].loopId, "1000A");
    EXPECT_EQ(located[2].number, 2u);
    EXPECT_EQ(located[3].number, 4u);
}

TEST(NumberedStream, refusesALoopTextThatIsNotItsOwn) {
    const auto withNumbers =
        numbered(deliverTransaction(transactionOf({"ST*1"}, kX12), 2, IdentifierElements()), Grammar(""));
    for (const std::string& text : {"ST" + kE + kE + "2" + kT, "ST" + kE + kE + "0" + kT, "ST" + kE + kE + "x" + kT,
                                    "ST" + kE + "1" + kT, "ST" + kE + kE + kT, kT, std::string("nonsense")}) {
        EXPECT_THROW(cutLoopText(text, withNumbers), Failure) << text;
    }
}

TEST(DelimiterOption, understandsEscapes) {
    EXPECT_EQ(parseDelimiters("*:~X"), "*:~X");
    EXPECT_EQ(parseDelimiters("*:\\r\\nX"), "*:\r\nX");
    EXPECT_EQ(parseDelimiters("\\x1d\\x1F\\tX"), "\x1D\x1F\tX");
    EXPECT_EQ(parseDelimiters("\\\\:~~~X"), "\\:~~~X");
}

TEST(DelimiterOption, refusesWhatIsNoDelimiterText) {
    for (const std::string text : {"", "*", "*:", "*:X", "*:~", "*:~~~~X", "*:~X~", "*:~XX", "*:\\", "*:\\q", "*:\\x1X",
                                   "*:\\xZZX", "*:\\x00X"}) {
        EXPECT_THROW(parseDelimiters(text), Failure) << text;
    }
}

TEST(IdentifierOption, refusesWhatIsNoList) {
    for (const std::string text : {"REF", "REF=", "=2", "REF=0", "REF=-1", "REF=two", "REF=2x", "REF=2,,N1=1"}) {
        EXPECT_THROW(IdentifierElements{text}, Failure) << text;
    }
}

TEST(IdentifierOption, namesTheFirstElementOfSegmentsThatItDoesNotList) {
    const IdentifierElements elements("REF=2");
    EXPECT_EQ(elements.of("REF"), 2u);
    EXPECT_EQ(elements.of("HL"), 3u);
    EXPECT_EQ(elements.of("N1"), 1u);
}

}  // namespace
}  // namespace edicheck
