// Cutting reports, and saying in words what they mean.
#include "report.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "failure.h"

namespace edicheck {
namespace {

std::string column(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// A line as the walk reports it, its numbers given as printed.
std::string line(const std::string& number, const std::string& id, const std::string& code, const std::string& loop,
                 const std::string& position = "000", const std::string& value = "Element Text") {
    return number + position + "00" + column(id, 8) + column(code, 5) + column(loop, 6) + "NONESEG " +
           column("ERROR", 80) + column(value, 50) + "$";
}

// Segments of a message by their ids.
std::vector<Record> records(const std::vector<std::string>& ids) {
    std::vector<Record> result;
    for (const std::string& id : ids)
        result.push_back({id, "", "", 1});
    return result;
}

// Each explanation as "record: words".
std::vector<std::string> explained(const std::string& reply, const std::string& grammar,
                                   const std::vector<std::string>& ids) {
    std::vector<std::string> lines;
    for (const auto& explanation : explain(cutReport(reply), Grammar(grammar), records(ids))) {
        lines.push_back(std::to_string(explanation.record) + ": " + explanation.codes + ": " + explanation.words);
    }
    return lines;
}

using Lines = std::vector<std::string>;

const std::string kGrammar = "2M|1|1|ST$M|1|1|BEG$M|1|1|REF$M|1|1|CTT$M|1|1|SE$";

TEST(ReportCutter, readsTheColumnsOfALine) {
    const std::string text = line("0000000004", "HL", "7", "2000A", "003", "99");
    ASSERT_EQ(text.size(), 173u);
    const auto findings = cutReport(text);
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].line, text);
    EXPECT_EQ(findings[0].number, 4);
    EXPECT_EQ(findings[0].elementPosition, 3);
    EXPECT_EQ(findings[0].segmentId, "HL");
    EXPECT_EQ(findings[0].code, "7");
    EXPECT_EQ(findings[0].loopId, "2000A");
    EXPECT_EQ(findings[0].elementText, "99");
}

TEST(ReportCutter, findsNothingInAnEmptyReply) {
    EXPECT_TRUE(cutReport("").empty());
}

TEST(ReportCutter, doesNotCutAtADollarSignWithinAColumn) {
    const auto findings =
        cutReport(line("0000000001", "A$", "5", "LOOP", "000", "1$2") + line("0000000002", "N1", "2", "LOOP"));
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].segmentId, "A$");
    EXPECT_EQ(findings[0].elementText, "1$2");
    EXPECT_EQ(findings[1].segmentId, "N1");
}

TEST(ReportCutter, readsNumbersThatAreWiderThanTheirColumn) {
    const auto findings = cutReport(line("-0000000005", "N1", "4", "LOOP") +          //
                                    line("0000000006", "N2", "7", "LOOP", "1234") +   //
                                    line("-2147483648", "N3", "4", "LOOP", "-005") +  //
                                    line("0000000007", "N4", "2", "LOOP"));
    ASSERT_EQ(findings.size(), 4u);
    EXPECT_EQ(findings[0].number, -5);
    EXPECT_EQ(findings[0].segmentId, "N1");
    EXPECT_EQ(findings[1].elementPosition, 1234);
    EXPECT_EQ(findings[1].segmentId, "N2");
    EXPECT_EQ(findings[2].number, -2147483648LL);
    EXPECT_EQ(findings[2].elementPosition, -5);
    EXPECT_EQ(findings[2].segmentId, "N3");
    EXPECT_EQ(findings[3].number, 7);
}

TEST(ReportCutter, refusesWhatIsNoReport) {
    const std::string good = line("0000000001", "N1", "2", "LOOP");
    for (const std::string& text : {std::string("nonsense"), good.substr(0, 172), good.substr(0, 172) + "!", good + "$",
                                    line("00000000x1", "N1", "2", "LOOP"), std::string(173, ' ')}) {
        EXPECT_THROW(cutReport(text), Failure) << text;
    }
    // At every place but the end, a cut is told.
    for (std::size_t cut = 1; cut < good.size(); ++cut)
        EXPECT_THROW(cutReport(good.substr(0, cut)), Failure) << cut;
}

