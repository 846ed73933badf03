// DataSegment: the records of a message, their layout and the empty record behind the last one.
#include "walk/datasegment.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "layout.h"

namespace {

TEST(SegmentData, has_its_fields_at_fixed_places) {
    EXPECT_EQ(offsetof(SegmentData, segmentId), 0U);
    EXPECT_EQ(sizeof(SegmentData::segmentId), 32U);
    EXPECT_EQ(offsetof(SegmentData, position), 32U);
    EXPECT_EQ(offsetof(SegmentData, identifierOffsets), 36U);
    EXPECT_EQ(sizeof(SegmentData::identifierOffsets), 80U);
    EXPECT_EQ(offsetof(SegmentData, text), 120U);
    EXPECT_EQ(sizeof(SegmentData), 128U);
}

TEST(DataSegment, consists_of_cursor_records_and_their_number) {
    DataSegment const data;
    EXPECT_TRUE(lieInOrder(data.currentSegment, data.segments, data.recordCount));
    EXPECT_TRUE(std::has_virtual_destructor_v<DataSegment>);
}

TEST(DataSegment, begins_in_front_of_no_records) {
    DataSegment const data;
    EXPECT_EQ(data.currentSegment, 0);
    EXPECT_EQ(data.recordCount, 0);
    EXPECT_EQ(data.segments.size, 0);
}

TEST(DataSegment, offers_the_record_whose_number_the_cursor_holds) {
    DataSegment data;
    data.segments.setSize(3, 10);
    std::strcpy(data.segments[0].segmentId, "ST");
    std::strcpy(data.segments[1].segmentId, "NM1");
    data.recordCount = 2;
    data.currentSegment = 1;
    EXPECT_STREQ(data.onOffer().segmentId, "ST");
    data.currentSegment = 2;
    EXPECT_STREQ(data.onOffer().segmentId, "NM1");
}

TEST(DataSegment, offers_an_empty_record_behind_the_last_one_and_grows_for_it) {
    DataSegment data;
    data.segments.setSize(2, 10);
    std::strcpy(data.segments[1].segmentId, "SE");
    data.recordCount = 2;
    data.currentSegment = 3;
    SegmentData const& record = data.onOffer();
    EXPECT_EQ(data.segments.size, 12);
    EXPECT_EQ(data.recordCount, 2);
    SegmentData const zeros = {};
    EXPECT_EQ(std::memcmp(&record, &zeros, sizeof zeros), 0);
    EXPECT_STREQ(data.segments[1].segmentId, "SE");
}

}  // namespace
