// Loop: what a record means to a loop, and the walk of one iteration behind its initiator.
#include <gtest/gtest.h>

#include "treewalk.h"

namespace {

// One loop of an initiator, an optional and a mandatory child.
constexpr char claim[] =
    "2M|1|1|ST$"
    "O|0|2|Loop 1000A$ M|1|1|NM1$ O|0|2|PER$ M|1|1|REF$ M|0|0|EndLoop$"
    "M|1|1|SE$";

TEST(Loop, lists_its_initiator_and_its_children_under_its_id) {
    expectWalk(claim, {"ST", "NM1/AA", "PER", "REF/BB", "SE"}, {},
               {"ST@", "NM1/AA@1000A", "PER@1000A", "REF/BB@1000A", "SE@"});
}

TEST(Loop, lists_its_initiator_with_the_text_of_the_record) {
    TreeWalk walk(claim, {"ST", "NM1", "REF", "SE"});
    walk.run();
    ASSERT_EQ(walk.root.segLists->count, 4);
    EXPECT_STREQ(walk.root.segLists->data[1].elements.text, "NM1*2");
    EXPECT_STREQ(walk.root.segLists->data[2].elements.text, "REF*3");
}

TEST(Loop, begins_an_iteration_without_initiator_at_a_later_child) {
    expectWalk(claim, {"ST", "NM1", "REF", "PER", "SE"}, {"4 NM1 3@1000A", "5 REF 3@1000A", "5 REF 1@1000A"},
               {"ST@", "NM1@1000A", "REF@1000A", "PER@Loop 1", "SE@"});
}

TEST(Loop, begins_an_iteration_without_initiator_though_none_came_before) {
    expectWalk(claim, {"ST", "REF", "SE"}, {"2 NM1 3@1000A"}, {"ST@", "REF@Loop 1", "SE@"});
}

TEST(Loop, claims_a_record_that_a_later_child_of_its_parent_would_take_as_well) {
    expectWalk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ O|0|1|REF$ M|0|0|EndLoop$ O|0|1|REF$", {"ST", "REF"},
               {"2 NM1 3@1000A", "3  2@LOOP"}, {"ST@", "REF@Loop 1"});
}

TEST(Loop, keeps_the_limit_finding_of_a_clean_iteration_and_goes_on) {
    expectWalk(claim, {"ST", "NM1", "REF", "NM1", "REF", "NM1", "REF", "SE"}, {"6 NM1 4@1000A"},
               {"ST@", "NM1@1000A", "REF@1000A", "NM1@1000A", "REF@1000A", "NM1@1000A", "REF@1000A", "SE@"});
}

TEST(Loop, drops_the_findings_of_an_iteration_beyond_the_limit_and_leaves_its_last_record_to_the_parent) {
    expectWalk(claim, {"ST", "NM1", "REF", "NM1", "REF", "NM1", "PER", "SE"}, {"7 PER 2@LOOP"},
               {"ST@", "NM1@1000A", "REF@1000A", "NM1@1000A", "REF@1000A", "NM1@1000A", "PER@1000A"});
}

TEST(Loop, leaves_the_initiator_to_the_parent_where_the_iteration_beyond_the_limit_consumed_nothing_else) {
    expectWalk(claim, {"ST", "NM1", "REF", "NM1", "REF", "NM1", "SE"}, {"6 NM1 2@LOOP"},
               {"ST@", "NM1@1000A", "REF@1000A", "NM1@1000A", "REF@1000A", "NM1@1000A"});
}

TEST(Loop, offers_a_record_consumed_beyond_the_limit_to_the_next_child_of_its_parent) {
    expectWalk("2M|1|1|ST$ O|0|1|Loop 1000A$ M|1|1|NM1$ O|0|1|PER$ M|0|1|REF$ M|0|0|EndLoop$ O|0|1|PER$ M|1|1|SE$",
               {"ST", "NM1", "REF", "NM1", "PER", "SE"}, {},
               {"ST@", "NM1@1000A", "REF@1000A", "NM1@1000A", "PER@1000A", "PER@", "SE@"});
}

TEST(Loop, of_its_initiator_alone_is_reported_as_a_segment_beyond_its_limit) {
    expectWalk("2M|1|1|ST$ O|0|1|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$ M|1|1|SE$", {"ST", "NM1", "NM1", "NM1", "SE"},
               {"3 NM1 5@1000A", "4 NM1 5@1000A"}, {"ST@", "NM1@1000A", "NM1@1000A", "NM1@1000A", "SE@"});
}

