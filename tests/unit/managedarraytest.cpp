// ManagedArray: the growth numbers, and what becomes of elements and storage.
#include "common/managedarray.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <string>

// The tests of exhausted memory ask for more than there is: malloc then answers null, also under the address sanitizer.
extern "C" char const* __asan_default_options();
extern "C" char const* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace {

struct Item {
    int value = 7;
};

using Items = ManagedArray<Item>;

/// Whether the action throws the one text that is ever thrown.
template <typename Action>
bool failsWith99(Action action) {
    try {
        action();
    } catch (char const* text) {
        return std::string(text) == "-99";
    }
    return false;
}

TEST(ManagedArray, consists_of_data_size_and_step) {
    EXPECT_EQ(offsetof(Items, data), 0U);
    EXPECT_EQ(offsetof(Items, size), 8U);
    EXPECT_EQ(offsetof(Items, growBy), 12U);
    EXPECT_EQ(sizeof(Items), 16U);
}

TEST(ManagedArray, begins_empty_without_storage_or_step) {
    Items const items;
    EXPECT_EQ(items.data, nullptr);
    EXPECT_EQ(items.size, 0);
    EXPECT_EQ(items.growBy, 0);
}

TEST(ManagedArray, that_is_empty_has_128_elements_and_a_step_of_32_after_the_first_access) {
    Items items;
    EXPECT_EQ(items[0].value, 7);
    EXPECT_EQ(items.size, 128);
    EXPECT_EQ(items.growBy, 32);
    items[127].value = 1;
    EXPECT_EQ(items.size, 128);
    items[128].value = 2;
    EXPECT_EQ(items.size, 160);
}

TEST(ManagedArray, that_is_empty_loses_the_step_that_was_set_before_its_first_growth) {
    Items items;
    items.setSize(0, 10);
    EXPECT_EQ(items.data, nullptr);
    EXPECT_EQ(items.size, 0);
    EXPECT_EQ(items.growBy, 10);
    items[0].value = 1;
    EXPECT_EQ(items.size, 128);
    EXPECT_EQ(items.growBy, 32);
    items[128].value = 2;
    EXPECT_EQ(items.size, 160);
}

TEST(ManagedArray, opened_with_16_elements_and_a_step_of_1024_grows_to_1040) {
    Items items;
    items.setSize(16, 1024);
    EXPECT_EQ(items.size, 16);
    EXPECT_EQ(items.growBy, 1024);
    items[15].value = 1;
    EXPECT_EQ(items.size, 16);
    items[16].value = 2;
    EXPECT_EQ(items.size, 1040);
    EXPECT_EQ(items.growBy, 1024);
}

TEST(ManagedArray, that_is_live_grows_by_one_step_and_not_to_the_size_asked_for) {
    Items items;
    items.setSize(16, 4);
    items.setSize(100, 0);
    EXPECT_EQ(items.size, 20);
    EXPECT_EQ(items.growBy, 4);
    items.setSize(100, 8);
    EXPECT_EQ(items.size, 28);
    EXPECT_EQ(items.growBy, 8);
}

TEST(ManagedArray, that_is_live_grows_by_one_step_when_its_own_size_is_asked_for) {
    Items items;
    items.setSize(16, 4);
    items.setSize(16, 0);
    EXPECT_EQ(items.size, 20);
}

TEST(ManagedArray, keeps_storage_and_remaining_elements_when_it_is_made_smaller) {
    Items items;
    items.setSize(16, 4);
    for (int index = 0; index < 16; ++index)
        items[index].value = 100 + index;
    Item const* storage = items.data;
    items.setSize(5, 0);
    EXPECT_EQ(items.size, 5);
    EXPECT_EQ(items.growBy, 4);
    EXPECT_EQ(items.data, storage);
    for (int index = 0; index < 5; ++index)
        EXPECT_EQ(items[index].value, 100 + index);
}

TEST(ManagedArray, constructs_abandoned_elements_anew_when_it_grows_over_them) {
    Items items;
    items.setSize(16, 4);
    items[5].value = 105;
    items.setSize(5, 0);
    EXPECT_EQ(items[5].value, 7);
    EXPECT_EQ(items.size, 9);
}

TEST(ManagedArray, set_to_size_0_gives_its_storage_back_and_keeps_its_step) {
    Items items;
    items.setSize(16, 4);
    items.setSize(0, 0);
    EXPECT_EQ(items.data, nullptr);
    EXPECT_EQ(items.size, 0);
    EXPECT_EQ(items.growBy, 4);
    items.setSize(3, 0);
    EXPECT_EQ(items.size, 3);
    EXPECT_EQ(items[2].value, 7);
}

TEST(ManagedArray, takes_no_step_from_an_argument_that_is_not_above_0) {
    Items items;
    items.setSize(4, 6);
    items.setSize(2, -3);
    EXPECT_EQ(items.growBy, 6);
}

TEST(ManagedArray, without_a_step_grows_by_a_tenth_of_its_size_and_keeps_that_step) {
    Items items;
    items.setSize(100, 0);
    EXPECT_EQ(items.growBy, 0);
    items[100].value = 1;
    EXPECT_EQ(items.size, 110);
    EXPECT_EQ(items.growBy, 10);
    items[110].value = 1;
    EXPECT_EQ(items.size, 120);
    EXPECT_EQ(items.growBy, 10);
}

TEST(ManagedArray, cuts_off_the_fraction_of_a_step) {
    Items items;
    items.setSize(19, 0);
    items[19].value = 1;
    EXPECT_EQ(items.growBy, 1);
    EXPECT_EQ(items.size, 20);
}

TEST(ManagedArray, of_1_to_9_elements_without_a_step_does_not_grow_and_refuses_what_lies_outside) {
    for (int size = 1; size <= 9; ++size) {
        Items items;
        items.setSize(size, 0);
        EXPECT_TRUE(failsWith99([&] { items[size].value = 1; }));
        EXPECT_EQ(items.size, size);
        EXPECT_EQ(items.growBy, 0);
    }
}

TEST(ManagedArray, takes_one_step_for_an_index_that_needs_more_and_refuses_the_rest) {
    Items items;
    EXPECT_TRUE(failsWith99([&] { items[500].value = 1; }));
    EXPECT_EQ(items.size, 128);
    EXPECT_TRUE(failsWith99([&] { items[500].value = 1; }));
    EXPECT_EQ(items.size, 160);
}

TEST(ManagedArray, has_no_element_at_a_negative_index) {
    Items items;
    items.setSize(4, 4);
    EXPECT_TRUE(failsWith99([&] { items[-1].value = 1; }));
    EXPECT_EQ(items.size, 4);
}

TEST(ManagedArray, grows_to_a_given_size_without_touching_a_step_that_is_set) {
    Items items;
    items.setSize(4, 6);
    items.grow(50);
    EXPECT_EQ(items.size, 50);
    EXPECT_EQ(items.growBy, 6);
    EXPECT_EQ(items[49].value, 7);
    EXPECT_EQ(items.size, 50);
}

TEST(ManagedArray, that_is_empty_grows_to_a_given_size_and_has_no_step_then) {
    Items items;
    items.setSize(0, 10);
    items.grow(5);
    EXPECT_EQ(items.size, 5);
    EXPECT_EQ(items.growBy, 0);
}

TEST(ManagedArray, grows_by_one_step_on_request) {
    Items items;
    items.grow(-1);
    EXPECT_EQ(items.size, 128);
    EXPECT_EQ(items.growBy, 32);
    items.grow(-1);
    EXPECT_EQ(items.size, 160);
}

TEST(ManagedArray, keeps_its_elements_through_growth_and_constructs_the_new_ones) {
    Items items;
    items.setSize(16, 16);
    for (int index = 0; index < 1000; ++index) {
        EXPECT_EQ(items[index].value, 7);
        items[index].value = 2 * index;
    }
    EXPECT_EQ(items.size, 1008);
    for (int index = 0; index < 1000; ++index)
        EXPECT_EQ(items[index].value, 2 * index);
}

TEST(ManagedArray, constructs_exactly_the_elements_it_is_told_to) {
    Item row[4];
    for (Item& item : row)
        item.value = 1;
    Items items;
    items.constructElements(row + 1, 2);
    EXPECT_EQ(row[0].value, 1);
    EXPECT_EQ(row[1].value, 7);
    EXPECT_EQ(row[2].value, 7);
    EXPECT_EQ(row[3].value, 1);
    items.constructElements(row, 0);
    EXPECT_EQ(row[0].value, 1);
    items.constructElements(nullptr, 3);
}

TEST(ManagedArray, that_can_not_be_opened_fails_with_the_one_failure_text) {
    struct Large {
        char bytes[1 << 20];
    };
    ManagedArray<Large> array;
    EXPECT_TRUE(failsWith99([&] { array.setSize(INT_MAX, 10); }));
    EXPECT_EQ(array.data, nullptr);
    EXPECT_EQ(array.size, 0);
}

}  // namespace
