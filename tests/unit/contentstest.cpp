// Contents: the record, its bounds, the list's growth and the content line.
#include "rules/contents.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>

#include "layout.h"
#include "treewalk.h"

namespace {

std::string report(Contents const& contents) {
    std::string reply(contents.reportLength() + 1, 'x');
    contents.printReport(reply.data());
    EXPECT_EQ(reply.back(), '\0');
    reply.pop_back();
    return reply;
}

std::string blanks(std::size_t number) {
    return std::string(number, ' ');
}

void addText(Contents& contents, char const* text) {
    contents.add(1, 2, 3, text, text, text, text, text, text, text, text, text, text, text, text, text);
}

TEST(Content, has_its_fields_at_fixed_places) {
    EXPECT_EQ(offsetof(Content, segmentText), 0U);
    EXPECT_EQ(offsetof(Content, lineNumber), 32U);
    EXPECT_EQ(offsetof(Content, elementPosition), 36U);
    EXPECT_EQ(offsetof(Content, subElementPosition), 40U);
    EXPECT_EQ(offsetof(Content, codeVal), 44U);
    EXPECT_EQ(offsetof(Content, keyVal), 64U);
    EXPECT_EQ(offsetof(Content, qualVal), 72U);
    EXPECT_EQ(offsetof(Content, dateVal), 80U);
    EXPECT_EQ(offsetof(Content, codeTableIdVal), 88U);
    EXPECT_EQ(offsetof(Content, v1Val), 108U);
    EXPECT_EQ(offsetof(Content, v2PatternId), 110U);
    EXPECT_EQ(offsetof(Content, errorCode), 132U);
    EXPECT_EQ(offsetof(Content, loopId), 138U);
    EXPECT_EQ(offsetof(Content, txnText), 145U);
    EXPECT_EQ(offsetof(Content, segText), 150U);
    EXPECT_EQ(offsetof(Content, errorText), 154U);
    EXPECT_EQ(offsetof(Content, subElementText), 235U);
    EXPECT_EQ(sizeof(Content), 240U);
}

TEST(Content, begins_with_default_texts) {
    Contents contents;
    Content const& record = contents.records[0];
    EXPECT_STREQ(record.segmentText, "");
    EXPECT_EQ(record.lineNumber, 0);
    EXPECT_EQ(record.elementPosition, 0);
    EXPECT_EQ(record.subElementPosition, 0);
    EXPECT_STREQ(record.codeVal, "CodeVal");
    EXPECT_STREQ(record.keyVal, "KeyVal");
    EXPECT_STREQ(record.qualVal, "QualVal");
    EXPECT_STREQ(record.dateVal, "DateVal");
    EXPECT_STREQ(record.codeTableIdVal, "CodeTableIDVal");
    EXPECT_EQ(fieldText(record.v1Val), "V1");
    EXPECT_STREQ(record.v2PatternId, "V2PatternID");
    EXPECT_STREQ(record.errorCode, "ErrCd");
    EXPECT_STREQ(record.loopId, "LOOP");
    EXPECT_STREQ(record.txnText, "TXN");
    EXPECT_STREQ(record.segText, "SEG");
    EXPECT_STREQ(record.errorText, "Error");
    EXPECT_STREQ(record.subElementText, "00");
}

TEST(Contents, consists_of_records_and_count) {
    Contents const contents;
    EXPECT_TRUE(lieInOrder(contents.records, contents.count));
    EXPECT_TRUE(std::has_virtual_destructor_v<Contents>);
}

TEST(Contents, begins_with_room_for_16_records_and_grows_at_the_17th_to_36) {
    Contents contents;
    EXPECT_EQ(contents.records.size, 16);
    EXPECT_EQ(contents.records.growBy, 20);
    for (int number = 1; number <= 17; ++number) {
        EXPECT_EQ(contents.records.size, 16);
        addText(contents, "X");
    }
    EXPECT_EQ(contents.records.size, 36);
    EXPECT_EQ(contents.count, 17);
}

TEST(Contents, cuts_each_text_to_the_bound_of_its_field) {
    Contents contents;
    addText(contents, std::string(200, 'x').c_str());
    Content const& record = contents.records[0];
    EXPECT_EQ(fieldText(record.segmentText).size(), 31U);
    EXPECT_EQ(fieldText(record.codeVal).size(), 20U);
    EXPECT_EQ(fieldText(record.keyVal).size(), 8U);
    EXPECT_EQ(fieldText(record.qualVal).size(), 8U);
    EXPECT_EQ(fieldText(record.dateVal).size(), 8U);
    EXPECT_EQ(fieldText(record.codeTableIdVal).size(), 20U);
    EXPECT_EQ(fieldText(record.v1Val).size(), 2U);
    EXPECT_EQ(fieldText(record.v2PatternId).size(), 20U);
    EXPECT_EQ(fieldText(record.errorCode).size(), 5U);
    EXPECT_EQ(fieldText(record.loopId).size(), 6U);
    EXPECT_EQ(fieldText(record.txnText).size(), 4U);
    EXPECT_EQ(fieldText(record.segText).size(), 3U);
    EXPECT_EQ(fieldText(record.errorText).size(), 80U);
    EXPECT_STREQ(record.subElementText, "00");
}

TEST(Contents, wipes_the_defaults_with_shorter_and_empty_texts) {
    Contents contents;
    addText(contents, "A");
    EXPECT_EQ(std::string(contents.records[0].codeVal, 20), "A" + std::string(19, '\0'));
    addText(contents, "");
    EXPECT_EQ(std::string(contents.records[1].codeVal, 20), std::string(20, '\0'));
    addText(contents, nullptr);
    EXPECT_EQ(std::string(contents.records[2].codeVal, 20), std::string(20, '\0'));
    EXPECT_EQ(report(contents).substr(2 * 223), "000000000100203" + blanks(207) + "$");
}

TEST(Contents, prints_a_line_of_223_bytes_in_sixteen_columns) {
    Contents contents;
    contents.add(7, 4, 2, "SV1", "99213", "HC", "KEY", "20240531", "TABLE", "V", "PTRN", "E1", "2400", "837P", "SEGX",
                 "Code not in table");
    std::string const line = report(contents);
    EXPECT_EQ(line.size(), 223U);
    EXPECT_EQ(line,
              "0000000007"
              "004"
              "02"
              "SV1     "
              "E1   "
              "2400  "
              "837P"
              "SEG "
              "Code not in table" +
                  blanks(63) +
                  "99213               "
                  "HC      "
                  "KEY     "
                  "20240531"
                  "V "
                  "PT  "
                  "TABLE" +
                  blanks(45) + "$");
}

TEST(Contents, prints_a_code_table_of_full_width_with_the_two_fields_behind_it) {
    Contents contents;
    std::string const table(20, 't');
    contents.add(1, 0, 0, "A", "B", "C", "D", "E", table.c_str(), "V", "PATTERN", "", "", "", "", "");
    contents.add(1, 0, 0, "A", "B", "C", "D", "E", table.c_str(), "VV", "PATTERN", "", "", "", "", "");
    std::string const lines = report(contents);
    EXPECT_EQ(lines.substr(172, 51), table + "V" + blanks(29) + "$");
    EXPECT_EQ(lines.substr(223 + 172, 51), table + "VVPATTERN" + blanks(21) + "$");
}

TEST(Contents, prints_in_the_order_of_arrival_and_a_number_that_is_too_wide_whole) {
    Contents contents;
    for (int position : {5, 100, 7})
        contents.add(1, 0, position, "", "", "", "", "", "", "", "", "", "", "", "", "");
    std::string const lines = report(contents);
    EXPECT_EQ(lines.size(), 223U + 224U + 223U);
    EXPECT_EQ(lines.substr(13, 2), "05");
    EXPECT_EQ(lines.substr(223 + 13, 3), "100");
    EXPECT_EQ(lines.substr(447 + 13, 2), "07");
}

}  // namespace
