// Elements: what counts as a field, where each one begins, and that a text is split once and in place.
#include "common/elements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "layout.h"

namespace {

/// A text of its own, with a NUL behind it, and the Elements over it.
struct Split {
    std::string buffer;
    Elements elements;

    explicit Split(std::string text, char delimiter = '*') : buffer(std::move(text)) {
        elements.text = buffer.data();
        elements.length = static_cast<int>(buffer.size());
        elements.delimiter[0] = delimiter;
    }
    Split(Split const&) = delete;
    Split& operator=(Split const&) = delete;

    /// The field, or "null".
    std::string field(int index) {
        char const* found = elements.GetElement(index);
        return found ? found : "null";
    }

    /// Where the field begins, or -1.
    long offset(int index) {
        char const* found = elements.GetElement(index);
        return found ? found - buffer.data() : -1;
    }
};

TEST(Elements, consists_of_text_length_split_count_and_delimiter) {
    Elements const elements;
    EXPECT_TRUE(lieInOrder(elements.text, elements.length, elements.split, elements.count, elements.delimiter));
    EXPECT_EQ(static_cast<void const*>(&elements), static_cast<void const*>(&elements.text));
}

TEST(Elements, begins_without_a_text_and_with_the_asterisk_as_delimiter) {
    Elements const elements;
    EXPECT_EQ(elements.text, nullptr);
    EXPECT_EQ(elements.length, 0);
    EXPECT_EQ(elements.split, 0);
    EXPECT_EQ(elements.count, 0);
    EXPECT_STREQ(elements.delimiter, "*");
}

struct Row {
    char const* text;
    int count;
    char const* fields[4];
};

constexpr Row rows[] = {
    {"A*B*C", 3, {"A", "B", "C", "null"}}, {"A*B*", 3, {"A", "B", "", "null"}}, {"A**C", 3, {"A", "", "C", "null"}},
    {"*B", 1, {"", "B", "null", "null"}},  {"*", 1, {"", "", "null", "null"}},  {"A", 1, {"A", "null", "null", "null"}},
    {"", 0, {"", "null", "null", "null"}},
};

TEST(Elements, have_the_count_and_the_fields_that_their_text_gives_them) {
    for (Row const& row : rows) {
        Split split(row.text);
        for (int index = 0; index < 4; ++index)
            EXPECT_EQ(split.field(index), row.fields[index]) << row.text << " at " << index;
        EXPECT_EQ(split.elements.count, row.count) << row.text;
        EXPECT_EQ(split.elements.fieldCount(), row.count) << row.text;
    }
}

TEST(Elements, are_the_same_read_from_the_last_to_the_first) {
    for (Row const& row : rows) {
        Split split(row.text);
        for (int index = 3; index >= 0; --index)
            EXPECT_EQ(split.field(index), row.fields[index]) << row.text << " at " << index;
        EXPECT_EQ(split.elements.count, row.count) << row.text;
    }
}

TEST(Elements, place_an_empty_last_field_one_byte_behind_the_text) {
    Split trailing("A*B*");
    EXPECT_EQ(trailing.offset(2), 4);
    Split alone("*");
    EXPECT_EQ(alone.offset(1), 1);
}

TEST(Elements, lose_the_last_field_of_a_text_that_begins_with_a_delimiter_in_a_walk_below_count) {
    Split split("*B*C");
    std::vector<std::string> walked;
    split.elements.GetElement(0);
    for (int index = 0; index < split.elements.count; ++index)
        walked.push_back(split.field(index));
    EXPECT_EQ(walked, (std::vector<std::string>{"", "B"}));
    EXPECT_EQ(split.field(2), "C");
}

TEST(Elements, split_the_whole_text_at_the_first_call_whatever_its_index) {
    Split split("A*B*C");
    EXPECT_EQ(split.elements.count, 0);
    EXPECT_EQ(split.field(99), "null");
    EXPECT_NE(split.elements.split, 0);
    EXPECT_EQ(split.elements.count, 3);
    EXPECT_EQ(split.buffer, std::string("A\0B\0C", 5));
}

TEST(Elements, split_once_only) {
    Split split("A*B");
    EXPECT_EQ(split.field(0), "A");
    split.buffer[2] = '*';
    EXPECT_EQ(split.field(1), "*");
    EXPECT_EQ(split.elements.count, 2);
}

TEST(Elements, are_counted_by_fieldCount_before_any_is_read) {
    Split split("A*B*C");
    EXPECT_EQ(split.elements.fieldCount(), 3);
    EXPECT_EQ(split.elements.count, 3);
}

TEST(Elements, have_no_field_at_a_negative_index) {
    Split split("A*B");
    EXPECT_EQ(split.field(-1), "null");
    EXPECT_EQ(split.field(1), "B");
    EXPECT_EQ(split.field(-1), "null");
}

TEST(Elements, without_a_text_have_no_field_at_all) {
    Elements elements;
    EXPECT_EQ(elements.GetElement(0), nullptr);
    EXPECT_EQ(elements.GetElement(1), nullptr);
    EXPECT_EQ(elements.count, 0);
}

TEST(Elements, are_split_by_their_own_delimiter) {
    Split split("A*B:C", ':');
    EXPECT_EQ(split.field(0), "A*B");
    EXPECT_EQ(split.field(1), "C");
    EXPECT_EQ(split.elements.count, 2);
}

TEST(Elements, leave_what_lies_behind_their_length_alone) {
    Split split("A*B*C");
    split.elements.length = 3;
    EXPECT_EQ(split.elements.fieldCount(), 2);
    EXPECT_EQ(split.field(1), "B*C");
    EXPECT_EQ(split.field(2), "null");
}

TEST(Elements, end_at_a_NUL_that_stood_in_the_text_and_does_not_count) {
    Split split(std::string("A\0B*C*D", 7));
    EXPECT_EQ(split.field(0), "A");
    EXPECT_EQ(split.field(1), "B");
    EXPECT_EQ(split.field(2), "C");
    EXPECT_EQ(split.field(3), "D");
    EXPECT_EQ(split.elements.count, 3);
}

TEST(Elements, count_no_field_for_a_text_that_begins_with_a_NUL) {
    Split split(std::string("\0B*C", 4));
    EXPECT_EQ(split.elements.fieldCount(), 1);
    EXPECT_EQ(split.field(1), "B");
    EXPECT_EQ(split.field(2), "null");
}

/// The plain way: begins at the start of the text each time.
class PlainElements {
public:
    explicit PlainElements(std::string given, int workLength) : text(std::move(given)), length(workLength) {
        for (int at = 0; at < length; ++at) {
            char& character = text[static_cast<std::size_t>(at)];
            if (character != '*') continue;
            character = '\0';
            ++count;
        }
        if (text.c_str()[0] != '\0') ++count;
    }

