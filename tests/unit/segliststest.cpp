// SegLists: the lines of a message, what is cut, and the loop text.
#include "rules/seglists.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "layout.h"
#include "treewalk.h"

namespace {

/// The loop text of the lines.
std::string loopText(SegLists const& lines) {
    std::string reply(lines.loopTextSize(), '\0');
    lines.printLoopText(reply.data());
    return reply.c_str();
}

void setTerminator(SegLists& lines, std::string const& terminator) {
    lines.terminatorLength = static_cast<int>(terminator.size());
    std::memcpy(lines.terminatorText, terminator.data(), terminator.size());
}

TEST(SegListInfo, consists_of_three_ids_and_elements) {
    SegListInfo const line;
    EXPECT_TRUE(lieInOrder(line.segmentId, line.loopId, line.identifier, line.elements));
    EXPECT_EQ(sizeof line.segmentId, 4U);
    EXPECT_EQ(sizeof line.loopId, 7U);
    EXPECT_EQ(sizeof line.identifier, 6U);
}

TEST(SegListInfo, begins_empty_with_the_asterisk_as_delimiter) {
    SegListInfo const line;
    EXPECT_STREQ(line.segmentId, "");
    EXPECT_STREQ(line.loopId, "");
    EXPECT_STREQ(line.identifier, "");
    EXPECT_EQ(line.elements.text, nullptr);
    EXPECT_EQ(line.elements.length, 0);
    EXPECT_STREQ(line.elements.delimiter, "*");
}

TEST(SegLists, is_a_ManagedArray_with_count_delimiters_and_terminator_behind_it) {
    EXPECT_TRUE((std::is_base_of_v<ManagedArray<SegListInfo>, SegLists>));
    SegLists const lines;
    EXPECT_TRUE(lieInOrder(lines.growBy, lines.count, lines.elementDelimiter, lines.subElementDelimiter,
                           lines.terminatorText, lines.terminatorLength));
}

TEST(SegLists, begins_empty_with_NUL_delimiters) {
    SegLists const lines;
    EXPECT_EQ(lines.size, 0);
    EXPECT_EQ(lines.count, 0);
    EXPECT_EQ(lines.elementDelimiter, '\0');
    EXPECT_EQ(lines.subElementDelimiter, '\0');
    EXPECT_EQ(lines.terminatorLength, 0);
}

TEST(SegLists, stores_ids_and_text_of_an_added_line) {
    char text[] = "NM1:85:2";
    SegLists lines;
    lines.elementDelimiter = ':';
    lines.add("NM1", "85", "1000A", text);
    ASSERT_EQ(lines.count, 1);
    SegListInfo const& line = lines[0];
    EXPECT_STREQ(line.segmentId, "NM1");
    EXPECT_STREQ(line.identifier, "85");
    EXPECT_STREQ(line.loopId, "1000A");
    EXPECT_EQ(line.elements.text, text);
    EXPECT_EQ(line.elements.length, 8);
    EXPECT_STREQ(line.elements.delimiter, ":");
    EXPECT_EQ(line.elements.split, 0);
}

TEST(SegLists, cuts_longer_ids_without_a_message) {
    SegLists lines;
    lines.add("NM10", "QUALIFIER", "Loop 2000A", nullptr);
    EXPECT_STREQ(lines[0].segmentId, "NM1");
    EXPECT_STREQ(lines[0].identifier, "QUALI");
    EXPECT_STREQ(lines[0].loopId, "Loop 2");
}

TEST(SegLists, leaves_the_fields_of_null_texts_empty_and_counts_the_line) {
    SegLists lines;
    lines.elementDelimiter = ':';
    lines.add(nullptr, nullptr, nullptr, nullptr);
    lines.add("ST", nullptr, nullptr, nullptr);
    ASSERT_EQ(lines.count, 2);
    for (int index : {0, 1}) {
        EXPECT_STREQ(lines[index].segmentId, index == 0 ? "" : "ST");
        EXPECT_STREQ(lines[index].loopId, "");
        EXPECT_STREQ(lines[index].identifier, "");
        EXPECT_EQ(lines[index].elements.text, nullptr);
        EXPECT_STREQ(lines[index].elements.delimiter, "*");
        EXPECT_EQ(lines[index].elements.GetElement(0), nullptr);
        EXPECT_EQ(lines[index].elements.GetElement(1), nullptr);
    }
}

TEST(SegLists, grows_as_lines_are_added) {
    SegLists unsized;
    unsized.add("ST", nullptr, nullptr, nullptr);
    EXPECT_EQ(unsized.size, 128);
    EXPECT_EQ(unsized.growBy, 32);

    SegLists sized;
    sized.setSize(3, 10);
    for (int line = 0; line < 3; ++line)
        sized.add("ST", nullptr, nullptr, nullptr);
    EXPECT_EQ(sized.size, 3);
    sized.add("SE", nullptr, nullptr, nullptr);
    EXPECT_EQ(sized.size, 13);
    EXPECT_EQ(notation(sized), (Texts{"ST@", "ST@", "ST@", "SE@"}));
}

TEST(LoopText, shows_a_line_as_segment_id_loop_id_and_elements) {
    char text[] = "N1*ST*NAME";
    SegLists lines;
    lines.elementDelimiter = '*';
    setTerminator(lines, "~");
    lines.add("N1", "ST", "2000A", text);
    EXPECT_EQ(loopText(lines), "N1*2000A*ST*NAME~");
}

TEST(LoopText, is_one_run_of_lines_with_the_whole_terminator_behind_each) {
    char header[] = "ST*850*0001";
    char alone[] = "REF";
    char trailer[] = "SE*3*0001";
    SegLists lines;
    lines.elementDelimiter = '*';
    setTerminator(lines, "~\n");
    lines.add("ST", nullptr, nullptr, header);
    lines.add("REF", nullptr, "2000A", alone);
    lines.add("SE", nullptr, nullptr, trailer);
    EXPECT_EQ(loopText(lines), "ST**850*0001~\nREF*2000A*~\nSE**3*0001~\n");
}

TEST(LoopText, has_two_delimiters_for_a_text_of_the_segment_id_alone_at_the_root) {
    char text[] = "ST";
    SegLists lines;
    lines.elementDelimiter = '*';
    setTerminator(lines, "~");
    lines.add("ST", nullptr, nullptr, text);
    EXPECT_EQ(loopText(lines), "ST**~");
}

TEST(LoopText, loses_the_elements_of_a_line_that_was_read) {
    char read[] = "ST*850*0001";
    char unread[] = "SE*2*0001";
    SegLists lines;
    lines.elementDelimiter = '*';
    setTerminator(lines, "~");
    lines.add("ST", nullptr, nullptr, read);
    lines.add("SE", nullptr, nullptr, unread);
    EXPECT_STREQ(lines[0].elements.GetElement(1), "850");
    EXPECT_EQ(loopText(lines), "ST**~SE**2*0001~");
}

TEST(LoopText, shows_a_line_without_a_text_by_its_ids_alone) {
    SegLists lines;
    lines.elementDelimiter = '*';
    setTerminator(lines, "~");
    lines.add("REF", nullptr, "2000A", nullptr);
    EXPECT_EQ(loopText(lines), "REF*2000A*~");
}

TEST(LoopText, of_no_lines_is_empty) {
    EXPECT_EQ(loopText(SegLists()), "");
}

}  // namespace
