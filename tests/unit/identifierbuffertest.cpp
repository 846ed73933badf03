// IdentifierBuffer: offsets, growth and the room made ahead for a message.
#include "grammar/identifierbuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>
#include <vector>

namespace {

bool isZeroFrom(IdentifierBuffer const& pool, int offset) {
    return std::all_of(pool.bytes + offset, pool.bytes + pool.capacity, [](char byte) { return byte == '\0'; });
}

std::string letters(int length) {
    return std::string(static_cast<std::size_t>(length), 'x');
}

TEST(IdentifierBuffer, consists_of_used_capacity_step_and_bytes) {
    EXPECT_EQ(offsetof(IdentifierBuffer, used), 0U);
    EXPECT_EQ(offsetof(IdentifierBuffer, capacity), 4U);
    EXPECT_EQ(offsetof(IdentifierBuffer, growBy), 8U);
    EXPECT_EQ(offsetof(IdentifierBuffer, bytes), 16U);
}

TEST(IdentifierBuffer, begins_at_offset_8_of_4096_zero_bytes) {
    IdentifierBuffer const pool;
    EXPECT_EQ(pool.used, 8);
    EXPECT_EQ(pool.capacity, 4096);
    EXPECT_EQ(pool.growBy, 4096);
    EXPECT_TRUE(isZeroFrom(pool, 0));
}

TEST(IdentifierBuffer, places_texts_at_multiples_of_8_with_at_least_two_bytes_behind_each) {
    struct Step {
        int length;
        int usedAfter;  // 8 + length + 2, raised to a multiple of 8
    };
    for (Step step : {Step{0, 16}, Step{1, 16}, Step{5, 16}, Step{6, 16}, Step{7, 24}, Step{14, 24}, Step{15, 32}}) {
        IdentifierBuffer pool;
        EXPECT_EQ(pool.add(letters(step.length).c_str()), 8);
        EXPECT_EQ(pool.used, step.usedAfter) << "length " << step.length;
    }
}

TEST(IdentifierBuffer, keeps_every_text_at_the_offset_it_answered) {
    IdentifierBuffer pool;
    EXPECT_EQ(pool.add("20"), 8);
    EXPECT_EQ(pool.add("QUALIFI"), 16);
    EXPECT_EQ(pool.add("23"), 32);
    EXPECT_EQ(pool.used, 40);
    EXPECT_STREQ(pool.at(8), "20");
    EXPECT_STREQ(pool.at(16), "QUALIFI");
    EXPECT_STREQ(pool.at(32), "23");
}

TEST(IdentifierBuffer, stores_equal_texts_twice) {
    IdentifierBuffer pool;
    EXPECT_EQ(pool.add("20"), 8);
    EXPECT_EQ(pool.add("20"), 16);
}

TEST(IdentifierBuffer, grows_by_its_step_when_a_text_with_its_terminator_reaches_the_capacity) {
    IdentifierBuffer below;
    below.add(letters(4086).c_str());  // 4086 + 1 + 8 is 4095
    EXPECT_EQ(below.capacity, 4096);
    EXPECT_EQ(below.used, 4096);
    IdentifierBuffer reaching;
    reaching.add(letters(4087).c_str());
    EXPECT_EQ(reaching.capacity, 8192);
    EXPECT_EQ(reaching.growBy, 4096);
    EXPECT_EQ(reaching.used, 4104);  // 8 + 4087 + 2 is 4097
}

TEST(IdentifierBuffer, keeps_its_texts_through_growth_and_zeroes_the_new_bytes) {
    IdentifierBuffer pool;
    std::vector<int> offsets;
    for (int number = 0; number < 3000; ++number)
        offsets.push_back(pool.add(std::to_string(number).c_str()));
    // 8 bytes for each text: 8 + 3000 * 8 is 24008.
    EXPECT_EQ(pool.used, 24008);
    EXPECT_EQ(pool.capacity, 24576);
    for (int number = 0; number < 3000; ++number) {
        EXPECT_EQ(offsets[static_cast<std::size_t>(number)], 8 + 8 * number);
        EXPECT_EQ(pool.at(8 + 8 * number), std::to_string(number));
    }
    EXPECT_TRUE(isZeroFrom(pool, pool.used));
}

TEST(IdentifierBuffer, holds_a_text_that_is_longer_than_its_step) {
    IdentifierBuffer pool;
    std::string const text = letters(20000);
    EXPECT_EQ(pool.add(text.c_str()), 8);
    EXPECT_EQ(pool.used, 20016);  // 8 + 20000 + 2 is 20010
    EXPECT_EQ(pool.at(8), text);
    EXPECT_EQ(pool.add("20"), 20016);
    EXPECT_STREQ(pool.at(20016), "20");
}

TEST(IdentifierBuffer, takes_no_second_step_for_a_text_that_fits_after_the_first) {
    IdentifierBuffer pool;
    pool.add(letters(8183).c_str());  // with its terminator it ends at byte 8192
    EXPECT_EQ(pool.capacity, 8192);
}

TEST(IdentifierBuffer, reserves_one_step_more_when_no_size_is_given) {
    IdentifierBuffer pool;
    pool.reserve(0);
    EXPECT_EQ(pool.capacity, 8192);
    EXPECT_EQ(pool.growBy, 4096);
    EXPECT_TRUE(isZeroFrom(pool, 0));
}

TEST(IdentifierBuffer, reserves_nothing_for_a_size_that_it_has_already) {
    for (int size : {1, 100, 4096}) {
        IdentifierBuffer pool;
        pool.reserve(size);
        EXPECT_EQ(pool.capacity, 4096) << "size " << size;
        EXPECT_EQ(pool.growBy, 4096) << "size " << size;
    }
}

TEST(IdentifierBuffer, reserves_multiples_of_8_and_takes_half_the_size_as_a_larger_step) {
    struct Row {
        int size;
        int capacity;
        int growBy;
    };
    for (Row row : {Row{4097, 4104, 4096}, Row{8192, 8192, 4096}, Row{8193, 8200, 4096}, Row{8194, 8200, 4104},
                    Row{10000, 10000, 5000}, Row{10001, 10008, 5000}, Row{10003, 10008, 5008}}) {
        IdentifierBuffer pool;
        pool.reserve(row.size);
        EXPECT_EQ(pool.capacity, row.capacity) << "size " << row.size;
        EXPECT_EQ(pool.growBy, row.growBy) << "size " << row.size;
        EXPECT_TRUE(isZeroFrom(pool, 0));
    }
}

TEST(IdentifierBuffer, keeps_the_texts_that_a_reservation_finds) {
    IdentifierBuffer pool;
    pool.add("20");
    pool.reserve(100000);
    EXPECT_EQ(pool.used, 16);
    EXPECT_STREQ(pool.at(8), "20");
    EXPECT_TRUE(isZeroFrom(pool, 16));
}

// A pool that says that it is nearly full stands for one of 2 GB. The text is refused before any byte of it is written.
TEST(IdentifierBuffer, takes_no_text_that_ends_beyond_the_offsets_of_32_bits) {
    IdentifierBuffer pool;
    pool.used = INT_MAX - 23;
    pool.capacity = INT_MAX;
    EXPECT_THROW(pool.add(letters(16).c_str()), char const*);  // the next offset would be 2^31
    EXPECT_EQ(pool.used, INT_MAX - 23);
}

TEST(IdentifierBuffer, takes_no_step_of_growth_beyond_32_bits) {
    IdentifierBuffer pool;
    pool.capacity = INT_MAX - 4095;  // a step of 4,096 more is one byte too many
    pool.used = pool.capacity - 8;
    EXPECT_THROW(pool.add(letters(8).c_str()), char const*);
    EXPECT_EQ(pool.capacity, INT_MAX - 4095);
}

}  // namespace