TEST(Loop, has_no_limit_with_a_maxRepeat_of_0) {
    Texts records{"ST"};
    records.insert(records.end(), 50, "NM1");
    TreeWalk walk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$ M|1|1|SE$", records);
    walk.run();
    EXPECT_EQ(walk.node({1}).repeatCount, 50);
    EXPECT_EQ(walk.findings(), (Texts{"52  2@LOOP"}));
}

TEST(Loop, counts_an_iteration_without_initiator_against_its_limit_behind_the_initiator_finding) {
    expectWalk("2M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL$ O|0|1|NM1$ O|0|1|REF$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "HL", "REF", "NM1", "SE"}, {"4 HL 3@2000A", "4 HL 4@2000A"},
               {"ST@", "HL@2000A", "REF@2000A", "NM1@Loop 2", "SE@"});
}

TEST(Loop, keeps_the_findings_of_an_iteration_without_initiator_beyond_the_limit) {
    expectWalk("2M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL$ O|0|1|NM1$ M|0|1|REF$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "HL", "REF", "NM1", "SE"}, {"4 HL 3@2000A", "4 HL 4@2000A", "5 REF 3@2000A"},
               {"ST@", "HL@2000A", "REF@2000A", "NM1@Loop 2", "SE@"});
}

TEST(Loop, clears_the_counters_of_its_children_at_each_iteration) {
    // A limit holds within one iteration.
    expectWalk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ O|0|1|PER$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "NM1", "PER", "NM1", "PER", "SE"}, {},
               {"ST@", "NM1@1000A", "PER@1000A", "NM1@1000A", "PER@1000A", "SE@"});
    // What an earlier iteration had does not stand for a later one.
    expectWalk(claim, {"ST", "NM1", "REF", "NM1", "SE"}, {"5 REF 3@1000A", "5 REF 1@1000A"},
               {"ST@", "NM1@1000A", "REF@1000A", "NM1@1000A", "SE@"});
    // A nested loop counts within one iteration of its parent.
    expectWalk(
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ O|0|1|Loop 2010A$ M|1|1|NM1$ M|0|0|EndLoop$ M|0|0|EndLoop$ M|1|1|SE$",
        {"ST", "HL", "NM1", "HL", "NM1", "SE"}, {}, {"ST@", "HL@2000A", "NM1@2010A", "HL@2000A", "NM1@2010A", "SE@"});
}

TEST(Loop, clears_the_counters_of_the_later_children_in_an_iteration_without_initiator) {
    expectWalk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ O|0|1|PER$ O|0|1|REF$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "NM1", "PER", "REF", "PER", "REF", "SE"}, {"5 NM1 3@1000A"},
               {"ST@", "NM1@1000A", "PER@1000A", "REF@1000A", "PER@Loop 1", "REF@Loop 1", "SE@"});
}

TEST(Loop, keeps_its_own_counters_under_the_root) {
    TreeWalk walk(claim, {"ST", "NM1", "REF", "NM1", "REF", "SE"});
    walk.run();
    EXPECT_EQ(walk.node({1}).repeatCount, 2);
}

TEST(Loop, makes_itself_the_context_of_its_initiator_in_both_kinds_of_iteration) {
    for (char const* first : {"NM1", "REF"}) {
        TreeWalk walk(claim, {"ST", first, "SE"});
        walk.run();
        EXPECT_EQ(walk.node({1}).repeatCount, 1);
        EXPECT_EQ(walk.node({1, 0}).context, &walk.node<Loop>({1})) << first;
        EXPECT_EQ(walk.node({1, 2}).context, &walk.node<Loop>({1})) << first;
    }
}

// The identifier of a record under an initiator that knows some.
constexpr char level[] =
    "2M|1|1|ST$"
    "O|0|1|Loop 2000A$ M|1|1|HL|20|21$ O|0|1|NM1$ M|0|0|EndLoop$"
    "M|1|1|SE$";

