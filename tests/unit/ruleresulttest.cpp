// What ValidateRule answers: 1, and 0 for a rule that has found a fault and is one of those that say so. The exports
// don't show it.
#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "rules/contents.h"
#include "rules/rulereader.h"
#include "rules/rules.h"
#include "walk/errorinfos.h"

namespace {

/// A message of two iterations of loop 2000, each with one of loop 2400.
class TwoHeads {
public:
    TwoHeads() {
        lines.elementDelimiter = '*';
        add("ST", "", "ST*1");        // line 0
        add("HL", "2000", "HL*1*A");  // line 1: the first iteration
        add("NM1", "2000", "NM1*A*12");
        add("REF", "2000", "REF*A*5");
        add("LX", "2400", "LX*1*A");
        add("SV1", "2400", "SV1*A*5");
        add("HL", "2000", "HL*2*B");  // line 6: the second one
        add("NM1", "2000", "NM1*B*7");
        add("REF", "2000", "REF*B*7");
        add("LX", "2400", "LX*1*B");
        add("SV1", "2400", "SV1*B*7");
        add("SE", "", "SE*12");  // line 11
    }

    SegLists lines;

private:
    std::deque<std::string> texts;  // which don't move

    void add(char const* segmentId, char const* loopId, char const* text) {
        lines.add(segmentId, nullptr, loopId, texts.emplace_back(text).data());
    }
};

char const none[] = "||||";

/// A rule by the fields that matter here. A side is its loop, segment, elements, sub-elements and values.
struct Row {
    int number;
    char const* outer;
    char const* scope;
    char const* left;
    char const* left2;
    char const* right;
    char const* right2;
    int result;
    int faults;
};

void PrintTo(Row const& row, std::ostream* stream) {
    *stream << "rule " << row.number << ": " << row.left << " and " << row.right;
}

class RuleResult : public testing::TestWithParam<Row> {};

TEST_P(RuleResult, TellsWhetherAFaultWasFound) {
    Row const& row = GetParam();
    std::string record = std::to_string(row.number) + "|" + row.outer + "|||" + row.left + "|" + row.left2 + "|" +
                         row.right + "|" + row.right2 + "|" + row.scope + "|L|E|T|S|M|||$";
    TwoHeads message;
    ErrorInfos findings;
    Contents contents;
    Rules rules;
    readRules(record.data(), record.size(), {&message.lines, &findings, &contents}, rules);
    ASSERT_EQ(rules.count, 1);
    EXPECT_EQ(rules.data[0]->ValidateRule(), row.result);
    EXPECT_EQ(rules.data[0]->errorCount, row.faults);
    EXPECT_EQ(rules.data[0]->contentRuleNumber, row.number == 80 ? 80 : -1);
}

// The outer side L with loop 2000 gives the scopes 1 to 5 and 6 to the end; without a loop, the whole list is the scope.
Row const presence[] = {
    {2, "L", "", "2000|NM1|1||", none, "2000|REF|1||A", none, 0, 1},
    {2, "L", "", "2000|NM1|1||", none, "2000|REF|1||Z", none, 1, 0},
    {3, "L", "", "2000|NM1|1||A*B", none, "2000|DTP|1||", none, 0, 2},
    {3, "L", "", "2000|NM1|1||A*B", none, "2000|REF|1||Z", none, 0, 2},
    {3, "L", "", "2000|NM1|1||A*B", none, "2000|REF|1||A*B", none, 1, 0},
    {4, "L", "", "2000|NM1|1||A", none, "2000|REF|1||A", none, 0, 1},
    {4, "L", "", "2000|NM1|1||A", none, "2000|REF|1||", none, 0, 1},
    {4, "L", "", "2000|NM1|1||A", none, "2000|REF|1||Z", none, 1, 0},
    {5, "L", "", "2000|NM1|1||Z", none, "2400|LX|1||9", none, 0, 2},
    {5, "L", "", "2000|NM1|1||Z", none, "2400|DTP|1||", none, 0, 2},
    {5, "L", "", "2000|NM1|1||Z", none, "2400|LX|1||1", none, 1, 0},
    {6, "L", "", "2000|NM1|1||", none, "2400|LX|1||9", none, 0, 2},
    {6, "L", "", "2000|NM1|1||", none, "2400|LX|1||1", none, 1, 0},
    {6, "R", "", "2000|NM1|1||", none, "2000|REF|1||A", none, 0, 1},
    {6, "R", "", "2000|NM1|1||", none, "2000|REF|1||", none, 1, 0},
    {9, "L", "", "2000|NM1|1||A*B", none, "2400|LX|1||", "2400|DTP|1||", 0, 2},
    {9, "L", "", "2000|NM1|1||A*B", none, "2400|LX|1||9", none, 1, 2},  // another value doesn't count
    {9, "L", "", "2000|NM1|1||A*B", none, "2400|LX|1||1", none, 1, 0},
    {11, "L", "", "2000|NM1|1||A", none, "2000|DTP|1||", none, 1, 1},
    {12, "L", "", "2000|NM1|1||A", none, "2000|DTP|1||", none, 0, 1},
    {12, "L", "", "2000|NM1|1||A", none, "2000|REF|1||", none, 1, 0},
    {21, "L", "", "2000|DTP|1||", none, "2000|REF|1||", none, 0, 2},
    {21, "L", "", "2000|DTP|1||", none, "2000|DMG|1||", none, 1, 0},
    {28, "L", "", "2000|NM1|1||A", none, "2000|REF|1||A", none, 0, 1},
    {28, "L", "", "2000|NM1|1||A", none, "2000|REF|1||Z", none, 1, 0},
    {28, "R", "", "2000|NM1|1||A", none, "2000|REF|1||A", none, 1, 0},
    {29, "L", "", "2000|NM1|1||", none, "2000|DTP|1||", none, 1, 2},
    {30, "L", "", "2000|NM1|1||Z", none, "2000|REF|1||Z", "2000|REF|1||A", 1, 1},
    {51, "L", "", "2400|SV1|1||", none, none, "||||2400", 0, 2},
    {51, "L", "", "2400|SV1|1||", "2400|LX|||", none, "||||2400", 1, 0},
    {52, "L", "", none, none, "2400|LX|1||", "||||2400", 0, 4},
    {52, "L", "", "2400|SV1|1||", "2400|SV1|1||X", "2400|LX|1||", "||||2400", 0, 4},
    {52, "L", "", "2400|SV1|1||", none, "2400|LX|1||", "||||2400", 1, 0},
};
INSTANTIATE_TEST_SUITE_P(OfPresence, RuleResult, testing::ValuesIn(presence));

Row const comparison[] = {
    {1, "L", "", "2000|NM1|1||A", none, none, none, 0, 1},
    {1, "L", "", "2000|NM1|1||", none, "|REF|2||", none, 0, 2},
    {1, "L", "", "2000|NM1|1||", none, "2000|REF|1||", none, 1, 0},
    {1, "R", "", "2000|NM1|1||", none, "2000|REF|2||", none, 0, 2},
    {1, "S", "", "2000|NM1|1||A", none, none, none, 1, 0},
    {13, "L", "", "|NM1|1||", none, "|REF|1||", "|SV1|1||", 1, 1},
    {16, "L", "", "|NM1|1||A", none, "|REF|1||", "|REF|2||", 1, 2},
    {19, "L", "", "2000|NM1|1||", none, "2000|REF|1||", none, 0, 2},
    {19, "L", "", "2000|NM1|1||", none, "2000|REF|2||", none, 1, 0},
    {19, "L", "", "2000|NM1|1||A", none, none, none, 0, 0},  // a left value makes the result, and nothing is reported
    {19, "R", "", "2000|NM1|1||A", none, "2000|REF|1||", none, 1, 0},
    {24, "L", "2000", "|HL|||", none, "2400|LX|||", none, 0, 1},
    {24, "L", "2000", "|NM1|||", none, "2400|LX|||", none, 1, 0},
    {25, "L", "", "|NM1|1||A", none, "|REF|1||A", none, 1, 1},
    {26, "L", "", "|NM1|1||A", none, "|REF|1||A", "||1||", 1, 1},
    {27, "L", "", "2000|NM1|1||1", none, "2000|NM1|1||A", none, 0, 1},
    {27, "L", "", "2000|NM1|1||1", none, "2000|NM1|1||", none, 1, 0},
    {40, "L", "", "|NM1|1||A", none, none, none, 0, 1},
    {40, "L", "", "|NM1|1||Z", none, none, none, 1, 0},
    {41, "L", "", "2000|NM1|1||A", none, none, none, 0, 2},
    {41, "L", "", "2000|DTP|1||A", none, none, none, 0, 2},
    {41, "L", "", "2000|NM1|1||", none, none, none, 1, 0},
    {42, "L", "", "2000|NM1|1||", none, "2000|REF|2||", none, 0, 2},
    {42, "L", "", "2000|NM1|1||", none, "2000|REF|1||", none, 1, 0},
    {42, "R", "", "2000|NM1|1||", none, "2000|REF|2||", none, 1, 0},
    {48, "L", "2000", "|HL|1||", none, "|LX|1||", none, 0, 1},
    {48, "L", "2000", "|HL|1||", none, "|NM1|1||", none, 1, 0},
    {49, "L", "", "|LX|1||", none, none, none, 1, 1},
    {50, "L", "", "2000|NM1|1||", none, "2400|SV1|2||", none, 0, 2},
    {50, "L", "", "2000|NM1|1||", none, "2400|SV1|1||", none, 1, 0},
    {60, "L", "", "|NM1|1||A", none, "|REF|1||[0-9]{10}", none, 0, 1},
    {60, "L", "", "|NM1|1||Z", none, "|REF|1||[0-9]{10}", none, 1, 0},
    {61, "L", "", "2000|DTP|1||", "2000|NM1|1||A", "|REF|1||X", none, 0, 1},
    {61, "L", "", "2000|DTP|1||", "2000|NM1|1||Z", "|REF|1||X", none, 1, 0},
};
INSTANTIATE_TEST_SUITE_P(OfComparison, RuleResult, testing::ValuesIn(comparison));

Row const numbers[] = {
    {7, "L", "", "|LX|1||", none, none, none, 0, 1},
    {7, "L", "", "|HL|5||", none, none, none, 0, 2},  // the element is not there
    {7, "L", "", "|HL|1||", none, none, none, 1, 0},
    {8, "S", "", "|REF|2||", none, "|SV1|2||", none, 0, 1},
    {8, "S", "", "|NM1|2||", none, "|SV1|2||", none, 1, 0},
    {10, "L", "", "|LX|1||1", none, "||1||", none, 1, 1},
    {14, "S", "", "|REF|2||", none, none, "|SV1|2||", 0, 1},
    {14, "S", "", "|NM1|2||", none, none, "|SV1|2||", 1, 0},
    {15, "L", "", "|LX|1||", none, none, none, 0, 1},
    {15, "L", "", "|HL|5||", none, none, none, 0, 2},
    {15, "L", "", "|HL|1||", none, none, none, 1, 0},
    {17, "S", "", "|REF|2||", none, "|SV1|2||", none, 0, 1},
    {17, "S", "", "|NM1|2||", none, "|SV1|2||", none, 1, 0},
    {18, "S", "", "|REF|2||", none, "|SV1|2||", none, 0, 1},
    {18, "S", "", "|NM1|2||", none, "|SV1|2||", none, 1, 0},
    {20, "S", "", "|SV1|2||5", none, "|SV1|2||", none, 0, 2},
    {20, "S", "", "|SV1|2||", none, "|SV1|2||", none, 0, 0},  // without a left value the fault is not reported
    {20, "S", "", "|SE|1||12", none, "|SV1|2||", none, 1, 0},
    {22, "L", "", "|LX|1||1", none, none, none, 1, 1},
    {31, "L", "", "|REF|2||", none, "|SV1|2||", none, 0, 1},
    {31, "L", "", "|NM1|2||", none, "|SV1|2||", none, 1, 0},
    {37, "L", "2000", "2400|SV1|2||A", none, "2400|LX|1||", none, 0, 1},
    {37, "L", "2000", "2400|SV1|2||Z", none, "2400|LX|1||", none, 1, 0},
    {38, "L", "2000", "2000|REF|2||", none, "2400|LX|1||", "||||2400", 0, 2},
    {38, "L", "2000", "2000|REF|2||", none, "2400|SV1|2||", "||||2400", 1, 0},
    {39, "L", "", "2000|NM1|2||", none, "2400|SV1|2||", none, 0, 1},
    {39, "L", "", "2000|REF|2||", none, "2400|SV1|2||", none, 1, 0},
    {53, "L", "", "|REF|2||", none, "|SV1|1||B", "|SV1|2||", 0, 1},
    {53, "L", "", "|REF|2||", none, "|SV1|1||A", "|SV1|2||", 1, 0},
};
INSTANTIATE_TEST_SUITE_P(OfNumbers, RuleResult, testing::ValuesIn(numbers));

// A loop that begins on line 1 is walked to its last scope.
Row const laterScopes[] = {
    {4, "L", "", "2000|NM1|1||B", none, "2000|REF|1||B", none, 0, 1},
    {8, "L", "", "2000|HL|1||", none, "2000|REF|2||", none, 0, 2},
    {12, "L", "", "2000|NM1|1||B", none, "2000|DTP|1||", none, 0, 1},
    {14, "L", "", "2000|HL|1||", none, none, "2000|REF|2||", 0, 2},
    {17, "L", "", "2000|HL|1||", none, "2000|REF|2||", none, 0, 2},
    {18, "L", "", "2000|HL|1||", none, "2000|REF|2||", none, 0, 2},
    {30, "L", "", "2000|NM1|1||Z", none, "2000|REF|1||Z", "2000|REF|1||B", 1, 1},
};
INSTANTIATE_TEST_SUITE_P(OfLaterScopes, RuleResult, testing::ValuesIn(laterScopes));

Row const judgingNothing[] = {
    {70, "L", "", "|NM1|1||", none, none, none, 1, 0},  {71, "L", "", "|NM1|1||A", "|NM1|2||", none, none, 1, 0},
    {80, "L", "", "|NM1|1||A", none, none, none, 1, 0}, {32, "L", "", "|NM1|1||", none, none, none, 1, 0},
    {23, "L", "", "|NM1|1||", none, none, none, 1, 0},
};
INSTANTIATE_TEST_SUITE_P(OfRulesThatJudgeNothing, RuleResult, testing::ValuesIn(judgingNothing));

}  // namespace
