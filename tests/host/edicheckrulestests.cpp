// edicheck with rules, as a person runs it.
#include <gmock/gmock.h>

#include <map>

#include "samples.h"
#include "toolrun.h"

namespace edicheck {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// A rule record from the fields that it fills.
std::string rule(const std::map<std::size_t, std::string>& fields) {
    std::string record;
    for (std::size_t i = 0; i < 33; ++i)
        record += (i == 0 ? "" : "|") + (fields.count(i) == 0 ? "" : fields.at(i));
    return record + "$\n";
}

// Rule 40: an element of a segment must not have this value.
std::string forbidden(const std::string& segment, const std::string& element, const std::string& value) {
    return rule({{0, "40"},
                 {5, segment},
                 {6, element},
                 {8, value},
                 {15, segment},
                 {16, element},
                 {25, "L"},
                 {26, "F1"},
                 {29, value + " is forbidden"}});
}

// Rule 11: a BEG needs a REF with this qualifier.
std::string reference(const std::string& qualifier) {
    return rule({{0, "11"},
                 {4, ""},
                 {5, "BEG"},
                 {6, "2"},
                 {15, "REF"},
                 {16, "1"},
                 {18, qualifier},
                 {25, "L"},
                 {26, "R1"},
                 {29, "no REF " + qualifier}});
}

// Rule 70: takes an element out of each segment.
std::string taken(const std::string& loop, const std::string& segment, const std::string& element) {
    return rule({{0, "70"},
                 {4, loop},
                 {5, segment},
                 {6, element},
                 {26, "T1"},
                 {27, "850"},
                 {28, "SEG"},
                 {29, "taken"},
                 {30, "V"},
                 {32, "TABLE"}});
}

class Rules : public ToolTest {
protected:
    ToolResult checkRules(const std::string& rules, const std::string& message, std::vector<std::string> options = {},
                          const std::string& grammar = kOrderGrammar) const {
        options.insert(options.end(), {"--rules", file("rules", rules)});
        return check(grammar, message, options);
    }
};

TEST_F(Rules, thatFindNothingLeaveAMessageClean) {
    const auto result = checkRules(forbidden("BEG", "2", "NE") + reference("CO"), x12(kOrder));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, path("message") +
                              ": transaction 850 0001 (line 3, 7 segments): no findings\n"
                              "\n1 file, 1 transaction, 0 findings\n");
}

TEST_F(Rules, showAPairAsOneFindingWithItsContext) {
    const auto result = checkRules(forbidden("BEG", "2", "SA") + reference("DP"), x12(kOrder));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, path("message") +
                              ": transaction 850 0001 (line 3, 7 segments): 2 findings\n"
                              "  segment 2 (line 4): BEG*00*SA*4711\n"
                              "    rule F1: SA is forbidden (BEG element 2: \"SA\")\n"
                              "      context: segment 2 (line 4): BEG*00*SA*4711 (BEG element 2: \"SA\")\n"
                              "    rule R1: no REF DP (BEG element 2)\n"
                              "      context: no segment (REF element 1)\n"
                              "\n1 file, 1 transaction, 2 findings\n");
}

