// SegmentValidator: what a leaf does with the record that it is offered.
#include <gtest/gtest.h>

#include "treewalk.h"

namespace {

/// A leaf named REF under the root, offered the records of a message one by one.
class SegmentValidatorTest : public testing::Test {
protected:
    TreeWalk walk{"2M|1|1|ST$ O|0|2|REF$", {"REF/G1", "REF", "REF", "REF", "NM1"}};
    SegmentValidator& node = walk.node<SegmentValidator>({1});

    /// Offers the node record `number` as the walk would.
    void take(int number, char const* loopContext, int kind = 2) {
        walk.data.currentSegment = number;
        SegmentData const& record = walk.data.segments[number - 1];
        int const offset = record.identifierOffsets[0];
        node.context = &walk.root;
        walk.root.matched = 0;
        node.validateStructure(&walk.data, record.segmentId, offset ? walk.root.identifierBuffer->at(offset) : nullptr,
                               loopContext, kind, walk.root.identifierBuffer);
    }
};

TEST_F(SegmentValidatorTest, leaves_everything_as_it_is_for_another_id) {
    walk.root.currentChild = 7;
    take(5, nullptr);
    EXPECT_EQ(node.repeatCount, 0);
    EXPECT_EQ(walk.root.matched, 0);
    EXPECT_EQ(walk.root.advanced, 0);
    EXPECT_EQ(walk.root.currentChild, 7);
    EXPECT_EQ(walk.lines(), Texts{});
    EXPECT_EQ(walk.findings(), Texts{});
}

TEST_F(SegmentValidatorTest, compares_the_whole_id_and_minds_its_case) {
    node.context = &walk.root;
    walk.data.currentSegment = 1;
    for (char const* id : {"RE", "REFX", "ref", ""})
        node.validateStructure(&walk.data, id, nullptr, nullptr, 2, walk.root.identifierBuffer);
    EXPECT_EQ(node.repeatCount, 0);
}

TEST_F(SegmentValidatorTest, counts_the_record_and_tells_its_parent) {
    walk.root.currentChild = 7;
    take(1, nullptr);
    EXPECT_EQ(node.repeatCount, 1);
    EXPECT_EQ(walk.root.matched, 1);
    EXPECT_EQ(walk.root.advanced, 1);
    EXPECT_EQ(walk.root.currentChild, node.position);
    EXPECT_EQ(walk.data.currentSegment, 1);
}

TEST_F(SegmentValidatorTest, takes_a_record_whatever_its_identifier) {
    take(1, nullptr);
    take(2, nullptr);
    EXPECT_EQ(node.repeatCount, 2);
    EXPECT_EQ(walk.lines(), (Texts{"REF/G1@", "REF@"}));
}

TEST_F(SegmentValidatorTest, lists_the_text_of_the_record_that_it_took) {
    take(2, nullptr);
    ASSERT_EQ(walk.root.segLists->count, 1);
    EXPECT_EQ(walk.root.segLists->data[0].elements.text, walk.data.segments[1].text);
    EXPECT_STREQ(walk.root.segLists->data[0].elements.text, "REF*2");
}

TEST_F(SegmentValidatorTest, lists_the_first_six_characters_of_its_loop_context) {
    take(1, nullptr);
    take(2, "2000A");
    take(3, "Loop 2000A");
    EXPECT_EQ(walk.lines(), (Texts{"REF/G1@", "REF@2000A", "REF@Loop 2"}));
}

TEST_F(SegmentValidatorTest, lists_nothing_in_kind_1) {
    take(1, nullptr, 1);
    EXPECT_EQ(node.repeatCount, 1);
    EXPECT_EQ(walk.root.matched, 1);
    EXPECT_EQ(walk.lines(), Texts{});
    EXPECT_STREQ(walk.data.segments[0].text, "REF*1");
}

TEST_F(SegmentValidatorTest, reports_each_repeat_beyond_its_limit_and_lists_it_all_the_same) {
    for (int number : {1, 2, 3, 4})
        take(number, nullptr);
    EXPECT_EQ(walk.findings(), (Texts{"3 REF 5@LOOP", "4 REF 5@LOOP"}));
    EXPECT_EQ(walk.lines(), (Texts{"REF/G1@", "REF@", "REF@", "REF@"}));
    EXPECT_EQ(walk.root.matched, 1);
}

TEST_F(SegmentValidatorTest, has_no_limit_with_a_maxRepeat_of_0) {
    node.maxRepeat = 0;
    for (int round = 0; round < 1000; ++round)
        take(2, nullptr);
    EXPECT_EQ(node.repeatCount, 1000);
    EXPECT_EQ(walk.findings(), Texts{});
}

TEST_F(SegmentValidatorTest, reports_its_limit_with_its_loop_context_from_the_sixth_character_on) {
    node.maxRepeat = 1;
    take(1, nullptr);
    take(2, "2000A");
    take(3, "Loop 2000A");
    take(4, "UnorderedGroup 2000");
    take(4, "2000AB");
    take(4, "2000");
    EXPECT_EQ(walk.findings(), (Texts{"2 REF 5@", "3 REF 5@2000A", "4 REF 5@eredGr", "4 REF 5@B", "4 REF 5@"}));
}

TEST_F(SegmentValidatorTest, reports_its_limit_in_kind_1_as_well) {
    node.maxRepeat = 1;
    take(1, nullptr, 1);
    take(2, nullptr, 1);
    EXPECT_EQ(walk.findings(), (Texts{"2 REF 5@LOOP"}));
}

TEST(SegmentValidator, is_offered_a_note_like_any_other_segment_without_skipNotes) {
    TreeWalk walk("2M|1|1|ST$ O|0|1|NTE$ M|1|1|SE$", {"ST", "NTE", "SE"});
    walk.run();
    EXPECT_EQ(walk.lines(), (Texts{"ST@", "NTE@", "SE@"}));
    EXPECT_EQ(walk.findings(), Texts{});
}

}  // namespace