TEST(Loop, takes_the_identifiers_of_its_initiator_and_no_others) {
    expectWalk(level, {"ST", "HL/20", "SE"}, {}, {"ST@", "HL/20@2000A", "SE@"});
    expectWalk(level, {"ST", "HL/21", "SE"}, {}, {"ST@", "HL/21@2000A", "SE@"});
    expectWalk(level, {"ST", "HL/22", "SE"}, {"2 HL 2@LOOP"}, {"ST@"});
    // The start of a known one.
    expectWalk(level, {"ST", "HL/2", "SE"}, {"2 HL 2@LOOP"}, {"ST@"});
    // A known one and more.
    expectWalk(level, {"ST", "HL/200", "SE"}, {"2 HL 2@LOOP"}, {"ST@"});
    expectWalk(level, {"ST", "HL", "SE"}, {}, {"ST@", "HL@2000A", "SE@"});
}

TEST(Loop, does_not_look_at_identifiers_where_its_initiator_has_none) {
    expectWalk("2M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL$ M|0|0|EndLoop$ M|1|1|SE$", {"ST", "HL/99", "SE"}, {},
               {"ST@", "HL/99@2000A", "SE@"});
}

TEST(Loop, accepts_every_identifier_where_slot_0_of_its_initiator_is_empty) {
    TreeWalk walk(level, {"ST", "HL/99", "SE"});
    walk.node({1, 0}).identifierOffsets[0] = 0;
    walk.run();
    EXPECT_EQ(walk.findings(), Texts{});
}

TEST(Loop, finds_an_identifier_behind_an_empty_slot) {
    TreeWalk walk(level, {"ST", "HL/20", "SE"});
    auto& offsets = walk.node({1, 0}).identifierOffsets;
    offsets[19] = offsets[0];
    offsets[0] = offsets[1];
    offsets[1] = 0;
    walk.run();
    EXPECT_EQ(walk.findings(), Texts{});
    EXPECT_EQ(walk.lines(), (Texts{"ST@", "HL/20@2000A", "SE@"}));
}

TEST(Loop, tells_loops_with_the_same_initiator_apart_by_their_identifiers) {
    expectWalk(
        "2M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL|20$ O|0|1|Loop 2000B$ M|1|1|HL|22$ M|0|0|EndLoop$ M|0|0|EndLoop$"
        "M|1|1|SE$",
        {"ST", "HL/20", "HL/22", "SE"}, {}, {"ST@", "HL/20@2000A", "HL/22@2000B", "SE@"});
}

TEST(Loop, is_matched_by_the_id_alone_in_kind_1) {
    TreeWalk walk("1M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL|20$ M|0|0|EndLoop$ M|1|1|SE$", {"ST", "HL", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), Texts{});
    EXPECT_EQ(walk.node({1}).repeatCount, 1);
    EXPECT_EQ(walk.node({1}).unidentifiedCount, 0);
}

TEST(Loop, counts_its_iterations_without_identifier) {
    TreeWalk walk(level, {"ST", "HL", "HL/20", "HL", "SE"});
    walk.run();
    EXPECT_EQ(walk.node({1}).repeatCount, 3);
    EXPECT_EQ(walk.node({1}).unidentifiedCount, 2);
}

TEST(Loop, does_not_count_iterations_without_identifier_against_its_limit) {
    // 2 iterations, both without identifier: 1 < 2 - 2 is false.
    expectWalk(level, {"ST", "HL", "HL", "SE"}, {}, {"ST@", "HL@2000A", "HL@2000A", "SE@"});
    // At the second 1 < 2 - 1 is false, at the third 1 < 3 - 1 holds.
    expectWalk(level, {"ST", "HL/20", "HL", "HL/21", "SE"}, {"4 HL 4@2000A"},
               {"ST@", "HL/20@2000A", "HL@2000A", "HL/21@2000A", "SE@"});
    expectWalk(level, {"ST", "HL/20", "HL/21", "SE"}, {"3 HL 4@2000A"}, {"ST@", "HL/20@2000A", "HL/21@2000A", "SE@"});
}

TEST(Loop, tells_of_an_identifier_that_it_does_not_know) {
    TreeWalk walk(level, {"ST", "HL/99", "SE"});
    walk.run();
    EXPECT_EQ(walk.node({1}).checkLoopId(), 1);
}

