// SegListSearch: every step of FindNext, and what the three searches compare.
#include "rules/seglistsearch.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "layout.h"
#include "rules/seglists.h"

namespace {

/// Lines 0 to 6: ST, NM1 and REF in 1000A, NM1 and REF in 2000A, REF in 1000A, SE.
class SegListSearchTest : public testing::Test {
protected:
    SegLists lines;

    SegListSearchTest() {
        lines.add("ST", nullptr, nullptr, nullptr);
        lines.add("NM1", nullptr, "1000A", nullptr);
        lines.add("REF", nullptr, "1000A", nullptr);
        lines.add("NM1", nullptr, "2000A", nullptr);
        lines.add("REF", nullptr, "2000A", nullptr);
        lines.add("REF", nullptr, "1000A", nullptr);
        lines.add("SE", nullptr, nullptr, nullptr);
    }
};

/// All hits up to the first miss.
std::vector<int> hits(SegListSearch& search, int last = -1) {
    std::vector<int> found;
    for (int line = search.FindNext(last); line != -1; line = search.FindNext(last))
        found.push_back(line);
    return found;
}

using Lines = std::vector<int>;

TEST_F(SegListSearchTest, consists_of_cursor_key_and_list) {
    SegListSegmentSearch const search(&lines, "NM1");
    EXPECT_TRUE(lieInOrder(search.cursor, search.key, search.list));
    EXPECT_EQ(sizeof search.key, 128U);
    EXPECT_TRUE(std::is_abstract_v<SegListSearch>);
    EXPECT_TRUE(std::has_virtual_destructor_v<SegListSearch>);
}

#ifdef EDIEXIT_KNOWS_VIRTUAL_SLOTS
TEST_F(SegListSearchTest, has_its_operations_in_order_behind_the_destructor) {
    EXPECT_EQ(virtualSlot(&SegListSearch::GetType), 2);
    EXPECT_EQ(virtualSlot(&SegListSearch::Compare), 3);
    EXPECT_EQ(virtualSlot(&SegListSearch::FindNext), -1);
}
#endif

TEST_F(SegListSearchTest, begins_in_front_of_the_first_line_with_a_key_filled_up_with_zeros) {
    SegListSegmentSearch const search(&lines, "NM1");
    EXPECT_EQ(search.cursor, -1);
    EXPECT_EQ(search.list, &lines);
    EXPECT_EQ(std::string(search.key, 128), "NM1" + std::string(125, '\0'));
}

TEST_F(SegListSearchTest, keeps_128_characters_of_its_key) {
    SegListSegmentSearch const search(&lines, std::string(200, 'k').c_str());
    EXPECT_EQ(std::string(search.key, 128), std::string(128, 'k'));
}

TEST_F(SegListSearchTest, tells_its_kind) {
    EXPECT_EQ(SegListSegmentSearch(&lines, "").GetType(), 1);
    EXPECT_EQ(SegListLoopSearch(&lines, "").GetType(), 2);
    EXPECT_EQ(SegListNotLoopSearch(&lines, "").GetType(), 3);
}

TEST_F(SegListSearchTest, compares_whole_texts) {
    SegListSegmentSearch segment(&lines, "");
    SegListLoopSearch loop(&lines, "");
    SegListNotLoopSearch notLoop(&lines, "");
    struct Row {
        char const* field;
        char const* key;
        int equal;
    };
    for (Row row : {Row{"NM1", "NM1", 1}, Row{"NM1", "NM", 0}, Row{"NM", "NM1", 0}, Row{"NM1", "nm1", 0},
                    Row{"", "NM1", 0}, Row{"", "", 1}}) {
        EXPECT_EQ(segment.Compare(row.field, row.key), row.equal) << row.field << " and " << row.key;
        EXPECT_EQ(loop.Compare(row.field, row.key), row.equal) << row.field << " and " << row.key;
        EXPECT_EQ(notLoop.Compare(row.field, row.key), 1 - row.equal) << row.field << " and " << row.key;
    }
}

TEST_F(SegListSearchTest, finds_the_lines_of_a_segment_ascending) {
    SegListSegmentSearch search(&lines, "REF");
    EXPECT_EQ(search.FindNext(-1), 2);
    EXPECT_EQ(search.cursor, 2);
    EXPECT_EQ(search.FindNext(-1), 4);
    EXPECT_EQ(search.FindNext(-1), 5);
    EXPECT_EQ(search.cursor, 5);
    EXPECT_EQ(search.FindNext(-1), -1);
}

TEST_F(SegListSearchTest, finds_the_lines_of_a_loop) {
    SegListLoopSearch search(&lines, "1000A");
    EXPECT_EQ(hits(search), (Lines{1, 2, 5}));
}

TEST_F(SegListSearchTest, finds_the_lines_outside_a_loop_those_at_the_root_included) {
    SegListNotLoopSearch search(&lines, "1000A");
    EXPECT_EQ(hits(search), (Lines{0, 3, 4, 6}));
}

TEST_F(SegListSearchTest, finds_the_lines_at_the_root_by_an_empty_loop_id_alone) {
    SegListLoopSearch atRoot(&lines, "");
    EXPECT_EQ(hits(atRoot), (Lines{0, 6}));
    for (char const* key : {"1000", "1000AB", "LOOP", " "}) {
        SegListLoopSearch search(&lines, key);
        EXPECT_EQ(hits(search), Lines{}) << key;
    }
}

TEST_F(SegListSearchTest, forgets_its_cursor_at_a_miss_and_begins_again_at_line_0) {
    SegListSegmentSearch search(&lines, "NM1");
    search.cursor = 3;
    EXPECT_EQ(search.FindNext(-1), -1);
    EXPECT_EQ(search.cursor, -1);
    EXPECT_EQ(search.FindNext(-1), 1);
}

TEST_F(SegListSearchTest, looks_behind_its_cursor_only) {
    SegListSegmentSearch search(&lines, "REF");
    search.cursor = 2;
    EXPECT_EQ(search.FindNext(-1), 4);
}

TEST_F(SegListSearchTest, looks_at_the_last_line_and_no_further) {
    SegListSegmentSearch search(&lines, "REF");
    EXPECT_EQ(hits(search, 4), (Lines{2, 4}));
    EXPECT_EQ(hits(search, 3), (Lines{2}));
    EXPECT_EQ(hits(search, 2), (Lines{2}));
    EXPECT_EQ(hits(search, 1), Lines{});
    EXPECT_EQ(hits(search, 0), Lines{});
}

TEST_F(SegListSearchTest, finds_nothing_where_the_last_line_does_not_lie_behind_the_cursor) {
    SegListSegmentSearch search(&lines, "REF");
    for (int last : {2, 1, 0, -2, -100}) {
        search.cursor = 2;
        EXPECT_EQ(search.FindNext(last), -1) << last;
        EXPECT_EQ(search.cursor, -1) << last;
    }
}

TEST_F(SegListSearchTest, finds_nothing_from_a_cursor_below_minus_1) {
    SegListSegmentSearch search(&lines, "ST");
    search.cursor = -2;
    EXPECT_EQ(search.FindNext(-1), -1);
    EXPECT_EQ(search.cursor, -1);
    EXPECT_EQ(search.FindNext(-1), 0);
}

TEST_F(SegListSearchTest, finds_nothing_from_the_last_line_on) {
    SegListNotLoopSearch search(&lines, "none");
    search.cursor = 6;
    EXPECT_EQ(search.FindNext(-1), -1);
    EXPECT_EQ(search.cursor, -1);
}

TEST_F(SegListSearchTest, finds_nothing_from_a_cursor_at_or_above_the_count_however_far_the_last_line) {
    for (int cursor : {7, 8, 100}) {
        SegListSegmentSearch search(&lines, "");
        search.cursor = cursor;
        EXPECT_EQ(search.FindNext(120), -1) << cursor;
        EXPECT_EQ(search.cursor, -1) << cursor;
    }
}

TEST_F(SegListSearchTest, scans_unused_lines_up_to_a_last_line_beyond_the_count) {
    SegListSegmentSearch search(&lines, "");
    EXPECT_EQ(search.FindNext(-1), -1);
    EXPECT_EQ(search.FindNext(6), -1);
    EXPECT_EQ(search.FindNext(9), 7);
    search.cursor = 6;
    EXPECT_EQ(search.FindNext(9), 7);
    SegListSegmentSearch named(&lines, "REF");
    EXPECT_EQ(hits(named, 100), (Lines{2, 4, 5}));
}

TEST_F(SegListSearchTest, grows_the_list_where_the_last_line_lies_beyond_its_capacity) {
    SegLists few;
    few.setSize(2, 10);
    few.add("ST", nullptr, "1000A", nullptr);
    few.add("SE", nullptr, "1000A", nullptr);
    SegListNotLoopSearch search(&few, "1000A");
    EXPECT_EQ(search.FindNext(4), 2);
    EXPECT_EQ(few.size, 12);
    EXPECT_EQ(few.count, 2);
}

TEST_F(SegListSearchTest, finds_nothing_in_an_empty_list) {
    SegLists none;
    SegListSegmentSearch segment(&none, "");
    SegListNotLoopSearch notLoop(&none, "1000A");
    EXPECT_EQ(segment.FindNext(-1), -1);
    EXPECT_EQ(notLoop.FindNext(-1), -1);
    EXPECT_EQ(none.size, 0);
}

TEST_F(SegListSearchTest, never_finds_a_segment_id_of_four_characters) {
    lines.add("NM10", nullptr, nullptr, nullptr);
    SegListSegmentSearch whole(&lines, "NM10");
    EXPECT_EQ(whole.FindNext(-1), -1);
    SegListSegmentSearch cut(&lines, "NM1");
    EXPECT_EQ(hits(cut), (Lines{1, 3, 7}));
}

/// A search that answers what it is told to, and remembers what it compared.
struct ToldSearch : SegListSearch {
    ToldSearch(SegLists& searched, int told, std::vector<int> results)
        : SegListSearch(&searched, "key"), type(told), answers(std::move(results)) {}
    int GetType() override { return type; }
    int Compare(char const* field, char const* searched) override {
        EXPECT_EQ(std::string(searched), "key");
        compared.emplace_back(field);
        return answers[compared.size() - 1];
    }
    int type;
    std::vector<int> answers;
    std::vector<std::string> compared;
};

TEST_F(SegListSearchTest, chooses_the_field_by_its_kind) {
    std::vector<int> const misses(7, 0);
    ToldSearch segment(lines, 1, misses);
    EXPECT_EQ(segment.FindNext(-1), -1);
    EXPECT_EQ(segment.compared, (std::vector<std::string>{"ST", "NM1", "REF", "NM1", "REF", "REF", "SE"}));
    for (int kind : {2, 3}) {
        ToldSearch loop(lines, kind, misses);
        EXPECT_EQ(loop.FindNext(-1), -1);
        EXPECT_EQ(loop.compared, (std::vector<std::string>{"", "1000A", "1000A", "2000A", "2000A", "1000A", ""}));
    }
}

TEST_F(SegListSearchTest, compares_nothing_for_another_kind) {
    for (int kind : {0, 4, -1}) {
        ToldSearch search(lines, kind, std::vector<int>(7, 1));
        search.cursor = 2;
        EXPECT_EQ(search.FindNext(-1), -1);
        EXPECT_EQ(search.compared.size(), 0U);
        EXPECT_EQ(search.cursor, -1);
    }
}

TEST_F(SegListSearchTest, ends_its_scan_at_a_result_other_than_0_which_is_a_hit_if_it_is_1) {
    ToldSearch hit(lines, 1, {0, 0, 1});
    EXPECT_EQ(hit.FindNext(-1), 2);
    EXPECT_EQ(hit.compared.size(), 3U);
    ToldSearch other(lines, 1, {0, 2});
    EXPECT_EQ(other.FindNext(-1), -1);
    EXPECT_EQ(other.compared.size(), 2U);
    EXPECT_EQ(other.cursor, -1);
}

}  // namespace
