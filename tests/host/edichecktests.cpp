// edicheck as a person runs it: what it says of messages.
#include <gmock/gmock.h>

#include "samples.h"
#include "toolrun.h"

namespace edicheck {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Check : public ToolTest {};
class Loops : public ToolTest {};

TEST_F(Check, findsNothingInACleanX12Message) {
    const auto result = check(kOrderGrammar, x12(kOrder));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, path("message") +
                              ": transaction 850 0001 (line 3, 7 segments): no findings\n"
                              "\n"
                              "1 file, 1 transaction, 0 findings\n");
}

TEST_F(Check, findsItsLibraryBesideItself) {
    const auto result = runBare({"check", "--grammar", file("grammar", kOrderGrammar), file("message", x12(kOrder))});
    EXPECT_EQ(result.exitCode, 0) << result.err;
}

TEST_F(Check, tellsAMissingSegmentWhereItIsNoticed) {
    const auto result = check(kOrderGrammar, x12("ST*850*0001~\nREF*CO*1~\nN1*BY*BUYER~\nSE*4*0001~\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              path("message") +
                  ": transaction 850 0001 (line 3, 4 segments): 1 finding\n"
                  "  segment 2 (line 4): REF*CO*1\n"
                  "    code 3: mandatory BEG (a segment, or the first one of a loop) is missing in front of here\n"
                  "\n"
                  "1 file, 1 transaction, 1 finding\n");
}

// ZZZ passes by the mandatory loop and finds no place; the closing check then names the loop again.
TEST_F(Check, tellsASegmentWithoutAPlaceAndWhatIsMissingAtTheEnd) {
    const auto result = check(kOrderGrammar, x12("ST*850*0001~\nBEG*00~\nZZZ*9:8~\nN1*BY~\nSE*5*0001~\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              path("message") +
                  ": transaction 850 0001 (line 3, 5 segments): 3 findings\n"
                  "  segment 3 (line 5): ZZZ*9:8\n"
                  "    code 3: mandatory N1 (a segment, or the first one of a loop) is missing in front of here\n"
                  "    code 2: out of sequence or not expected here; the rest of the message was not looked at\n"
                  "  at the end of the message\n"
                  "    code 3: missing at the end: N1\n"
                  "\n"
                  "1 file, 1 transaction, 3 findings\n");
}

TEST_F(Check, tellsLimitsThatAreExceeded) {
    const auto result =
        check(kOrderGrammar, x12("ST*850*0001~\nBEG*00~\nREF*1~\nREF*2~\nREF*3~\nN1*BY~\nN1*BY~\nN1*ST~\n"
                                 "SE*9*0001~\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 5 (line 7): REF*3\n"
                                      "    code 5: REF repeats beyond its limit\n"
                                      "  segment 8 (line 10): N1*ST\n"
                                      "    code 4: too many iterations of the loop that begins with N1 (loop 1000)\n"));
    EXPECT_THAT(result.out, HasSubstr("1 transaction, 2 findings\n"));
}

// N1*SU is no initiator of the loop, and no other child takes it.
TEST_F(Check, comparesIdentifiers) {
    const auto result = check(kOrderGrammar, x12("ST*850*0001~\nBEG*00~\nN1*BY~\nN1*SU~\nSE*5*0001~\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 4 (line 6): N1*SU\n    code 2: out of sequence"));
}

TEST_F(Check, takesTheIdentifierFromTheElementThatAnOptionNames) {
    const std::string message = x12("ST*850*0001~\nBEG*00~\nN1*1*BY~\nSE*4*0001~\n");
    EXPECT_EQ(check(kOrderGrammar, message).exitCode, 1);
    EXPECT_EQ(check(kOrderGrammar, message, {"--identifier", "N1=2"}).exitCode, 0);
    EXPECT_EQ(check(kOrderGrammar, message, {"--identifier", "REF=1,N1=2"}).exitCode, 0);
}

TEST_F(Check, comparesTheFirstFourCharactersOfAnIdentifier) {
    const std::string grammar = "2M|1|1|ST$M|1|1|Loop 1000$M|1|1|N1|ABCD$M|1|1|EndLoop$M|1|1|SE$";
    EXPECT_EQ(check(grammar, x12("ST*850*1~N1*ABCDE~SE*3*1~")).exitCode, 0);
    EXPECT_EQ(check(grammar, x12("ST*850*1~N1*ABCXE~SE*3*1~")).exitCode, 1);
}

const std::string kGroupGrammar =
    "2M|1|1|ST$\n"
    "O|0|0|UnorderedGroup 2000$\n"
    "  O|0|0|Loop 2000A$  M|1|1|HL|20$  O|0|1|NM1$  O|0|0|EndLoop$\n"
    "  O|0|0|Loop 2000B$  M|1|1|HL|22$  O|0|0|EndLoop$\n"
    "O|0|0|EndUnorderedGroup$\n"
    "M|1|1|SE$\n";

TEST_F(Check, makesOneFindingOfAnUnknownIdentifier) {
    const std::string message = x12("ST*837*1~\nHL*1**20*1~\nHL*2*1*99*0~\nHL*3*1*22*0~\nSE*5*1~\n");
    const auto words = check(kGroupGrammar, message);
    EXPECT_EQ(words.exitCode, 1);
    EXPECT_THAT(words.out,
                HasSubstr("  segment 3 (line 5): HL*2*1*99*0\n"
                          "    code 8 and 7: no loop here takes HL with the identifier \"99\" (group of loop 2000A)\n"
                          "\n"
                          "1 file, 1 transaction, 1 finding\n"));
}

TEST_F(Check, printsTheReportAsItStands) {
    const auto result = check(kGroupGrammar, x12("ST*837*1~HL*1**20*1~HL*2*1*99*0~SE*4*1~"), {"--format", "report"});
    const auto blanks = [](std::size_t count) { return std::string(count, ' '); };
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "000000000300000HL      8    2000A NONESEG ERROR" + blanks(75) + "Element Text" + blanks(38) +
                              "$\n"
                              "000000000300300HL      7    " +
                              blanks(6 + 4 + 4 + 80) + "99" + blanks(48) + "$\n");
}

TEST_F(Check, printsNoReportForACleanMessage) {
    const auto result = check(kOrderGrammar, x12(kOrder), {"--format", "report"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
}

TEST_F(Check, checksUnderAGrammarOfKind1) {
    EXPECT_EQ(check(kOrderGrammarOfKind1, x12(kOrder)).exitCode, 0);
    const auto result = check(kOrderGrammarOfKind1, x12("ST*850*0001~\nBEG*$~\nA$*1~\nSE*4*0001~\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 3 (line 5): A$*1\n"));
}

TEST_F(Check, checksEveryTransactionOfEveryFile) {
    const std::string good = "ST*850*0001~BEG*00~N1*BY~SE*4*0001~";
    const std::string bad = "ST*850*0002~BEG*00~SE*3*0002~";
    const auto result = run({"check", "--grammar", file("grammar", kOrderGrammar),
                             file("one", x12(good + bad) + x12(good)), file("two", x12(bad))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out,
                StartsWith(path("one") + ": transaction 850 0001 (line 3, 4 segments): no findings\n" + path("one") +
                           ": transaction 850 0002 (line 3, 3 segments): 1 finding\n"
                           "  segment 3 (line 3): SE*3*0002\n"));
    EXPECT_THAT(result.out, HasSubstr(path("one") + ": transaction 850 0001 (line 7, 4 segments): no findings\n"));
    EXPECT_THAT(result.out, HasSubstr(path("two") + ": transaction 850 0002"));
    EXPECT_THAT(result.out, HasSubstr("\n2 files, 4 transactions, 2 findings\n"));
}

TEST_F(Check, takesALineBreakAsTerminator) {
    std::string message = x12(kOrder);
    std::string byLine;
    for (const char character : message) {
        if (character != '~') byLine += character;
    }
    EXPECT_EQ(check(kOrderGrammar, byLine).exitCode, 0);
    std::string byCarriageReturn;
    for (const char character : byLine)
        byCarriageReturn += character == '\n' ? std::string("\r\n") : std::string(1, character);
    EXPECT_EQ(check(kOrderGrammar, byCarriageReturn).exitCode, 0);
}

TEST_F(Check, takesDelimitersThatNoDelimiterTextCanName) {
    std::string message = x12("ST*850*1~BEG*00~N1*BY~SE*4*1~");
    for (char& character : message) {
        if (character == '~') character = '$';
    }
    EXPECT_EQ(check(kOrderGrammar, message).exitCode, 0);
    EXPECT_EQ(check(kOrderGrammarOfKind1, message).exitCode, 0);
}

TEST_F(Check, findsNothingInACleanEdifactMessage) {
    const auto result = check(kEdifactGrammar, edifact("UNH+1+ORDERS:D:96A:UN'\nBGM+220+1'\nUNT+3+1'\n"));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith(path("message") + ": transaction ORDERS 1 (line 2, 3 segments): no findings\n"));
}

TEST_F(Check, tellsFindingsOfAnEdifactMessage) {
    const auto result = check(kEdifactGrammar, edifact("UNH+1+ORDERS:D:96A:UN'\nFTX+AAI+it?'s'\nUNT+3+1'\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 2 (line 3): FTX+AAI+it?'s\n    code 3: mandatory BGM"));
}

// A released terminator that cut the segment would leave "S ME" in the message, which has no place.
TEST_F(Check, undoesReleaseCharacters) {
    EXPECT_EQ(check(kEdifactGrammar, edifact("UNH+1+ORDERS'BGM+220'FTX+IT?'S ME'UNT+4+1'")).exitCode, 0);
    EXPECT_EQ(check(kEdifactGrammar, edifact("UNH+1+ORDERS'BGM+220'FTX+IT'S ME'UNT+4+1'")).exitCode, 1);
}

TEST_F(Check, comparesReleasedIdentifiersAsTheyAreMeant) {
    const std::string grammar = "2M|1|1|UNH$M|1|1|Loop 1000$M|1|1|RFF|A+:'$M|1|1|EndLoop$M|1|1|UNT$";
    EXPECT_EQ(check(grammar, edifact("UNH+1+ORDERS'RFF+A?+?:?':7'UNT+3+1'")).exitCode, 0);
    EXPECT_EQ(check(grammar, edifact("UNH+1+ORDERS'RFF+A?+?::7'UNT+3+1'")).exitCode, 1);
}

TEST_F(Check, takesTheDelimitersOfAUna) {
    EXPECT_EQ(
        check(kEdifactGrammar, "UNA=*.? ~\nUNB*UNOA=1~\nUNH*1*INVOIC=D~\nBGM*380~\nUNT*3*1~\nUNZ*1*1~\n").exitCode, 0);
}

TEST_F(Check, checksARawStreamOfKind2) {
    const std::string stream =
        "ST 850  xxxxxxxST*850*0001~BEG     xxxxxxxBEG*00~N1 BY   xxxxxxxN1*BY~\nSE 4    xxxxxxxSE*4*0001~";
    const auto clean = check(kOrderGrammar, stream, {"--stream"});
    EXPECT_EQ(clean.exitCode, 0) << clean.err;
    EXPECT_EQ(clean.out, path("message") + ": stream (4 segments): no findings\n\n1 file, 1 transaction, 0 findings\n");
    EXPECT_EQ(check(kOrderGrammar, stream, {"--stream", "--delimiters", "*:~X"}).exitCode, 0);

    std::string byLine = stream;
    for (char& character : byLine) {
        if (character == '~') character = '|';
    }
    EXPECT_EQ(check(kOrderGrammar, byLine, {"--stream", "--delimiters", "*:\\x7CX"}).exitCode, 0);
}

TEST_F(Check, tellsFindingsOfARawStreamByItsElementText) {
    const auto result = check(kOrderGrammar, "ST 850  xxxxxxxST*850*0001~\nZZZ1    xxxxxxxZZZ*1~", {"--stream"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 2 (line 2): ZZZ*1\n"));
}

TEST_F(Check, checksARawStreamOfKind1) {
    EXPECT_EQ(check(kOrderGrammarOfKind1, "ST $BEG$N1 $\nSE $", {"--stream"}).exitCode, 0);
    const auto result = check(kOrderGrammarOfKind1, "ST $N1 $SE $", {"--stream"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 2 (line 1): N1 \n    code 3: mandatory BEG"));
}

// The walk ends with the data behind BEG, so the loop is named by its place in the grammar, which is 4.
TEST_F(Check, tellsWhatIsMissingAtTheEndOfACleanBeginning) {
    const auto result = check(kOrderGrammarOfKind1, "ST $BEG$", {"--stream"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("1 finding\n  at the end of the message\n    code 3: missing at the end: N1\n"));
}

TEST_F(Check, tellsTheUnendedRecordOfARawStream) {
    const auto result = check(kOrderGrammarOfKind1, "ST $BEG$N1 $SE $\nrest", {"--stream"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, HasSubstr("line 2: the last record is not ended"));
}

TEST_F(Check, tellsATransactionThatIsCutShort) {
    const auto result = check(kOrderGrammar, kIsa + "GS*PO~\nST*850*0001~\nBEG*00~\nN1*BY~\nN3*MAI");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, HasSubstr("message: line 3: transaction 850 0001 has no SE segment"));
    EXPECT_THAT(result.err, HasSubstr("the interchange has no IEA segment"));
    EXPECT_THAT(result.out, HasSubstr("transaction 850 0001 (line 3, 4 segments)"));
}

TEST_F(Check, showsControlCharactersAsTheirNumbers) {
    const auto result = check(kOrderGrammar, x12("ST*850*1~BEG*00~N1*BY~ZZZ*a\x1B[31mb~SE*5*1~"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("ZZZ*a\\x1B[31mb\n"));
}

// BEG is missing at N1 already; since ZZZ ends the walk in front of any match behind BEG, the closing check names it
// again.
TEST_F(Check, showsTheWholeMessageWithItsFindings) {
    const auto result =
        check(kOrderGrammar, x12("ST*850*0001~\nN1*BY~\nN3*A~\nN3*B~\nZZZ*1~\nSE*6*0001~\n"), {"--show"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(
        result.out,
        path("message") +
            ": transaction 850 0001 (line 3, 6 segments): 4 findings\n"
            "     1          ST*850*0001\n"
            "     2  1000      N1*BY\n"
            "        ^ code 3: mandatory BEG (a segment, or the first one of a loop) is missing in front of here\n"
            "     3  1000      N3*A\n"
            "     4  1000      N3*B\n"
            "        ^ code 5: N3 repeats beyond its limit\n"
            "     5  ------    ZZZ*1\n"
            "        ^ code 2: out of sequence or not expected here; the rest of the message was not looked at\n"
            "     6  ------    SE*6*0001\n"
            "  at the end of the message\n"
            "        ^ code 3: missing at the end: BEG\n"
            "\n"
            "1 file, 1 transaction, 4 findings\n");
}

TEST_F(Loops, printsTheLocatedSegmentsWithTheirLoops) {
    const auto result = run({"loops", "--grammar", file("grammar", kOrderGrammar), file("message", x12(kOrder))});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, path("message") +
                              ": transaction 850 0001 (line 3, 7 segments): no findings, 7 located\n"
                              "     1          ST*850*0001\n"
                              "     2          BEG*00*SA*4711\n"
                              "     3          REF*CO*1\n"
                              "     4  1000    N1*BY*BUYER\n"
                              "     5  1000    N3*MAIN STREET\n"
                              "     6  1000    N1*ST*STORE\n"
                              "     7          SE*7*0001\n");
}

// The second NM1 is one iteration too many of loop 1000 and lacks its REF, so it is taken back and given to loop 2000.
const std::string kTakenBackGrammar =
    "2M|1|1|ST$"
    "O|0|1|Loop 1000$M|1|1|NM1$M|0|1|REF$O|0|0|EndLoop$"
    "O|0|1|Loop 2000$M|1|1|NM1$O|0|1|PER$O|0|0|EndLoop$"
    "M|1|1|SE$";
const std::string kTakenBack = "ST*1*1~NM1*1~REF*1~NM1*1~PER*1~SE*6*1~";

TEST_F(Loops, printsARecordThatIsLocatedTwiceInBothLoops) {
    const auto result =
        run({"loops", "--grammar", file("grammar", kTakenBackGrammar), file("message", x12(kTakenBack))});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr(": no findings, 6 located\n"
                                      "     1          ST*1*1\n"
                                      "     2  1000    NM1*1\n"
                                      "     3  1000    REF*1\n"
                                      "     4  1000    NM1*1\n"
                                      "     4  2000    NM1*1\n"
                                      "     5  2000    PER*1\n"
                                      "     6          SE*6*1\n"));
}

TEST_F(Check, showsARecordThatIsLocatedTwiceInItsLastLoop) {
    const auto result = check(kTakenBackGrammar, x12(kTakenBack), {"--show"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("     3  1000      REF*1\n     4  2000      NM1*1\n     5  2000      PER*1\n"));
}

TEST_F(Loops, leavesOutWhatWasNotLocated) {
    const auto result = run({"loops", "--grammar", file("grammar", kOrderGrammar),
                             file("message", x12("ST*850*1~BEG*00~N1*BY~ZZZ*1~SE*5*1~"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("1 finding, 3 located\n"));
    EXPECT_THAT(result.out, Not(HasSubstr("ZZZ")));
}

TEST_F(Loops, printsALocatedRawStream) {
    const auto result = run({"loops", "--stream", "--grammar", file("grammar", kOrderGrammar),
                             file("message", "ST 850  xxxxxxxST*850~BEG     xxxxxxxBEG~N1 BY   xxxxxxxN1*BY~")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("     3  1000    N1*BY\n"));
}

}  // namespace
}  // namespace edicheck