TEST(Loop, keeps_telling_of_an_unknown_identifier_to_the_end_of_the_offer_and_forgets_it_at_the_next) {
    TreeWalk walk("2O|0|0|Loop 2000A$ M|1|1|HL|20$ O|0|1|HL$ M|0|0|EndLoop$", {"HL/99", "SE", "SE"});
    Loop& loop = walk.node<Loop>({0});
    auto const offerRecord = [&](int number) {
        walk.data.currentSegment = number;
        EXPECT_EQ(loop.validateLoop(&walk.data, walk.data.onOffer().segmentId, nullptr, nullptr, 2,
                                    walk.root.identifierBuffer),
                  0);
    };
    // The later child named HL claims the record; SE, which ends the iteration, is no miss of its own.
    offerRecord(1);
    EXPECT_EQ(walk.findings(), (Texts{"1 HL 3@2000A"}));
    EXPECT_EQ(walk.data.currentSegment, 2);
    EXPECT_EQ(loop.checkLoopId(), 1);
    offerRecord(3);
    EXPECT_EQ(loop.checkLoopId(), 0);
}

TEST(Loop, tells_of_no_missing_loop_id_for_another_segment) {
    TreeWalk walk(level, {"ST", "REF/99", "SE"});
    walk.run();
    EXPECT_EQ(walk.node({1}).checkLoopId(), 0);
}

TEST(Loop, returns_a_rejected_record_at_once_with_noInitiatorSearch) {
    TreeWalk miss("2D  M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL|20$ O|0|1|NM1$ M|0|0|EndLoop$ M|1|1|SE$",
                  {"ST", "HL/99", "SE"});
    miss.run();
    EXPECT_EQ(miss.node({1}).checkLoopId(), 0);
    EXPECT_EQ(miss.findings(), (Texts{"2 HL 2@LOOP"}));

    expectWalk("2M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL$ O|0|1|NM1$ M|0|0|EndLoop$ O|0|1|NM1$ M|1|1|SE$",
               {"ST", "NM1", "SE"}, {"2 HL 3@2000A"}, {"ST@", "NM1@Loop 2", "SE@"});
    expectWalk("2D  M|1|1|ST$ O|0|1|Loop 2000A$ M|1|1|HL$ O|0|1|NM1$ M|0|0|EndLoop$ O|0|1|NM1$ M|1|1|SE$",
               {"ST", "NM1", "SE"}, {}, {"ST@", "NM1@", "SE@"});
}

TEST(Loop, claims_for_the_object_name_of_a_group_and_not_for_the_initiator_of_a_nested_loop) {
    expectWalk(
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ O|0|0|UnorderedGroup 2010$ O|0|0|Loop 2010A$ M|1|1|NM1$"
        "M|0|0|EndLoop$ M|0|0|EndUnorderedGroup$ M|0|0|EndLoop$ M|1|1|SE$",
        {"ST", "NM1", "SE"}, {"2 HL 3@2000A"}, {"ST@", "NM1@2010A", "SE@"});
    expectWalk(
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ O|0|0|Loop 2010A$ M|1|1|NM1$ M|0|0|EndLoop$ M|0|0|EndLoop$ M|1|1|SE$",
        {"ST", "NM1", "SE"}, {"2 NM1 2@LOOP"}, {"ST@"});
}

TEST(Loop, that_begins_with_a_loop_takes_that_loops_name_and_identifiers_for_its_initiator) {
    constexpr char grammar[] =
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|Loop 2010A|20$ M|1|1|HL|99$ M|0|0|EndLoop$ O|0|1|NM1$ M|0|0|EndLoop$ "
        "M|1|1|SE$";
    expectWalk(grammar, {"ST", "HL/20", "NM1", "SE"}, {}, {"ST@", "HL/20@2000A", "NM1@2000A", "SE@"});
    expectWalk(grammar, {"ST", "HL/99", "SE"}, {"2 HL 2@LOOP"}, {"ST@"});
}

TEST(Loop, without_children_accepts_nothing_the_end_of_the_data_included) {
    TreeWalk walk("2M|1|1|ST$ O|0|0|Loop 2000A$ M|0|0|EndLoop$ M|1|1|SE$", {"ST", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"2 NM1 2@LOOP"}));
    walk.data.currentSegment = 4;
    EXPECT_EQ(walk.node({1}).validateLoop(&walk.data, walk.data.onOffer().segmentId, nullptr, nullptr, 2,
                                          walk.root.identifierBuffer),
              0);
    EXPECT_EQ(walk.data.currentSegment, 4);
    EXPECT_EQ(walk.node({1}).repeatCount, 0);
}