    long offset(int index) const {
        if (index > count) return -1;
        if (index == 0) return 0;
        if (length < 1) return -1;
        int seen = 0;
        for (int at = 0; at < length; ++at)
            if (text[static_cast<std::size_t>(at)] == '\0' && ++seen == index) return at + 1;
        return -1;
    }

    std::string text;
    int length;
    int count = 0;
};

/// Texts of letters, delimiters and NULs, from none to many, and lengths up to that of the text.
class RandomTexts {
public:
    std::string text() {
        static constexpr char letters[] = {'A', 'B', '*', '\0'};
        std::discrete_distribution<std::size_t> const mix[] = {{4, 4, 4, 1}, {1, 1, 6, 2}, {8, 8, 1, 0}};
        auto letter = mix[generator() % 3];
        std::string made(generator() % (generator() % 8 == 0 ? 200 : 16), ' ');
        for (char& character : made)
            character = letters[letter(generator)];
        return made;
    }

    int lengthOf(std::string const& text) {
        bool const whole = generator() % 3 != 0;
        return static_cast<int>(whole ? text.size() : generator() % (text.size() + 1));
    }

    std::vector<int> shuffled(std::vector<int> indices) {
        std::shuffle(indices.begin(), indices.end(), generator);
        return indices;
    }

private:
    std::mt19937 generator{20240531};
};

TEST(Elements, are_those_of_the_plain_way_in_whatever_order_they_are_read) {
    RandomTexts random;
    for (int round = 0; round < 6000; ++round) {
        std::string const text = random.text();
        PlainElements const plain(text, random.lengthOf(text));
        std::vector<int> forwards(static_cast<std::size_t>(plain.count) + 4);
        std::iota(forwards.begin(), forwards.end(), -1);
        std::vector<int> const backwards(forwards.rbegin(), forwards.rend());

        Split reused(text);
        reused.elements.length = plain.length;
        for (auto const& order : {random.shuffled(forwards), forwards, backwards, random.shuffled(forwards)}) {
            Split fresh(text);
            fresh.elements.length = plain.length;
            for (int index : order) {
                ASSERT_EQ(fresh.offset(index), plain.offset(index)) << "index " << index << ", round " << round;
                ASSERT_EQ(reused.offset(index), plain.offset(index)) << "index " << index << ", round " << round;
            }
            ASSERT_EQ(fresh.elements.count, plain.count);
            ASSERT_EQ(fresh.buffer, plain.text);
        }
        ASSERT_EQ(reused.elements.count, plain.count);
    }
}

// A walk that began at the start of the text for each field would pass 10^12 bytes here, and not come to an end.
TEST(Elements, are_walked_in_either_direction_at_the_cost_of_the_text_alone) {
    constexpr int fields = 1'000'000;
    std::string text;
    for (int index = 0; index < fields; ++index)
        text += index % 2 == 0 ? "A*" : "BC*";
    Split split(text);
    int expected = 0;
    for (int index = 0; index < fields; ++index) {
        ASSERT_EQ(split.offset(index), expected);
        expected += index % 2 == 0 ? 2 : 3;
    }
    EXPECT_EQ(split.offset(fields), expected);
    for (int index = fields - 1; index >= 0; --index) {
        expected -= index % 2 == 0 ? 2 : 3;
        ASSERT_EQ(split.offset(index), expected);
    }
    EXPECT_EQ(split.elements.count, fields + 1);
}

}  // namespace
