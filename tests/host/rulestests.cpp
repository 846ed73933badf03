// Rules files, the values that rules take out of messages, and the wording of what rules find.
#include "rules.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "failure.h"
#include "report.h"
#include "table.h"

namespace edicheck {
namespace {

using Lines = std::vector<std::string>;

// The warnings of a file as "line: text".
Lines warningsOf(const std::string& text) {
    Lines lines;
    const RuleFile rules(text);
    for (const Note& warning : rules.warnings())
        lines.push_back(std::to_string(warning.line) + ": " + warning.text);
    return lines;
}

// A record of rule 40, in order but for what is put into one of its fields.
std::string recordWith(std::size_t field, const std::string& text) {
    std::vector<std::string> fields(30);
    fields[0] = "40";
    fields[25] = "L";
    fields[field] = text;
    std::string record;
    for (const std::string& each : fields)
        record += each + "|";
    return record + "$";
}

TEST(RuleFiles, holdARecordALineOrSeveral) {
    EXPECT_EQ(RuleFile("40|L|$\n  3|R|$ 70|S|||$\t\n\n80|L|$").text(), "40|L|$3|R|$70|S|||$80|L|$");
}

TEST(RuleFiles, mayHaveCommentsAndAnyLineEnds) {
    EXPECT_EQ(RuleFile("\xEF\xBB\xBF# one$\r\n40|L|a # is text|$\r\n  # two\r\n3|R|$\r\n").text(),
              "40|L|a # is text|$3|R|$");
}

TEST(RuleFiles, areRefusedWhereARecordIsNotEndedOnItsLine) {
    const std::string reason = ": the rule that begins here is not ended by '$'; a rule stands on one line";
    for (const auto& [text, line] : std::vector<std::pair<std::string, std::string>>{
             {"40|L", "1"}, {"# comment\n40|L|$\n3|R|\n|$\n", "3"}, {"40|L|$ 3|R|\n", "1"}}) {
        try {
            RuleFile rules(text);
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.what(), "line " + line + reason) << text;
        }
    }
}

TEST(RuleFiles, areRefusedWithoutARecord) {
    EXPECT_THROW(RuleFile("# nothing\n\n"), Failure);
}

TEST(RuleWarnings, stayAwayFromRecordsInOrder) {
    EXPECT_EQ(warningsOf(recordWith(29, "message")), Lines{});
    EXPECT_EQ(warningsOf(recordWith(25, "Right")), Lines{});
    EXPECT_EQ(warningsOf(recordWith(4, "2010AA")), Lines{});
    EXPECT_EQ(warningsOf(recordWith(5, "SV1")), Lines{});
}

TEST(RuleWarnings, nameNumbersThatAreNoRule) {
    const std::string rest = "||||||||||||||||||||||||||L$";
    for (const char* number : {"0", "23", "43", "47", "54", "57", "62", "69", "72", "79", "81", "-1", "abc", ""}) {
        const std::string shown = std::string(number) == "abc" || *number == '\0' ? "0" : number;
        EXPECT_EQ(warningsOf("\n" + (number + rest)),
                  (Lines{"2: warning: there is no rule " + shown + "; the record has no effect"}));
    }
    for (const char* number : {"1", "22", "24", "42", "48", "53", "58", "61", "70", "71", "80"})
        EXPECT_EQ(warningsOf(number + rest.substr(1)), Lines{}) << number;
}

TEST(RuleWarnings, nameIdsThatNoSegmentBears) {
    EXPECT_EQ(
        warningsOf(recordWith(4, "2010AAA")),
        (Lines{"1: warning: field 4: the loop id \"2010AAA\" has more than 6 characters, and no segment bears it"}));
    EXPECT_EQ(
        warningsOf(recordWith(20, "SVC1")),
        (Lines{"1: warning: field 20: the segment id \"SVC1\" has more than 3 characters, and no segment bears it"}));
    for (const std::size_t field : {4U, 9U, 14U, 19U, 24U})
        EXPECT_EQ(warningsOf(recordWith(field, "1234567")).size(), 1u) << field;
    for (const std::size_t field : {5U, 10U, 15U, 20U})
        EXPECT_EQ(warningsOf(recordWith(field, "1234")).size(), 1u) << field;
}

TEST(RuleWarnings, nameAnOrderWithWhichNothingIsReported) {
    const std::string reason = "\" is neither L nor R, so that no finding of this rule is reported";
    EXPECT_EQ(warningsOf(recordWith(25, "l")), (Lines{"1: warning: field 25: the order \"l" + reason}));
    EXPECT_EQ(warningsOf("40|L|$"), (Lines{"1: warning: field 25: the order \"" + reason}));
    for (const char* number : {"32", "36", "58", "59", "70", "71", "80"})  // find nothing, whatever the order is
        EXPECT_EQ(warningsOf(std::string(number) + "|L|$"), Lines{}) << number;
}

TEST(RuleWarnings, nameFieldsThatNobodyReads) {
    EXPECT_EQ(warningsOf("40" + std::string(25, '|') + "L" + std::string(7, '|') + "$"), Lines{});
    EXPECT_EQ(warningsOf("40" + std::string(25, '|') + "L" + std::string(8, '|') + "$"),
              (Lines{"1: warning: the record has 34 fields, and those behind the 33rd are not read"}));
}

std::string column(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// A line of a value, its numbers given as printed.
std::string contentLine(const std::string& number = "0000000034", const std::string& positions = "00102",
                        const std::string& value = "99213") {
    return number + positions + column("SV1", 8) + column("PROC", 5) + column("2400", 6) + column("837", 4) +
           column("SEG", 4) + column("procedure", 80) + column(value, 20) + column("HC", 8) + column("125", 8) +
           column("20240405", 8) + column("P", 2) + column("Q", 4) + column("HCPCS", 50) + "$";
}

TEST(ContentCutter, readsTheColumnsOfALine) {
    const std::string text = contentLine();
    ASSERT_EQ(text.size(), 223u);
    const auto contents = cutContents(text);
    ASSERT_EQ(contents.size(), 1u);
    const Content& content = contents[0];
    EXPECT_EQ(content.line, text);
    EXPECT_EQ(content.number, 34);
    EXPECT_EQ(content.elementPosition, 1);
    EXPECT_EQ(content.subElementPosition, 2);
    EXPECT_EQ(
        (Lines{content.segmentId, content.code, content.loopId, content.transactionText, content.segmentText,
               content.message, content.value, content.qualifier, content.key, content.date, content.v1, content.v2,
               content.codeTable}),
        (Lines{"SV1", "PROC", "2400", "837", "SEG", "procedure", "99213", "HC", "125", "20240405", "P", "Q", "HCPCS"}));
}

TEST(ContentCutter, readsNumbersThatAreWiderThanTheirColumn) {
    const auto contents = cutContents(contentLine("0000000001", "123405") + contentLine("0000000002", "-00501") +
                                      contentLine("0000000003", "00102", "a$b"));
    ASSERT_EQ(contents.size(), 3u);
    EXPECT_EQ(contents[0].elementPosition, 1234);
    EXPECT_EQ(contents[0].subElementPosition, 5);
    EXPECT_EQ(contents[1].elementPosition, -5);
    EXPECT_EQ(contents[1].value, "99213");
    EXPECT_EQ(contents[2].value, "a$b");
}

TEST(ContentCutter, refusesWhatIsNotMadeOfValues) {
    const std::string good = contentLine();
    for (const std::string& text :
         {std::string("nonsense"), good + "$", good.substr(0, 222) + "!", contentLine("00000000x4")}) {
        EXPECT_THROW(cutContents(text), Failure) << text;
    }
    for (std::size_t cut = 1; cut < good.size(); ++cut)
        EXPECT_THROW(cutContents(good.substr(0, cut)), Failure) << cut;
}

// A line of a rule's finding.
std::string findingLine(const std::string& number, const std::string& positions, const std::string& id,
                        const std::string& loop, const std::string& text, const std::string& value) {
    return number + positions + column(id, 8) + column("C010", 5) + column(loop, 6) + column("837", 4) +
           column("CLM", 4) + column(text, 80) + column(value, 50) + "$";
}

TEST(ContentCutter, tellsValuesFromFindings) {
    EXPECT_TRUE(holdsContents(contentLine()));
    EXPECT_TRUE(holdsContents(contentLine("0000000001", "123405")));
    EXPECT_FALSE(holdsContents(findingLine("0000000001", "00000", "CLM", "2300", "wrong", "1")));
    // As many bytes as values of the same number would have, and all of them findings.
    std::string findings;
    for (int i = 0; i < 223; ++i)
        findings += findingLine("0000000001", "00000", "CLM", "2300", "wrong", "1");
    ASSERT_EQ(findings.size() % 223, 0u);
    EXPECT_FALSE(holdsContents(findings));
    EXPECT_FALSE(holdsContents(""));
    EXPECT_FALSE(holdsContents("nonsense"));
}

const std::vector<LocatedRecord> kLocated = {{1, ""}, {2, "2300"}, {4, "2400"}};  // record 3 was not located

// Each explanation as "record: words", with "<- record: words" of its context.
Lines explained(const std::string& reply) {
    Lines lines;
    for (const Explanation& explanation : explainRules(cutReport(reply), kLocated)) {
        EXPECT_TRUE(explanation.ofRule);
        std::string line = std::to_string(explanation.record) + ": " + explanation.codes + ": " + explanation.words;
        if (explanation.context)
            line += " <- " + std::to_string(explanation.context->record) + ":" + explanation.context->words;
        lines.push_back(line);
    }
    return lines;
}

TEST(RuleWords, makeOneOfAPair) {
    EXPECT_EQ(explained(findingLine("0000000003", "00201", "SV1", "2400", "too much", "7") +
                        findingLine("0000000002", "00500", "CLM", "", "CTX", "")),
              (Lines{"4: C010: too much (SV1 element 2 component 01, loop 2400: \"7\") <- 2: (CLM element 5)"}));
}

TEST(RuleWords, leaveOutWhatIsNotThere) {
    EXPECT_EQ(explained(findingLine("0000000001", "00000", "", "", "", "") +
                        findingLine("0000000000", "00000", "", "", "CTX", "")),
              (Lines{"1: C010:  <- 0:"}));
}

TEST(RuleWords, standInTheOrderOfTheSegmentsWithWhatHasNoPlaceLast) {
    const auto pair = [](const std::string& number, const std::string& text) {
        return findingLine(number, "00000", "", "", text, "") + findingLine("0000000001", "00000", "", "", "CTX", "");
    };
    EXPECT_EQ(
        explained(pair("0000000000", "a") + pair("0000000003", "b") + pair("0000000004", "c") +
                  pair("0000000002", "d") + pair("0000000003", "e")),
        (Lines{"2: C010: d <- 1:", "4: C010: b <- 1:", "4: C010: e <- 1:", "0: C010: a <- 1:", "0: C010: c <- 1:"}));
}

TEST(RuleWords, keepAFindingWithoutContext) {
    EXPECT_EQ(explained(findingLine("0000000001", "00000", "", "", "one", "") +
                        findingLine("0000000002", "00000", "", "", "two", "")),
              (Lines{"1: C010: one", "2: C010: two"}));
}

std::string printed(const Table& table) {
    std::ostringstream out;
    table.print(out, "> ");
    return out.str();
}

TEST(Tables, alignColumnsAndLeaveOutEmptyOnes) {
    Table table({"id", "empty", "value", "last"});
    table.add({"SV1", "", "1", "x"});
    table.add({"N1", "", "12345678", ""});
    EXPECT_EQ(printed(table),
              "> id   value     last\n"
              "> SV1  1         x\n"
              "> N1   12345678\n");
}

TEST(Tables, countCharactersAndShowControlCharacters) {
    Table table({"a", "b"});
    table.add({"\xC3\xA4\xC3\xB6", "1"});
    table.add({"x\ny", "2"});
    EXPECT_EQ(printed(table),
              "> a       b\n"
              "> \xC3\xA4\xC3\xB6      1\n"
              "> x\\x0Ay  2\n");
}

}  // namespace
}  // namespace edicheck
