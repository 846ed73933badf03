// Operations of Rule that no numbered rule calls, and what a rule object is before a record has been read into it.
#include "rules/rule.h"

#include <gtest/gtest.h>

namespace {

class PlainRule : public Rule {
public:
    int ValidateRule() override { return 1; }
};

class RuleOperations : public testing::Test {
protected:
    RuleOperations() {
        lines.subElementDelimiter = ':';
        lines.add("ST", nullptr, nullptr, nullptr);
        lines.add("CLM", nullptr, "2300", nullptr);
        lines.add("HI", nullptr, "2300", nullptr);
        rule.segLists = &lines;
        rule.leftSide.setIds("2300", nullptr);
    }

    int beginningOfLoopAt(int line) {
        rule.leftSide.lineIndex = line;
        return rule.FindBeginingOfLoop(rule.leftSide);
    }

    SegLists lines;
    PlainRule rule;
};

TEST_F(RuleOperations, FindBeginingOfLoopAnswersTheLineBeforeThePositionIfItLiesOutsideTheLoop) {
    EXPECT_EQ(beginningOfLoopAt(1), 0);
}

TEST_F(RuleOperations, FindBeginingOfLoopGivesUpWhereTheLineBeforeThePositionLiesInTheLoop) {
    EXPECT_EQ(beginningOfLoopAt(2), noLine);
}

TEST_F(RuleOperations, FindBeginingOfLoopHasNothingBeforeTheFirstLine) {
    EXPECT_EQ(beginningOfLoopAt(0), -1);
    EXPECT_EQ(beginningOfLoopAt(-1), -2);
}

TEST_F(RuleOperations, FindBeginingOfLoopGivesUpBehindALineInTheLoopThatBeginsTheList) {
    rule.leftSide.setIds("", nullptr);  // the loop of ST
    EXPECT_EQ(beginningOfLoopAt(1), noLine);
}

TEST_F(RuleOperations, ASearchForNothingFindsNothingAndForgetsThePosition) {
    rule.rightSide.lineIndex = 1;
    EXPECT_EQ(rule.GetNextLineForSide(rule.rightSide, -1, -1, 0), noLine);
    EXPECT_EQ(rule.rightSide.lineIndex, noLine);
}

TEST_F(RuleOperations, GetSubElementLeavesTheElementWhole) {
    char element[] = "HC:99213:TC";
    EXPECT_STREQ(rule.GetSubElement(element, 0), "HC");
    EXPECT_STREQ(rule.GetSubElement(element, 2), "TC");
    EXPECT_EQ(rule.GetSubElement(element, 3), nullptr);
    EXPECT_STREQ(element, "HC:99213:TC");
}

TEST_F(RuleOperations, ARuleWithoutAnOuterSideHasNoScopes) {
    int begin = 1;
    int end = 2;
    rule.GetNextOuterLoopScope(&begin, &end);
    EXPECT_EQ(begin, noLine);
    EXPECT_EQ(end, noLine);
    begin = 1;
    rule.GetNextInnerLoopScope(&begin, &end, 0, 2);
    EXPECT_EQ(begin, noLine);
    EXPECT_EQ(end, noLine);
}

// The texts that cut scopes are null only in a record that ends in front of them, and so in front of its sides.
TEST_F(RuleOperations, ALoopIsOneScopeWhereNoSegmentCutsIt) {
    rule.outerSide = leftIsOuter;
    int begin = noLine;
    int end = noLine;
    rule.GetNextOuterLoopScope(&begin, &end);
    EXPECT_EQ(begin, 1);
    EXPECT_EQ(end, noLine);
}

TEST_F(RuleOperations, ASegmentCutsALoopIntoScopes) {
    char segment[] = "HI";
    rule.outerSide = leftIsOuter;
    rule.scopeSegmentId = segment;
    int begin = noLine;
    int end = noLine;
    rule.GetNextOuterLoopScope(&begin, &end);
    EXPECT_EQ(begin, 1);
    EXPECT_EQ(end, 1);
}

TEST_F(RuleOperations, AnInnerLoopIsOneScopeWhereNoSegmentCutsIt) {
    rule.outerSide = leftIsOuter;
    rule.rightSide.setIds("2300", nullptr);
    int begin = noLine;
    int end = noLine;
    rule.GetNextInnerLoopScope(&begin, &end, 0, 2);
    EXPECT_EQ(begin, 1);
    EXPECT_EQ(end, 2);
}

TEST_F(RuleOperations, ASegmentCutsAnInnerLoopIntoScopes) {
    char segment[] = "HI";
    rule.outerSide = leftIsOuter;
    rule.rightSide.setIds("2300", nullptr);
    rule.ruleArgument3 = segment;
    int begin = noLine;
    int end = noLine;
    rule.GetNextInnerLoopScope(&begin, &end, 0, 2);
    EXPECT_EQ(begin, 1);
    EXPECT_EQ(end, 1);
}

}  // namespace