TEST(Loop, ends_a_cycle_that_consumes_nothing_at_its_first_repetition) {
    // The plain segment at the head of the group claims REF for the loop and never consumes it.
    expectWalk(
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ O|0|0|UnorderedGroup 2010$ O|0|0|REF$ M|0|0|EndUnorderedGroup$"
        "M|0|0|EndLoop$ M|1|1|SE$",
        {"ST", "HL", "REF", "SE"}, {"3 HL 3@2000A", "3 REF 2@LOOP"}, {"ST@", "HL@2000A", "REF@Unorde", "REF@Unorde"});
}

// One iteration, walked by itself.
int cursorBehindIteration(TreeWalk& walk, char const* loopContext, int initiator) {
    walk.data.currentSegment = initiator;
    Loop& loop = walk.node<Loop>({1});
    loop.validateStructure(&walk.data, nullptr, nullptr, loopContext, walk.root.grammarKind,
                           walk.root.identifierBuffer);
    return walk.data.currentSegment;
}

TEST(LoopIteration, of_an_initiator_alone_offers_nothing_and_leaves_the_cursor_on_it) {
    TreeWalk walk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$", {"ST", "NM1", "NM1", "SE"});
    EXPECT_EQ(cursorBehindIteration(walk, "1000A", 2), 2);
    EXPECT_EQ(walk.lines(), Texts{});
    EXPECT_EQ(walk.node<Loop>({1}).currentChild, 1);
}

TEST(LoopIteration, stops_one_record_short_of_the_first_that_it_did_not_consume) {
    TreeWalk walk(claim, {"ST", "NM1", "PER", "PER", "REF", "SE"});
    EXPECT_EQ(cursorBehindIteration(walk, "1000A", 2), 5);
    EXPECT_EQ(walk.lines(), (Texts{"PER@1000A", "PER@1000A", "REF@1000A"}));
    EXPECT_EQ(walk.node<Loop>({1}).currentChild, 2);
}

TEST(LoopIteration, begins_anew_behind_the_initiator_each_time) {
    TreeWalk walk(claim, {"ST", "NM1", "REF", "NM1", "SE"});
    cursorBehindIteration(walk, "1000A", 2);
    EXPECT_EQ(walk.node<Loop>({1}).currentChild, 2);
    cursorBehindIteration(walk, "1000A", 4);
    EXPECT_EQ(walk.node<Loop>({1}).currentChild, 1);
}

TEST(LoopIteration, absorbs_the_repeats_of_a_child_and_never_looks_back) {
    expectWalk("2M|1|1|ST$ O|0|1|Loop 1000A$ M|1|1|NM1$ O|0|0|PER$ O|0|0|REF$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "NM1", "PER", "PER", "PER", "REF", "REF", "SE"}, {},
               {"ST@", "NM1@1000A", "PER@1000A", "PER@1000A", "PER@1000A", "REF@1000A", "REF@1000A", "SE@"});
}

TEST(LoopIteration, offers_each_record_behind_a_nested_loop_to_the_next_child) {
    expectWalk(
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ O|0|0|Loop 2010A$ M|1|1|NM1$ M|0|0|EndLoop$ O|0|1|REF$"
        "M|0|0|EndLoop$ M|1|1|SE$",
        {"ST", "HL", "NM1", "NM1", "REF", "SE"}, {}, {"ST@", "HL@2000A", "NM1@2010A", "NM1@2010A", "REF@2000A", "SE@"});
}

TEST(LoopIteration, steps_over_notes_with_skipNotes) {
    // NTE is a child of the loop, and is still never offered.
    TreeWalk walk("12003M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|1|1|NTE$ M|1|1|REF$ M|0|0|EndLoop$ M|1|1|SE$",
                  {"ST", "NM1", "NTE", "NTE", "REF", "SE"});
    ASSERT_EQ(walk.root.flags, skipNotes);
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"5 NTE 3@1000A", "5 NTE 1@1000A"}));
    EXPECT_EQ(walk.node({1, 2}).repeatCount, 1);
}

TEST(LoopIteration, reports_a_missing_child_with_minRepeat_twice_under_the_same_number) {
    expectWalk(claim, {"ST", "NM1", "PER", "SE"}, {"4 REF 3@1000A", "4 REF 1@1000A"},
               {"ST@", "NM1@1000A", "PER@1000A", "SE@"});
}

