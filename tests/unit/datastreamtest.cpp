// The data stream: where records end, and what is read of each.
#include "walk/datastream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "walk/datasegment.h"

namespace {

/// A stream in a buffer of its own with the padding that it needs, and what was read of it.
struct Stream {
    std::vector<char> bytes;
    DataSegment data;
    IdentifierBuffer pool;

    /// Of kind 1.
    explicit Stream(std::string const& text) : bytes(padded(text)) {
        readDataStream(bytes.data(), text.size(), {"$", 1}, data, nullptr);
    }
    /// Of kind 2.
    Stream(std::string const& text, std::string const& terminator) : bytes(padded(text)) {
        readDataStream(bytes.data(), text.size(), {terminator.c_str(), static_cast<int>(terminator.size())}, data,
                       &pool);
    }

    static std::vector<char> padded(std::string const& text) {
        std::vector<char> copy(text.begin(), text.end());
        copy.resize(text.size() + streamPadding, '\0');
        return copy;
    }

    std::string id(int index) const { return data.segments.data[index].segmentId; }
    std::string text(int index) const { return data.segments.data[index].text; }
    std::string identifier(int index) const {
        int const offset = data.segments.data[index].identifierOffsets[0];
        return offset == 0 ? "none" : pool.at(offset);
    }
    std::vector<std::string> ids() const {
        std::vector<std::string> all;
        for (int index = 0; index < data.recordCount; ++index)
            all.push_back(id(index));
        return all;
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (int index = 0; index < data.recordCount; ++index)
            all.push_back(text(index));
        return all;
    }
};

using Texts = std::vector<std::string>;

/// The head of a kind 2 record, up to its element text.
std::string head(std::string id, std::string identifier = "") {
    id.resize(3, ' ');
    identifier.resize(5, ' ');
    return id + identifier + "xxxxxxx";
}

TEST(DataStream, of_kind_1_has_its_records_ended_by_a_dollar) {
    Stream const stream("ST XYZ$SE $");
    EXPECT_EQ(stream.ids(), (Texts{"ST", "SE"}));
    EXPECT_EQ(stream.data.segments.data[0].position, 0);
    EXPECT_EQ(stream.data.segments.data[1].position, 1);
    EXPECT_EQ(stream.data.currentSegment, 0);
}

TEST(DataStream, of_kind_1_has_ids_alone) {
    Stream const stream("HL 20   xxxxxxxHL*1$");
    EXPECT_EQ(stream.id(0), "HL");
    EXPECT_EQ(stream.identifier(0), "none");
    EXPECT_EQ(stream.data.segments.data[0].text, nullptr);
    EXPECT_EQ(stream.pool.used, 8);
}

TEST(DataStream, has_NULs_where_its_records_ended) {
    Stream const stream("ST $SE $ ");
    EXPECT_EQ(std::string(stream.bytes.data(), 9), std::string("ST \0SE \0 ", 9));
}

TEST(DataStream, trims_white_space_off_the_end_of_an_id_of_three_bytes) {
    struct Row {
        char const* record;
        char const* id;
    };
    for (Row row : {Row{"NM1$", "NM1"}, Row{"NM1X$", "NM1"}, Row{"ST $", "ST"}, Row{"S  $", "S"}, Row{"ST\t$", "ST"},
                    Row{" T $", " T"}, Row{"S T$", "S T"}})
        EXPECT_EQ(Stream(row.record).id(0), row.id) << row.record;
}

TEST(DataStream, does_not_trim_an_id_that_the_end_of_its_record_cuts_short) {
    EXPECT_EQ(Stream("ST$").id(0), "ST");
    EXPECT_EQ(Stream("S$").id(0), "S");
    EXPECT_EQ(Stream("S $").id(0), "S ");
    EXPECT_EQ(Stream("$ST $").ids(), (Texts{"", "ST"}));
}

TEST(DataStream, has_an_empty_id_in_a_record_of_blanks) {
    // White space in front of the first record is part of it.
    EXPECT_EQ(Stream("   $ST $").ids(), (Texts{"", "ST"}));
}

TEST(DataStream, has_no_record_behind_its_last_terminator) {
    EXPECT_EQ(Stream("ST $SE").ids(), (Texts{"ST"}));
    EXPECT_EQ(Stream("ST $ \r\n\t ").ids(), (Texts{"ST"}));
    EXPECT_EQ(Stream("ST ").ids(), Texts{});
    EXPECT_EQ(Stream("").ids(), Texts{});
}

TEST(DataStream, skips_white_space_between_records) {
    EXPECT_EQ(Stream("ST $\r\n  NM1$\v\fSE $").ids(), (Texts{"ST", "NM1", "SE"}));
}

TEST(DataStream, grows_its_records_from_none_to_128) {
    Stream const stream("ST $");
    EXPECT_EQ(stream.data.segments.size, 128);
}

TEST(DataStream, takes_as_many_records_as_there_are) {
    std::string text;
    for (int number = 0; number < 1000; ++number)
        text += "R" + std::to_string(number % 10) + " $";
    Stream const stream(text);
    ASSERT_EQ(stream.data.recordCount, 1000);
    EXPECT_EQ(stream.id(999), "R9");
    EXPECT_EQ(stream.data.segments.data[999].position, 999);
}

TEST(DataStream, of_kind_2_has_id_identifier_and_element_text) {
    Stream const stream("ST 2000 xxxxxxxST*850*0001~", "~");
    ASSERT_EQ(stream.data.recordCount, 1);
    EXPECT_EQ(stream.id(0), "ST");
    EXPECT_EQ(stream.identifier(0), "2000");
    EXPECT_EQ(stream.text(0), "ST*850*0001");
    EXPECT_EQ(stream.data.segments.data[0].text, stream.bytes.data() + 15);
    for (int slot = 1; slot < 20; ++slot)
        EXPECT_EQ(stream.data.segments.data[0].identifierOffsets[slot], 0);
}

TEST(DataStream, trims_an_identifier_where_its_fifth_byte_is_white_space) {
    struct Row {
        char const* field;
        char const* identifier;
    };
    for (Row row :
         {Row{"2000 ", "2000"}, Row{"2000A", "2000"}, Row{"20   ", "20"}, Row{"20  \t", "20"}, Row{"20  A", "20  "},
          Row{"    A", "    "}, Row{"     ", "none"}, Row{" 20  ", " 20"}, Row{"2 0  ", "2 0"}}) {
        Stream const stream(head("HL", row.field) + "HL*1~", "~");
        EXPECT_EQ(stream.identifier(0), row.identifier) << row.field;
    }
}

TEST(DataStream, takes_no_place_in_the_pool_for_an_empty_identifier) {
    Stream const stream(head("ST") + "ST~" + head("HL", "20") + "HL~", "~");
    EXPECT_EQ(stream.identifier(0), "none");
    EXPECT_EQ(stream.data.segments.data[1].identifierOffsets[0], 8);
}

TEST(DataStream, keeps_the_blanks_of_an_identifier_that_the_end_of_its_record_cuts_short) {
    EXPECT_EQ(Stream("HL 20  ~" + head("SE") + "SE~", "~").identifier(0), "20  ");
    EXPECT_EQ(Stream("HL 2 ~" + head("SE") + "SE~", "~").identifier(0), "2 ");
    EXPECT_EQ(Stream("HL 2000~" + head("SE") + "SE~", "~").identifier(0), "2000");
}

TEST(DataStream, has_no_identifier_in_a_record_that_ends_before_or_at_its_field) {
    for (char const* record : {"H~", "HL~", "HL ~", "~"})
        EXPECT_EQ(Stream(record + head("SE", "99") + "SE~", "~").identifier(0), "none") << record;
}

TEST(DataStream, takes_for_the_text_of_a_short_record_what_lies_at_offset_15_of_the_copy) {
    // "HL~" and 15 bytes of head: offset 15 lies three bytes in front of the next record's text.
    EXPECT_EQ(Stream("HL~" + head("SE") + "SE*1~", "~").texts(), (Texts{"xxxSE*1", "SE*1"}));
    EXPECT_EQ(Stream("HL~", "~").text(0), "");
    EXPECT_EQ(Stream(head("HL") + "~", "~").text(0), "");
}

TEST(DataStream, is_ended_by_all_characters_of_a_terminator_of_two) {
    Stream const stream(head("ST") + "ST*a~b*c~\n" + head("SE") + "SE*1~\n", "~\n");
    EXPECT_EQ(stream.ids(), (Texts{"ST", "SE"}));
    EXPECT_EQ(stream.texts(), (Texts{"ST*a~b*c", "SE*1"}));
}

TEST(DataStream, is_ended_by_all_characters_of_a_terminator_of_three) {
    Stream const stream(head("ST") + "ST*a~*b~+*c~+#" + head("SE") + "SE*1~+#", "~+#");
    EXPECT_EQ(stream.texts(), (Texts{"ST*a~*b~+*c", "SE*1"}));
}

TEST(DataStream, is_ended_by_the_first_two_characters_of_a_longer_terminator_and_skips_them_all) {
    Stream const stream(head("ST") + "ST*a~+XX" + head("SE") + "SE*1~+#=", "~+#=");
    EXPECT_EQ(stream.ids(), (Texts{"ST", "SE"}));
    EXPECT_EQ(stream.texts(), (Texts{"ST*a", "SE*1"}));
}

TEST(DataStream, goes_on_from_the_character_that_failed) {
    // In "~~+" the second character fails and is the first of a terminator itself.
    EXPECT_EQ(Stream(head("ST") + "ST*a~~+", "~+").texts(), (Texts{"ST*a~"}));
    // In "~+~+#" the third fails and is the first again.
    EXPECT_EQ(Stream(head("ST") + "ST*a~+~+#", "~+#").texts(), (Texts{"ST*a~+"}));
    // In "~~~#" the third fails only for a terminator "~~#", which is then not seen: the search has passed its first
    // '~'.
    EXPECT_EQ(Stream(head("ST") + "ST*a~~~#", "~~#").texts(), Texts{});
}

TEST(DataStream, with_a_terminator_cut_off_by_its_end_has_no_last_record) {
    EXPECT_EQ(Stream(head("ST") + "ST*a~", "~\n").texts(), Texts{});
    EXPECT_EQ(Stream(head("ST") + "ST*a~+", "~+#").texts(), Texts{});
}

TEST(DataStream, without_a_terminator_has_no_records) {
    EXPECT_EQ(Stream(head("ST") + "ST*a~", "").texts(), Texts{});
    std::string const withNul = head("ST") + "ST*a" + std::string(1, '\0') + head("SE") + "SE*1" + std::string(1, '\0');
    EXPECT_EQ(Stream(withNul, "").texts(), Texts{});
}

}  // namespace
