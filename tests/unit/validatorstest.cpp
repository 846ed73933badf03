// Validators: the array of a node's children and its own rule of growth.
#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "grammar/validators.h"
#include "layout.h"

namespace {

TEST(Validators, consists_of_data_capacity_step_and_count) {
    Validators const children;
    EXPECT_TRUE(lieInOrder(children.data, children.capacity, children.growBy, children.count));
    EXPECT_TRUE(std::has_virtual_destructor_v<Validators>);
}

TEST(Validators, begins_with_16_places_and_a_step_of_8) {
    Validators const children;
    EXPECT_NE(children.data, nullptr);
    EXPECT_EQ(children.capacity, 16);
    EXPECT_EQ(children.growBy, 8);
    EXPECT_EQ(children.count, 0);
}

TEST(Validators, grows_through_24_36_54_and_81_places) {
    SegmentValidator node;
    Validators children;
    auto const fillTo = [&](int count) {
        while (children.count < count)
            children.add(&node);
    };
    struct Growth {
        int child;  // the number of the child that brings it about
        int capacity;
        int growBy;
    };
    for (Growth growth : {Growth{17, 24, 12}, Growth{25, 36, 18}, Growth{37, 54, 27}, Growth{55, 81, 41}}) {
        int const capacityBefore = children.capacity;
        fillTo(growth.child - 1);
        EXPECT_EQ(children.capacity, capacityBefore) << "before child " << growth.child;
        fillTo(growth.child);
        EXPECT_EQ(children.capacity, growth.capacity) << "child " << growth.child;
        EXPECT_EQ(children.growBy, growth.growBy) << "child " << growth.child;
    }
}

TEST(Validators, keeps_its_children_in_order_through_growth) {
    std::vector<SegmentValidator> nodes(100);
    Validators children;
    for (SegmentValidator& node : nodes)
        children.add(&node);
    ASSERT_EQ(children.count, 100);
    for (std::size_t index = 0; index < nodes.size(); ++index)
        EXPECT_EQ(children.data[index], &nodes[index]);
}

}  // namespace
