// The reader of grammar files.
#include "grammar.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace edicheck {
namespace {

using Names = std::vector<std::string>;

TEST(GrammarFile, dropsComments) {
    const Grammar grammar("# an order\n  # of two segments\n2M|1|1|ST$\n# trailer\nM|1|1|SE$\n");
    EXPECT_EQ(grammar.text(), "2M|1|1|ST$\n\nM|1|1|SE$\n");
    EXPECT_EQ(grammar.kind(), 2);
    EXPECT_EQ(grammar.rootNames(), (Names{"ST", "SE"}));
}

TEST(GrammarFile, keepsNumberSignsWithinALine) {
    EXPECT_EQ(Grammar("2M|1|1|ST$ # no comment\n").text(), "2M|1|1|ST$ # no comment\n");
}

TEST(GrammarFile, tellsItsKindByTheFirstCharacter) {
    EXPECT_EQ(Grammar("1M|1|1|ST$").kind(), 1);
    EXPECT_EQ(Grammar("\n\n1M|1|1|ST$").kind(), 1);
    EXPECT_EQ(Grammar("\xEF\xBB\xBF# comment\n1M|1|1|ST$").kind(), 1);
    EXPECT_EQ(Grammar("2M|1|1|ST$").kind(), 2);
    EXPECT_EQ(Grammar("XM|1|1|ST$").kind(), 2);
    EXPECT_EQ(Grammar("# nothing").kind(), 2);
}

TEST(GrammarFile, findsTheRecordThatLacksAField) {
    const Grammar grammar("# head\n2M|1|1|ST$\n\nM|1|1|BEG$ O|1|1|REF$\nM||1|N1$\n$\n");
    ASSERT_TRUE(grammar.badRecord());
    EXPECT_EQ(grammar.badRecord()->line, 5u);
    EXPECT_EQ(grammar.badRecord()->number, 4u);
    EXPECT_EQ(grammar.badRecord()->text, "M||1|N1");
    EXPECT_EQ(grammar.badRecord()->fields, 3u);
}

TEST(GrammarFile, findsARecordWithoutAnyField) {
    const Grammar grammar("2M|1|1|ST$$");
    ASSERT_TRUE(grammar.badRecord());
    EXPECT_EQ(grammar.badRecord()->number, 2u);
    EXPECT_EQ(grammar.badRecord()->fields, 0u);
}

TEST(GrammarFile, tellsTextThatNoRecordEnds) {
    EXPECT_FALSE(Grammar("2M|1|1|ST$ \n\n").unendedLine());
    EXPECT_EQ(Grammar("2M|1|1|ST$\n\nM|1|1|SE\n").unendedLine(), 3u);
    EXPECT_EQ(Grammar("no grammar at all").unendedLine(), 1u);
}

TEST(GrammarFile, namesLoopsAndGroupsAtTheRootByTheirFirstSegment) {
    const Grammar grammar(
        "2M|1|1|ST$"
        "M|1|1|Loop 1000$M|1|1|N1|BY$O|0|1|N3$O|0|1|Loop 1100$M|1|1|PER$O|0|0|EndLoop$O|0|0|EndLoop$"
        "M|1|1|UnorderedGroup 2000$M|1|1|Loop 2000A$M|1|1|HL|20$O|0|0|EndLoop$O|0|0|EndUnorderedGroup$"
        "O|0|0|Loop 3000$O|0|0|EndLoop$"
        "M|1|1|SE$");
    EXPECT_EQ(grammar.rootNames(), (Names{"ST", "N1", "HL", "", "SE"}));
    EXPECT_FALSE(grammar.badRecord());
}

TEST(GrammarFile, knowsHowDeepLoopsLie) {
    const Grammar grammar(
        "2M|1|1|ST$"
        "O|0|0|UnorderedGroup 2000$O|0|0|Loop 2000A$M|1|1|HL$"
        "O|0|0|Loop 2010AA$M|1|1|NM1$O|0|0|EndLoop$O|0|0|EndLoop$O|0|0|EndUnorderedGroup$"
        "M|1|1|SE$");
    EXPECT_EQ(grammar.depthOfLoop(""), 0u);
    EXPECT_EQ(grammar.depthOfLoop("2000A"), 1u);
    EXPECT_EQ(grammar.depthOfLoop("2010AA"), 2u);
    EXPECT_EQ(grammar.depthOfLoop("9999"), 0u);
}

TEST(GrammarFile, knowsALoopByTheBeginningOfItsNameWhereTheInitiatorIsMissing) {
    const Grammar grammar("2M|1|1|ST$O|0|0|Loop 1000$M|1|1|N1$O|0|0|EndLoop$");
    EXPECT_EQ(grammar.depthOfLoop("Loop 1"), 1u);
}

TEST(GrammarFile, staysAtTheRootWhenMoreIsClosedThanOpened) {
    const Grammar grammar("2M|1|1|ST$O|0|0|EndLoop$O|0|0|EndLoop$M|1|1|SE$");
    EXPECT_EQ(grammar.rootNames(), (Names{"ST", "SE"}));
}

TEST(GrammarFile, bearsANestingWithoutEnd) {
    std::string text = "2";
    for (int i = 0; i < 100000; ++i)
        text += "O|0|0|UnorderedGroup 1$";
    EXPECT_EQ(Grammar(text + "O|1|1|N1$").rootNames(), (Names{"N1"}));
}

}  // namespace
}  // namespace edicheck
