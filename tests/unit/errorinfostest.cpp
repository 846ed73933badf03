// ErrorInfos: the record, its bounds, the list's growth and the report line.
#include "walk/errorinfos.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>

#include "layout.h"
#include "treewalk.h"

namespace {

std::string report(ErrorInfos const& errors) {
    std::string reply(errors.reportLength() + 1, 'x');
    errors.printReport(reply.data());
    EXPECT_EQ(reply.back(), '\0');
    reply.pop_back();
    return reply;
}

std::string blanks(std::size_t number) {
    return std::string(number, ' ');
}

void addFinding(ErrorInfos& errors, int number) {
    errors.add(number, 0, "NM1", "1", "1000A", "NONE", "SEG", "ERROR", "Element Text", "00");
}

void addLongTexts(ErrorInfos& errors) {
    std::string const text(200, 'x');
    char const* longText = text.c_str();
    errors.add(1, 2, longText, longText, longText, longText, longText, longText, longText, longText);
}

TEST(ErrorInfo, has_its_fields_at_fixed_places) {
    EXPECT_EQ(offsetof(ErrorInfo, segmentId), 0U);
    EXPECT_EQ(offsetof(ErrorInfo, lineNumber), 32U);
    EXPECT_EQ(offsetof(ErrorInfo, elementPosition), 36U);
    EXPECT_EQ(offsetof(ErrorInfo, errorCode), 40U);
    EXPECT_EQ(offsetof(ErrorInfo, loopId), 46U);
    EXPECT_EQ(offsetof(ErrorInfo, txnText), 53U);
    EXPECT_EQ(offsetof(ErrorInfo, segText), 58U);
    EXPECT_EQ(offsetof(ErrorInfo, spareMark), 62U);
    EXPECT_EQ(offsetof(ErrorInfo, errorText), 64U);
    EXPECT_EQ(offsetof(ErrorInfo, contextText), 145U);
    EXPECT_EQ(offsetof(ErrorInfo, elementText), 181U);
    EXPECT_EQ(offsetof(ErrorInfo, subElementText), 232U);
    EXPECT_EQ(sizeof(ErrorInfo), 236U);
}

TEST(ErrorInfo, begins_with_default_texts) {
    ErrorInfos errors;
    for (int index = 0; index < 16; ++index) {
        ErrorInfo const& record = errors.records[index];
        EXPECT_STREQ(record.segmentId, "");
        EXPECT_EQ(record.lineNumber, 0);
        EXPECT_EQ(record.elementPosition, 0);
        EXPECT_STREQ(record.errorCode, "ErrCd");
        EXPECT_STREQ(record.loopId, "LOOP");
        EXPECT_STREQ(record.txnText, "TXN");
        EXPECT_STREQ(record.segText, "SEG");
        EXPECT_STREQ(record.spareMark, "X");
        EXPECT_STREQ(record.errorText, "Error");
        EXPECT_STREQ(record.contextText, "Context");
        EXPECT_STREQ(record.elementText, "Element Text");
        EXPECT_STREQ(record.subElementText, "00");
    }
}

TEST(ErrorInfos, consists_of_records_and_count) {
    ErrorInfos const errors;
    EXPECT_TRUE(lieInOrder(errors.records, errors.count));
    EXPECT_TRUE(std::has_virtual_destructor_v<ErrorInfos>);
}

TEST(ErrorInfos, begins_with_room_for_16_records_and_grows_at_the_17th_to_1040) {
    ErrorInfos errors;
    EXPECT_EQ(errors.records.size, 16);
    EXPECT_EQ(errors.records.growBy, 1024);
    EXPECT_EQ(errors.count, 0);
    for (int number = 1; number <= 16; ++number)
        addFinding(errors, number);
    EXPECT_EQ(errors.records.size, 16);
    addFinding(errors, 17);
    EXPECT_EQ(errors.records.size, 1040);
    EXPECT_EQ(errors.count, 17);
    for (int number = 1; number <= 17; ++number)
        EXPECT_EQ(errors.records[number - 1].lineNumber, number);
}

TEST(ErrorInfos, stores_every_argument_in_its_field) {
    ErrorInfos errors;
    errors.add(4, 3, "HL", "7", "2000A", "TXN1", "SG1", "What is wrong", "99", "02");
    ErrorInfo const& record = errors.records[0];
    EXPECT_EQ(record.lineNumber, 4);
    EXPECT_EQ(record.elementPosition, 3);
    EXPECT_STREQ(record.segmentId, "HL");
    EXPECT_STREQ(record.errorCode, "7");
    EXPECT_STREQ(record.loopId, "2000A");
    EXPECT_STREQ(record.txnText, "TXN1");
    EXPECT_STREQ(record.segText, "SG1");
    EXPECT_STREQ(record.errorText, "What is wrong");
    EXPECT_STREQ(record.elementText, "99");
    EXPECT_STREQ(record.subElementText, "02");
    EXPECT_STREQ(record.spareMark, "X");
    EXPECT_STREQ(record.contextText, "Context");
}

TEST(ErrorInfos, cuts_each_text_to_the_bound_of_its_field) {
    ErrorInfos errors;
    addLongTexts(errors);
    ErrorInfo const& record = errors.records[0];
    EXPECT_EQ(fieldText(record.segmentId).size(), 31U);
    EXPECT_EQ(fieldText(record.errorCode).size(), 5U);
    EXPECT_EQ(fieldText(record.loopId).size(), 6U);
    EXPECT_EQ(fieldText(record.txnText).size(), 4U);
    EXPECT_EQ(fieldText(record.segText).size(), 3U);
    EXPECT_EQ(fieldText(record.errorText).size(), 80U);
    EXPECT_EQ(fieldText(record.elementText).size(), 50U);
    EXPECT_EQ(fieldText(record.subElementText).size(), 2U);
    EXPECT_STREQ(record.spareMark, "X");
    EXPECT_STREQ(record.contextText, "Context");
}

TEST(ErrorInfos, fills_a_field_with_zeros_behind_a_shorter_text) {
    ErrorInfos errors;
    addLongTexts(errors);
    errors.count = 0;
    errors.add(1, 0, "A", "B", "C", "D", "E", "F", "G", "H");
    ErrorInfo const& record = errors.records[0];
    EXPECT_EQ(std::string(record.segmentId, 32), "A" + std::string(31, '\0'));
    EXPECT_EQ(std::string(record.errorCode, 6), "B" + std::string(5, '\0'));
    EXPECT_EQ(std::string(record.loopId, 7), "C" + std::string(6, '\0'));
    EXPECT_EQ(std::string(record.txnText, 5), "D" + std::string(4, '\0'));
    EXPECT_EQ(std::string(record.segText, 4), "E" + std::string(3, '\0'));
    EXPECT_EQ(std::string(record.errorText, 81), "F" + std::string(80, '\0'));
    EXPECT_EQ(std::string(record.elementText, 51), "G" + std::string(50, '\0'));
    EXPECT_EQ(std::string(record.subElementText, 3), "H" + std::string(2, '\0'));
}

TEST(ErrorInfos, takes_a_null_text_as_an_empty_one) {
    ErrorInfos errors;
    errors.add(1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(report(errors), "0000000001000" + blanks(159) + "$");
}

TEST(ErrorInfos, keeps_two_equal_findings) {
    ErrorInfos errors;
    addFinding(errors, 5);
    addFinding(errors, 5);
    EXPECT_EQ(errors.count, 2);
    EXPECT_EQ(report(errors).substr(0, 173), report(errors).substr(173));
}

TEST(ErrorInfos, prints_a_line_of_173_bytes_in_ten_columns) {
    ErrorInfos errors;
    errors.add(41, 3, "NM1", "3", "1000A", "NONE", "SEG", "ERROR", "Element Text", "00");
    std::string const line = report(errors);
    EXPECT_EQ(line.size(), 173U);
    EXPECT_EQ(line,
              "0000000041"
              "003"
              "00"
              "NM1     "
              "3    "
              "1000A "
              "NONE"
              "SEG "
              "ERROR" +
                  blanks(75) + "Element Text" + blanks(38) + "$");
}

TEST(ErrorInfos, prints_each_column_at_its_width) {
    ErrorInfos errors;
    errors.add(2147483647, 999, "ABCDEFGHIJ", "VWXYZA", "LOOPID7", "TXNTEXT", "SEGX", std::string(90, 'e').c_str(),
               std::string(60, 'v').c_str(), "123");
    EXPECT_EQ(report(errors),
              "2147483647"
              "999"
              "12"
              "ABCDEFGH"
              "VWXYZ"
              "LOOPID"
              "TXNT"
              "SEG " +
                  std::string(80, 'e') + std::string(50, 'v') + "$");
}

TEST(ErrorInfos, keeps_31_characters_of_a_segment_id_of_which_the_report_shows_8) {
    ErrorInfos errors;
    std::string const name = "UnorderedGroup 2000 of the billing provider";
    errors.add(1, 0, name.c_str(), "4", "", "NONE", "SEG", "ERROR", "Element Text", "00");
    EXPECT_EQ(fieldText(errors.records[0].segmentId), "UnorderedGroup 2000 of the bill");
    EXPECT_EQ(report(errors).substr(15, 8), "Unordere");
}

TEST(ErrorInfos, reports_a_segText_of_four_characters_with_three) {
    ErrorInfos errors;
    errors.add(1, 0, "NM1", "4", "", "NONE", "RULE", "ERROR", "Element Text", "00");
    EXPECT_EQ(report(errors).substr(38, 4), "RUL ");
}

TEST(ErrorInfos, fills_every_text_column_up_on_the_right) {
    ErrorInfos errors;
    errors.add(1, 2, "A", "B", "C", "D", "E", "F", "G", "H");
    EXPECT_EQ(report(errors),
              "0000000001"
              "002"
              "H "
              "A       "
              "B    "
              "C     "
              "D   "
              "E   "
              "F" +
                  blanks(79) + "G" + blanks(49) + "$");
}

TEST(ErrorInfos, reports_in_the_order_of_arrival) {
    ErrorInfos errors;
    for (int number : {3, 1, 2})
        addFinding(errors, number);
    std::string const lines = report(errors);
    EXPECT_EQ(lines.size(), 3U * 173U);
    EXPECT_EQ(lines.substr(0, 10), "0000000003");
    EXPECT_EQ(lines.substr(173, 10), "0000000001");
    EXPECT_EQ(lines.substr(346, 10), "0000000002");
}

TEST(ErrorInfos, without_a_record_has_an_empty_report) {
    ErrorInfos const errors;
    EXPECT_EQ(errors.reportLength(), 0U);
}

TEST(ErrorInfos, reports_only_the_records_below_a_count_that_was_set_back) {
    ErrorInfos errors;
    for (int number = 1; number <= 5; ++number)
        addFinding(errors, number);
    errors.count = 2;
    EXPECT_EQ(notation(errors), (Texts{"1 NM1 1@1000A", "2 NM1 1@1000A"}));
    EXPECT_EQ(report(errors).size(), 2U * 173U);
    EXPECT_EQ(errors.records[4].lineNumber, 5);
    addFinding(errors, 9);
    EXPECT_EQ(notation(errors), (Texts{"1 NM1 1@1000A", "2 NM1 1@1000A", "9 NM1 1@1000A"}));
}

TEST(ErrorInfos, prints_a_number_that_is_too_wide_for_its_column_whole) {
    ErrorInfos errors;
    addFinding(errors, -5);
    addFinding(errors, 6);
    errors.add(7, 1000, "NM1", "1", "1000A", "NONE", "SEG", "ERROR", "Element Text", "00");
    errors.add(8, -2, "NM1", "1", "1000A", "NONE", "SEG", "ERROR", "Element Text", "00");
    std::string const lines = report(errors);
    EXPECT_EQ(lines.size(), 174U + 173U + 174U + 174U);
    EXPECT_EQ(lines.substr(0, 14), "-0000000005000");
    EXPECT_EQ(lines.substr(174, 13), "0000000006000");
    EXPECT_EQ(lines.substr(347, 14), "00000000071000");
    EXPECT_EQ(lines.substr(521, 14), "0000000008-002");
}

TEST(ErrorCodes, are_the_digits_that_hosts_read) {
    EXPECT_STREQ(ERR_SEG_TOO_FEW, "1");
    EXPECT_STREQ(ERR_SEG_OUT_OF_SEQUENCE, "2");
    EXPECT_STREQ(ERR_SEG_MISSING_MANDATORY, "3");
    EXPECT_STREQ(ERR_LOOP_MISSING_INITIATOR, "3");
    EXPECT_STREQ(ERR_LOOP_TOO_MANY_ITERATION, "4");
    EXPECT_STREQ(ERR_SEG_EXCEED_LIMIT, "5");
    EXPECT_STREQ(ERR_LOOP_MISSING_ID, "7");
    EXPECT_STREQ(ERR_SEG_DATA_ELEMENT, "8");
}

TEST(ErrorNames, have_a_numbering_of_their_own) {
    char const* const names[] = {"",
                                 "ERR_LOOP_EXCEED_LIMIT",
                                 "ERR_LOOP_MISSING_INITIATOR",
                                 "ERR_LOOP_TOO_MANY_ITERATION",
                                 "ERR_SEG_OUT_OF_SEQUENCE",
                                 "ERR_SEG_EXCEED_LIMIT",
                                 "ERR_SEG_MISSING_MANDATORY",
                                 "ERR_SEG_TOO_FEW",
                                 "ERR_LOOP_MISSING_ID",
                                 "ERR_SEG_DATA_ELEMENT"};
    ASSERT_EQ(std::size(errtab), std::size(names));
    for (std::size_t index = 0; index < std::size(names); ++index)
        EXPECT_STREQ(errtab[index], names[index]);
}

}  // namespace
