// Validator and its kin: layout, what each class answers, and the operations that all inherit.
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "layout.h"
#include "probenode.h"
#include "rules/seglists.h"
#include "treewalk.h"

namespace {

TEST(Segment, consists_of_the_record_head_limits_counters_and_context) {
    ProbeNode const node;
    Segment const& segment = node;
    EXPECT_TRUE(lieInOrder(segment.segmentId, segment.position, segment.identifierOffsets, segment.text,
                           segment.requirement, segment.maxRepeat, segment.repeatCount, segment.minRepeat,
                           segment.unidentifiedCount, segment.context));
    EXPECT_TRUE((std::is_base_of_v<SegmentData, Segment>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Segment>);
    EXPECT_FALSE(std::is_polymorphic_v<SegmentData>);
}

TEST(Segment, begins_with_zeros) {
    ProbeNode const node;
    EXPECT_STREQ(node.segmentId, "");
    EXPECT_EQ(node.position, 0);
    for (int offset : node.identifierOffsets)
        EXPECT_EQ(offset, 0);
    EXPECT_EQ(node.text, nullptr);
    EXPECT_EQ(node.maxRepeat, 0);
    EXPECT_EQ(node.repeatCount, 0);
    EXPECT_EQ(node.minRepeat, 0);
    EXPECT_EQ(node.unidentifiedCount, 0);
}

TEST(Segment, is_mandatory_with_M_and_with_nothing_else) {
    ProbeNode node;
    for (char requirement : {'O', 'm', 'C', '\0', ' '}) {
        node.requirement = requirement;
        EXPECT_FALSE(node.isMandatory());
    }
    node.requirement = 'M';
    EXPECT_TRUE(node.isMandatory());
}

TEST(Validator, is_abstract_and_the_base_of_all_nodes) {
    EXPECT_TRUE(std::is_abstract_v<Validator>);
    EXPECT_TRUE((std::is_base_of_v<Segment, Validator>));
    EXPECT_TRUE((std::is_base_of_v<Validator, SegmentValidator>));
    EXPECT_TRUE((std::is_base_of_v<Validator, Loop> && std::is_base_of_v<ValidationContext, Loop>));
    EXPECT_TRUE((std::is_base_of_v<Validator, choiceLoop> && std::is_base_of_v<ValidationContext, choiceLoop>));
    EXPECT_TRUE((std::is_base_of_v<Validator, EDI_Structure> && std::is_base_of_v<ValidationContext, EDI_Structure>));
}

TEST(Validator, adds_no_member_to_its_base_nor_does_SegmentValidator) {
    EXPECT_EQ(sizeof(Validator), sizeof(Segment));
    EXPECT_EQ(sizeof(SegmentValidator), sizeof(Segment));
}

#ifdef EDIEXIT_KNOWS_VIRTUAL_SLOTS
TEST(Validator, has_its_operations_in_order_behind_the_destructor) {
    EXPECT_EQ(virtualSlot(&Validator::validateStructure), 2);
    EXPECT_EQ(virtualSlot(&Validator::validateLoop), 3);
    EXPECT_EQ(virtualSlot(&Validator::getType), 4);
    EXPECT_EQ(virtualSlot(&Validator::getObjectName), 5);
    EXPECT_EQ(virtualSlot(&Validator::getLoopSize), 6);
    EXPECT_EQ(virtualSlot(&Validator::checkLoopId), 7);
}
#endif

TEST(Validator, offers_a_record_by_its_own_validateStructure_and_answers_0) {
    ProbeNode node;
    DataSegment data;
    IdentifierBuffer pool;
    char const segment[] = "HL";
    char const identifier[] = "20";
    char const loopContext[] = "2000A";
    EXPECT_EQ(node.validateLoop(&data, segment, identifier, loopContext, 2, &pool), 0);
    ASSERT_EQ(node.calls.size(), 1U);
    EXPECT_EQ(node.calls[0].data, &data);
    EXPECT_EQ(node.calls[0].segment, segment);
    EXPECT_EQ(node.calls[0].identifier, identifier);
    EXPECT_EQ(node.calls[0].loopContext, loopContext);
    EXPECT_EQ(node.calls[0].kind, 2);
    EXPECT_EQ(node.calls[0].identifiers, &pool);
}

TEST(Validator, answers_1_its_own_name_1_and_0) {
    TreeWalk walk("2M|1|1|ST$", {});
    ProbeNode node;
    std::strcpy(node.segmentId, "REF");
    EXPECT_EQ(node.getType(), 1);
    EXPECT_STREQ(node.getObjectName(), "REF");
    EXPECT_EQ(node.getLoopSize(), 1);
    EXPECT_EQ(node.checkLoopId(), 0);
}

// A root with a segment; a loop of two children; a group of three that begins with a loop; a loop and a group that
// begin with containers; and containers without children.
constexpr char everyClass[] =
    "2M|1|1|ST$"
    "O|0|0|Loop 1000A$ M|1|1|NM1$ O|0|0|REF$ M|0|0|EndLoop$"
    "O|0|0|UnorderedGroup 2000$"
    "  O|0|0|Loop 2100$ M|1|1|HL$ M|0|0|EndLoop$ O|0|0|DTP$ O|0|0|REF$"
    "M|0|0|EndUnorderedGroup$"
    "O|0|0|Loop 3000$ O|0|0|Loop 3100$ M|1|1|CLM$ M|0|0|EndLoop$ M|0|0|EndLoop$"
    "O|0|0|UnorderedGroup 4000$ O|0|0|UnorderedGroup 4100$ O|0|0|PER$ M|0|0|EndUnorderedGroup$ M|0|0|EndUnorderedGroup$"
    "O|0|0|Loop 5000$ O|0|0|UnorderedGroup 5100$ O|0|0|SBR$ M|0|0|EndUnorderedGroup$ M|0|0|EndLoop$"
    "O|0|0|Loop 6000$ M|0|0|EndLoop$"
    "O|0|0|UnorderedGroup 7000$ M|0|0|EndUnorderedGroup$"
    "O|0|0|UnorderedGroup 8000$ O|0|0|Loop 8100$ M|0|0|EndLoop$ M|0|0|EndUnorderedGroup$";

struct Answers {
    std::vector<int> path;
    int type;
    char const* objectName;
    int loopSize;
};

TEST(Validator, answers_by_its_class) {
    TreeWalk walk(everyClass, {});
    Answers const rows[] = {
        {{}, 1, "ST", 1},                    // the root: by its first child
        {{0}, 3, "ST", 1},                   // a segment
        {{1}, 1, "NM1", 2},                  // a loop: the name of its first child, and how many it has
        {{1, 0}, 3, "NM1", 1},               // an initiator is a segment as others are
        {{2}, 2, "HL", 1},                   // a group asks its first child, whose first child answers
        {{2, 0}, 1, "HL", 1},                //
        {{3}, 1, "Loop 3100", 1},            // a loop does not ask: the name of its first child as it was given
        {{4}, 2, "PER", 1},                  // a group in a group
        {{4, 0}, 2, "PER", 1},               //
        {{5}, 1, "UnorderedGroup 5100", 1},  // a group at the head of a loop
        {{6}, 1, "", 0},                     // no children: no name
        {{7}, 2, "", 1},                     //
        {{8}, 2, "", 1},                     //
    };
    for (Answers const& row : rows) {
        Validator& node = row.path.empty() ? walk.root : walk.node(row.path);
        EXPECT_EQ(node.getType(), row.type) << node.segmentId;
        EXPECT_STREQ(node.getObjectName(), row.objectName) << node.segmentId;
        EXPECT_EQ(node.getLoopSize(), row.loopSize) << node.segmentId;
        EXPECT_EQ(node.checkLoopId(), 0) << node.segmentId;
    }
}

TEST(Validator, of_a_loop_alone_tells_of_a_missing_loop_id) {
    TreeWalk walk(everyClass, {});
    walk.node<Loop>({1}).loopIdMissing = 1;
    walk.node<choiceLoop>({2}).loopIdMissing = 1;
    walk.root.loopIdMissing = 1;
    EXPECT_EQ(walk.node({1}).checkLoopId(), 1);
    EXPECT_EQ(walk.node({2}).checkLoopId(), 0);
    EXPECT_EQ(walk.root.checkLoopId(), 0);
}

TEST(Validator, of_a_root_without_children_has_no_name) {
    TreeWalk walk("2", {});
    EXPECT_STREQ(walk.root.getObjectName(), "");
    EXPECT_EQ(walk.root.getLoopSize(), 1);
}

TEST(Validator, finds_the_name_of_groups_nested_100000_deep) {
    std::string grammar = "2";
    for (int depth = 0; depth < 100'000; ++depth)
        grammar += "M|1|1|UnorderedGroup$";
    TreeWalk walk(grammar + "M|1|1|NM1$", {});
    EXPECT_STREQ(walk.root.getObjectName(), "NM1");
}

}  // namespace