TEST(Words, tellTheMeaningOfEachCode) {
    const std::string reply = line("0000000001", "N1", "1", "1000") + line("0000000002", "N2", "3", "LOOP") +
                              line("0000000003", "N3", "4", "2000A") + line("0000000004", "N4", "5", "") +
                              line("0000000005", "N5", "7", "", "001", "ZZ") + line("0000000005", "N6", "8", "2300") +
                              line("0000000006", "N7", "2", "LOOP");
    EXPECT_EQ(explained(reply, kGrammar, {"1", "2", "3", "4", "5", "6"}),
              (Lines{"1: 1: too few N1 in front of here (loop 1000)",
                     "2: 3: mandatory N2 (a segment, or the first one of a loop) is missing in front of here",
                     "3: 4: too many iterations of the loop that begins with N3 (loop 2000A)",
                     "4: 5: N4 repeats beyond its limit", "5: 7: identifier value \"ZZ\" of N5 is not known here",
                     "5: 8: no loop here takes N6 with this identifier (loop 2300)",
                     "6: 2: out of sequence or not expected here; the rest of the message was not looked at"}));
}

TEST(Words, makeOneOfTwoFindingsThatTellOfOneIdentifier) {
    const std::string reply = line("0000000003", "HL", "8", "2000A") + line("0000000003", "HL", "7", "", "003", "99");
    EXPECT_EQ(explained(reply, kGrammar, {"ST", "HL", "HL", "SE"}),
              (Lines{"3: 8 and 7: no loop here takes HL with the identifier \"99\" (group of loop 2000A)"}));
}

TEST(Words, keepAnUnknownIdentifierApartFromAnotherSegment) {
    const std::string reply = line("0000000002", "HL", "8", "2000A") + line("0000000003", "HL", "7", "", "003", "99");
    EXPECT_EQ(explained(reply, kGrammar, {"ST", "HL", "HL", "SE"}).size(), 2u);
}

TEST(Words, placeNumbersBeyondTheLastRecordAtTheEnd) {
    const std::string reply = line("0000000003", "N1", "3", "1000") + line("0000000009", "N2", "3", "1000") +
                              line("-0000000001", "N3", "4", "LOOP") + line("0000000000", "N4", "4", "LOOP");
    EXPECT_EQ(
        explained(reply, kGrammar, {"ST", "N1"}),
        (Lines{"3: 3: mandatory N1 (a segment, or the first one of a loop) is missing in front of here (loop 1000)",
               "3: 3: mandatory N2 (a segment, or the first one of a loop) is missing in front of here (loop 1000)",
               "0: 4: too many iterations of the loop that begins with N3",
               "0: 4: too many iterations of the loop that begins with N4"}));
}

// Behind the record without a place, 3 and 4 are places of REF and CTT in the grammar, and no records.
TEST(Words, takeWhatFollowsTheRecordWithoutAPlaceAsMissingAtTheEnd) {
    const std::string reply = line("0000000003", "REF", "3", "LOOP") + line("0000000003", "ZZZ", "2", "LOOP") +
                              line("0000000003", "REF", "3", "LOOP") + line("0000000004", "CTT", "3", "LOOP");
    EXPECT_EQ(explained(reply, kGrammar, {"ST", "BEG", "ZZZ", "A", "B"}),
              (Lines{"3: 3: mandatory REF (a segment, or the first one of a loop) is missing in front of here",
                     "3: 2: out of sequence or not expected here; the rest of the message was not looked at",
                     "6: 3: missing at the end: REF", "6: 3: missing at the end: CTT"}));
}

// The message ST BEG ends: REF and CTT stand behind BEG in the grammar.
TEST(Words, takeChildrenBehindTheLastMatchedOneAsMissingAtTheEnd) {
    const std::string reply = line("0000000003", "REF", "3", "LOOP") + line("0000000004", "CTT", "3", "LOOP");
    EXPECT_EQ(explained(reply, kGrammar, {"ST", "BEG"}),
              (Lines{"3: 3: missing at the end: REF", "3: 3: missing at the end: CTT"}));
}

// The message ST BEG CTT SE lacks REF, which is noticed at record 3, and happens to be the third child as well.
TEST(Words, keepAMissingSegmentAtItsRecordThoughItsPlaceHasTheSameNumber) {
    EXPECT_EQ(explained(line("0000000003", "REF", "3", "LOOP"), kGrammar, {"ST", "BEG", "CTT", "SE"}),
              (Lines{"3: 3: mandatory REF (a segment, or the first one of a loop) is missing in front of here"}));
}

TEST(Words, sayThatTheMessageEndsWithinALoop) {
    EXPECT_EQ(
        explained(line("0000000003", "", "2", "LOOP"), kGrammar, {"ST", "BEG"}),
        (Lines{"3: 2: the message ends within a loop or group, where a segment of the grammar's root, such as the "
               "trailer, should end it"}));
}

TEST(Words, showACodeThatHasNoMeaningHere) {
    EXPECT_EQ(explained(line("0000000001", "N1", "9", "LOOP"), kGrammar, {"N1"}),
              (Lines{"1: 9: code without a meaning of its own: 9 for N1"}));
}

}  // namespace
}  // namespace edicheck