TEST(LoopIteration, reports_too_few_of_a_child_also_where_there_is_none) {
    constexpr char two[] = "2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ O|2|0|PER$ O|0|0|REF$ M|0|0|EndLoop$ M|1|1|SE$";
    constexpr char one[] = "2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ O|1|0|PER$ M|0|0|EndLoop$ M|1|1|SE$";
    expectWalk(two, {"ST", "NM1", "PER", "REF", "SE"}, {"4 PER 1@1000A"},
               {"ST@", "NM1@1000A", "PER@1000A", "REF@1000A", "SE@"});
    expectWalk(two, {"ST", "NM1", "PER", "PER", "SE"}, {}, {"ST@", "NM1@1000A", "PER@1000A", "PER@1000A", "SE@"});
    expectWalk(one, {"ST", "NM1", "SE"}, {"3 PER 1@1000A"}, {"ST@", "NM1@1000A", "SE@"});
    // Mandatory without minRepeat.
    expectWalk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|PER$ M|0|0|EndLoop$ M|1|1|SE$", {"ST", "NM1", "SE"},
               {"3 PER 3@1000A"}, {"ST@", "NM1@1000A", "SE@"});
}

TEST(LoopIteration, reports_a_nested_loop_under_its_initiator_by_the_number_of_its_iterations) {
    constexpr char grammar[] =
        "2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ M|2|0|Loop 2010A$ M|1|1|NM1$ M|0|0|EndLoop$ M|0|0|EndLoop$ M|1|1|SE$";
    expectWalk(grammar, {"ST", "HL", "SE"}, {"3 NM1 3@2000A", "3 NM1 1@2000A"}, {"ST@", "HL@2000A", "SE@"});
    expectWalk(grammar, {"ST", "HL", "NM1", "SE"}, {"4 NM1 1@2000A"}, {"ST@", "HL@2000A", "NM1@2010A", "SE@"});
    expectWalk(grammar, {"ST", "HL", "NM1", "NM1", "SE"}, {}, {"ST@", "HL@2000A", "NM1@2010A", "NM1@2010A", "SE@"});
}

TEST(LoopIteration, exempts_trailers_from_its_reports) {
    expectWalk(
        "2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|2|0|SE$ M|2|0|UNT$ M|2|0|Loop 1010A$ M|1|1|SE$ M|0|0|EndLoop$"
        "M|0|0|EndLoop$ O|0|1|REF$",
        {"ST", "NM1", "REF"}, {}, {"ST@", "NM1@1000A", "REF@"});
}

TEST(LoopIteration, reports_with_the_id_from_its_sixth_character_on_where_it_does_not_begin_with_a_digit) {
    auto const grammar = [](std::string const& name) {
        return "2M|1|1|ST$ O|0|0|" + name + "$ M|1|1|NM1$ O|0|1|PER$ M|0|1|REF$ M|0|0|EndLoop$ M|1|1|SE$";
    };
    struct Row {
        char const* name;
        char const* normal;
        char const* withoutInitiator;
    };
    for (Row row : {Row{"Loop 1000A", "1000A", "1000A"}, Row{"Loop ABCDE", "", "ABCDE"},
                    Row{"Loop ABCDEFG", "FG", "ABCDEF"}, Row{"Loop", "", ""}}) {
        TreeWalk normal(grammar(row.name), {"ST", "NM1", "SE"});
        normal.run();
        EXPECT_EQ(normal.findings(), (Texts{std::string("3 REF 3@") + row.normal})) << row.name;
        TreeWalk claimed(grammar(row.name), {"ST", "PER", "SE"});
        claimed.run();
        EXPECT_EQ(claimed.findings(), (Texts{std::string("2 NM1 3@") + row.withoutInitiator,
                                             std::string("3 REF 3@") + row.withoutInitiator}))
            << row.name;
    }
}

TEST(LoopIteration, checks_its_remaining_children_at_the_end_of_the_data) {
    expectWalk(claim, {"ST", "NM1"}, {"3 REF 3@1000A", "3 REF 1@1000A", "3  2@LOOP"}, {"ST@", "NM1@1000A"});
}

TEST(LoopIteration, leaves_a_record_of_a_passed_child_to_its_loop) {
    // PER stands behind REF, which it may not: the loop claims it for an iteration of its own.
    expectWalk(claim, {"ST", "NM1", "REF", "PER", "REF", "SE"}, {"4 NM1 3@1000A"},
               {"ST@", "NM1@1000A", "REF@1000A", "PER@Loop 1", "REF@Loop 1", "SE@"});
}

}  // namespace