TEST_F(Rules, areReportedBehindTheStructure) {
    const auto result = checkRules(forbidden("BEG", "2", "SA"), x12("ST*850*1~\nBEG*00*SA~\nSE*3*1~\n"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("2 findings\n"
                                      "  segment 3 (line 5): SE*3*1\n"
                                      "    code 3: mandatory N1 (a segment, or the first one of a loop) is missing in "
                                      "front of here\n"
                                      "  segment 2 (line 4): BEG*00*SA\n"
                                      "    rule F1: SA is forbidden"));
}

const std::string kLevels =
    "2M|1|1|ST$\n"
    "O|0|0|UnorderedGroup 2000$\n"
    "  O|0|0|Loop 2000A$  M|1|1|HL|20$  O|0|1|NM1$  O|0|0|EndLoop$\n"
    "  O|0|0|Loop 2000B$  M|1|1|HL|22$  O|0|0|EndLoop$\n"
    "O|0|0|EndUnorderedGroup$\n"
    "M|1|1|SE$\n";

// HL 99 is stepped over, so that HL 22, the fourth record, is the third located segment.
TEST_F(Rules, speakOfLocatedSegmentsAndAreShownAtTheRecords) {
    const std::string message = x12("ST*837*1~\nHL*1**20*1~\nHL*2*1*99*0~\nHL*3*1*22*0~\nSE*5*1~\n");
    const auto words = checkRules(forbidden("HL", "3", "22"), message, {}, kLevels);
    EXPECT_EQ(words.exitCode, 1);
    EXPECT_THAT(words.out, HasSubstr("  segment 4 (line 6): HL*3*1*22*0\n    rule F1: 22 is forbidden"));
    EXPECT_THAT(checkRules(forbidden("HL", "3", "22"), message, {"--format", "report"}, kLevels).out,
                HasSubstr("\n000000000300300HL      F1"));
}

// The second NM1 was taken back from loop 1000 and given to loop 2000: PER, the fifth record, is the sixth line.
TEST_F(Rules, areShownAtTheRightRecordBehindOneThatIsLocatedTwice) {
    const std::string grammar =
        "2M|1|1|ST$"
        "O|0|1|Loop 1000$M|1|1|NM1$M|0|1|REF$O|0|0|EndLoop$"
        "O|0|1|Loop 2000$M|1|1|NM1$O|0|1|PER$O|0|0|EndLoop$"
        "M|1|1|SE$";
    const auto result =
        checkRules(forbidden("PER", "1", "7"), x12("ST*1*1~NM1*1~REF*1~NM1*1~PER*7~SE*6*1~"), {}, grammar);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 5 (line 3): PER*7\n    rule F1: 7 is forbidden"));
}

TEST_F(Rules, areShownInTheMessageAtTheirSegments) {
    const auto result = checkRules(reference("DP"), x12("ST*850*1~\nBEG*00*SA~\nN1*BY~\nSE*4*1~\n"), {"--show"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, path("message") +
                              ": transaction 850 1 (line 3, 4 segments): 1 finding\n"
                              "     1          ST*850*1\n"
                              "     2          BEG*00*SA\n"
                              "        ^ rule R1: no REF DP (BEG element 2)\n"
                              "            context: no segment (REF element 1)\n"
                              "     3  1000      N1*BY\n"
                              "     4          SE*4*1\n"
                              "\n1 file, 1 transaction, 1 finding\n");
}

TEST_F(Rules, takeValuesThatAreShownAsATable) {
    const auto result = checkRules(taken("1000", "N1", "1*2"), x12(kOrder));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, path("message") +
                              ": transaction 850 0001 (line 3, 7 segments): no findings, 4 values\n"
                              "  segment  loop  id  element  value  V1  table  code  TXN  SEG  message\n"
                              "  4        1000  N1  1        BY     V   TABLE  T1    850  SEG  taken\n"
                              "  4        1000  N1  2        BUYER  V   TABLE  T1    850  SEG  taken\n"
                              "  6        1000  N1  1        ST     V   TABLE  T1    850  SEG  taken\n"
                              "  6        1000  N1  2        STORE  V   TABLE  T1    850  SEG  taken\n"
                              "\n1 file, 1 transaction, 0 findings, 4 values\n");
}

TEST_F(Rules, takeValuesFromTheMessageThatIsShown) {
    const auto result = checkRules(taken("", "REF", "2"), x12(kOrder), {"--show"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("     7          SE*7*0001\n"
                                      "  segment  id   element  value  V1"));
}

TEST_F(Rules, takeNoValuesWhereOneFindsSomething) {
    const auto result = checkRules(taken("1000", "N1", "1") + forbidden("BEG", "2", "SA"), x12(kOrder));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("7 segments): 1 finding\n"));
    EXPECT_THAT(result.out, Not(HasSubstr("value")));
}

TEST_F(Rules, reportTheirReplyAsItStands) {
    const auto column = [](std::string text, std::size_t width) {
        text.resize(width, ' ');
        return text;
    };
    const auto line = [&](const std::string& numbers, const std::string& segment, const std::string& code,
                          const std::string& loop, const std::string& words, const std::string& text,
                          const std::string& value) {
        return numbers + column(segment, 8) + column(code, 5) + column(loop, 6) + column(words, 8) + column(text, 80) +
               column(value, 50) + "$\n";
    };
    const auto findings =
        checkRules(forbidden("BEG", "2", "SA"), x12("ST*850*1~BEG*00*SA~SE*3*1~"), {"--format", "report"});
    EXPECT_EQ(findings.exitCode, 1);
    EXPECT_EQ(findings.out, line("000000000300000", "N1", "3", "LOOP", "NONESEG", "ERROR", "Element Text") +
                                line("000000000200200", "BEG", "F1", "", "", "SA is forbidden", "SA") +
                                line("000000000200200", "BEG", "F1", "", "", "CTX", "SA"));

    const auto values = checkRules(taken("", "REF", "2"), x12(kOrder), {"--format", "report"});
    EXPECT_EQ(values.exitCode, 0);
    EXPECT_EQ(values.out, "000000000300200" + column("REF", 8) + column("T1", 5) + column("", 6) + "850 SEG " +
                              column("taken", 80) + column("1", 20) + "QualVal KeyVal  DateVal " + "V     " +
                              column("TABLE", 50) + "$\n");
}

TEST_F(Rules, runOverEachMessageByItself) {
    const std::string good = "ST*850*0001~BEG*00*NE~N1*BY~SE*4*0001~";
    const std::string bad = "ST*850*0002~BEG*00*SA~N1*BY~SE*4*0002~";
    const auto result = checkRules(forbidden("BEG", "2", "SA"), x12(bad + good + bad));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("transaction 850 0001 (line 3, 4 segments): no findings\n"));
    EXPECT_THAT(result.out, HasSubstr("\n1 file, 3 transactions, 2 findings\n"));
}

