// ValidationContext: its layout, and what it does with its children at its end.
#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>

#include "layout.h"
#include "probenode.h"
#include "treewalk.h"

namespace {

TEST(ValidationContext, consists_of_walk_state_flags_children_and_lists) {
    ValidationContext const context(0, nullptr, nullptr);
    EXPECT_TRUE(lieInOrder(context.matched, context.currentChild, context.advanced, context.loopIdMissing,
                           context.flags, context.children, context.errorInfos, context.segLists));
    EXPECT_EQ(sizeof context.flags, 8U);
    EXPECT_TRUE(std::has_virtual_destructor_v<ValidationContext>);
}

TEST(ValidationContext, lies_behind_the_node_that_it_belongs_to) {
    Loop loop(0, nullptr, nullptr);
    Validator const& node = loop;
    ValidationContext const& context = loop;
    EXPECT_TRUE(lieInOrder(node.segmentId, node.context, context.matched, context.segLists));
}

TEST(ValidationContext, begins_with_the_flags_and_lists_it_is_given_and_no_children) {
    ErrorInfos errors;
    SegLists lines;
    Loop const loop(5, &errors, &lines);
    EXPECT_EQ(loop.flags, 5U);
    EXPECT_EQ(loop.errorInfos, &errors);
    EXPECT_EQ(loop.segLists, &lines);
    EXPECT_EQ(loop.children.count, 0);
    EXPECT_EQ(loop.children.capacity, 16);
}

TEST(ValidationContext, knows_its_walk_options_by_their_bits) {
    EXPECT_EQ(skipNotes, 1U);
    EXPECT_EQ(noInitiatorSearch, 2U);
    EXPECT_EQ(dropFailedPassErrors, 4U);
}

template <typename Node>
class ContextOf : public testing::Test {};
using NodesWithChildren = testing::Types<Loop, choiceLoop>;
TYPED_TEST_SUITE(ContextOf, NodesWithChildren, );  // clang wants the place of the third argument

TYPED_TEST(ContextOf, deletes_its_children_at_its_end_and_leaves_the_lists_alone) {
    Texts endings;
    ErrorInfos errors;
    SegLists lines;
    {
        TypeParam node(0, &errors, &lines);
        node.children.add(new ProbeNode(endings, "first"));
        node.children.add(nullptr);
        node.children.add(new ProbeNode(endings, "last"));
    }
    EXPECT_EQ(endings.size(), 2U);
    errors.add(1, 0, "", "", "", "", "", "", "", "");
    lines.add("ST", nullptr, nullptr, nullptr);
    EXPECT_EQ(errors.count, 1);
    EXPECT_EQ(lines.count, 1);
}

TYPED_TEST(ContextOf, deletes_each_descendant_once) {
    Texts endings;
    {
        TypeParam node(0, nullptr, nullptr);
        auto* inner = new Loop(0, nullptr, nullptr);
        auto* innermost = new choiceLoop(0, nullptr, nullptr);
        innermost->children.add(new ProbeNode(endings, "below the group"));
        inner->children.add(new ProbeNode(endings, "before the group"));
        inner->children.add(innermost);
        inner->children.add(new ProbeNode(endings, "behind the group"));
        node.children.add(new ProbeNode(endings, "before the loop"));
        node.children.add(inner);
        node.children.add(new Loop(0, nullptr, nullptr));
        node.children.add(new ProbeNode(endings, "behind the loop"));
    }
    std::sort(endings.begin(), endings.end());
    EXPECT_EQ(endings,
              (Texts{"before the group", "before the loop", "behind the group", "behind the loop", "below the group"}));
}

TYPED_TEST(ContextOf, can_be_emptied_before_its_end) {
    Texts endings;
    {
        TypeParam node(0, nullptr, nullptr);
        node.children.add(new ProbeNode(endings, "child"));
        node.deleteChildren();
        EXPECT_EQ(endings, (Texts{"child"}));
        EXPECT_EQ(node.children.data, nullptr);
        EXPECT_EQ(node.children.count, 0);
        node.deleteChildren();
    }
    EXPECT_EQ(endings, (Texts{"child"}));
}

TYPED_TEST(ContextOf, ends_a_tree_100000_deep_without_running_out_of_stack) {
    Texts endings;
    {
        TypeParam node(0, nullptr, nullptr);
        ValidationContext* open = &node;
        for (int depth = 0; depth < 50'000; ++depth) {
            auto* loop = new Loop(0, nullptr, nullptr);
            auto* group = new choiceLoop(0, nullptr, nullptr);
            loop->children.add(new SegmentValidator);
            loop->children.add(group);
            loop->children.add(new SegmentValidator);
            open->children.add(loop);
            open = group;
        }
        open->children.add(new ProbeNode(endings, "innermost"));
    }
    EXPECT_EQ(endings, (Texts{"innermost"}));
}

}  // namespace