// Also where the data hold the delimiters as released characters.
TEST_F(Rules, seeTheComponentsOfAMessage) {
    const std::string grammar = "2M|1|1|UNH$M|1|1|BGM$O|0|1|FTX$O|0|5|RFF$M|1|1|UNT$\n";
    const std::string rules = rule({{0, "70"}, {5, "RFF"}, {6, "1"}, {7, "2"}, {29, "number"}});
    for (const std::string text : {"plain", "a?+b?:c"}) {
        const auto result =
            checkRules(rules, edifact("UNH+1+ORDERS'BGM+220'FTX+" + text + "'RFF+ON:4711'UNT+5+1'"), {}, grammar);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_THAT(result.out, HasSubstr("  4        RFF  1        2          4711   number\n"));
    }
}

TEST_F(Rules, runOverARawStream) {
    const auto result = checkRules(
        forbidden("BEG", "1", "00"),
        "ST 850  xxxxxxxST*850~BEG     xxxxxxxBEG*00~N1 BY   xxxxxxxN1*BY~SE 4    xxxxxxxSE*4~", {"--stream"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("  segment 2 (line 1): BEG*00\n    rule F1: 00 is forbidden"));
}

TEST_F(Rules, mayHoldCommentsAndAnyLineEnds) {
    EXPECT_EQ(checkRules("# orders\r\n\r\n" + forbidden("BEG", "2", "SA"), x12(kOrder)).exitCode, 1);
}

TEST_F(Rules, thatLookWrongAreWarnedOf) {
    const auto result = checkRules("# one\n23|L|$\n" + rule({{0, "40"}, {5, "BEGX"}, {25, "L"}}), x12(kOrder));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "edicheck: " + path("rules") +
                              ": line 2: warning: there is no rule 23; the record has no effect\n"
                              "edicheck: " +
                              path("rules") +
                              ": line 3: warning: field 5: the segment id \"BEGX\" has more than 3 characters, and no "
                              "segment bears it\n");
}

TEST_F(Rules, thatCannotBeReadFail) {
    const auto unended = checkRules("# one\n40|L|\n$\n", x12(kOrder));
    EXPECT_EQ(unended.exitCode, 2);
    EXPECT_EQ(unended.out, "");
    EXPECT_EQ(unended.err, "edicheck: " + path("rules") +
                               ": line 2: the rule that begins here is not ended by '$'; a rule stands on one line\n");
    const auto none = checkRules("# nothing\n", x12(kOrder));
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_EQ(none.err, "edicheck: " + path("rules") + ": holds no rule\n");
    const auto absent = check(kOrderGrammar, x12(kOrder), {"--rules", path("absent")});
    EXPECT_EQ(absent.exitCode, 2);
    EXPECT_THAT(absent.err, StartsWith("edicheck: " + path("absent") + ": cannot be opened: "));
}

TEST_F(Rules, needAGrammarOfKind2) {
    const auto result = checkRules(forbidden("BEG", "2", "SA"), x12(kOrder), {}, kOrderGrammarOfKind1);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("edicheck: " + path("grammar") +
                                       ": a grammar of kind 1 locates no segments, so there is nothing for rules to "
                                       "look at; that needs a grammar of kind 2"));
}

TEST_F(Rules, needALibraryThatRunsThem) {
    const auto result = runBare({"check", "--grammar", file("grammar", kOrderGrammar), "--rules",
                                 file("rules", forbidden("BEG", "2", "SA")), file("message", x12(kOrder)), "--library",
                                 FAKE_LIBRARY_BADREPORT});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr("has no export RunRules"));
}

}  // namespace
}  // namespace edicheck
