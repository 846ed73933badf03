// choiceLoop: the passes over an unordered group, its settlement and its limit.
#include <gtest/gtest.h>

#include "treewalk.h"

namespace {

/// A root of ST, the group and SE.
std::string around(std::string const& group) {
    return "2M|1|1|ST$" + group + "M|0|0|EndUnorderedGroup$ M|1|1|SE$";
}

/// A loop of its initiator and nothing else.
std::string loopOf(std::string const& head, std::string const& initiator) {
    return head + "$ M|1|1|" + initiator + "$ M|0|0|EndLoop$";
}

// Two loops with the same initiator: the first once and with a further child, the second for two identifiers.
std::string const levels = around(
    "O|0|0|UnorderedGroup 2000$"
    "O|0|1|Loop 2000A$ M|1|1|HL|20$ O|0|1|NM1$ M|0|0|EndLoop$" +
    loopOf("O|0|0|Loop 2000B", "HL|22|23"));

TEST(choiceLoop, takes_its_children_in_any_order) {
    expectWalk(levels, {"ST", "HL/22", "HL/20", "HL/23", "SE"}, {},
               {"ST@", "HL/22@2000B", "HL/20@2000A", "HL/23@2000B", "SE@"});
}

TEST(choiceLoop, steps_over_an_unknown_identifier_and_reports_it_twice) {
    expectWalk(levels, {"ST", "HL/20", "HL/99", "NM1", "HL/22", "SE"},
               {"3 HL 8@2000A", "3.3 HL 7@||||99|00", "4 HL 3@2000A", "4 HL 4@2000A"},
               {"ST@", "HL/20@2000A", "NM1@Loop 2", "HL/22@2000B", "SE@"});
}

TEST(choiceLoop, reports_an_unknown_identifier_that_comes_first) {
    expectWalk(levels, {"ST", "HL/99", "HL/20", "SE"}, {"2 HL 8@2000A", "2.3 HL 7@||||99|00"},
               {"ST@", "HL/20@2000A", "SE@"});
}

TEST(choiceLoop, reports_an_unknown_identifier_at_position_1_under_any_name_but_HL) {
    for (std::string const name : {"BHT", "ENT", "NM1", "HLX"}) {
        TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", name + "|20")),
                      {"ST", name + "/99", "SE"});
        walk.run();
        EXPECT_EQ(walk.findings(), (Texts{"2 " + name + " 8@2000A", "2.1 " + name + " 7@||||99|00"}));
    }
}

TEST(choiceLoop, reports_an_identifier_with_a_dollar_as_one_blank) {
    expectWalk(levels, {"ST", "HL/9$", "SE"}, {"2 HL 8@2000A", "2.3 HL 7@|||| |00"}, {"ST@", "SE@"});
}

TEST(choiceLoop, hands_a_record_of_another_id_back_to_its_parent) {
    expectWalk(levels, {"ST", "HL/20", "REF", "SE"}, {"3 REF 2@LOOP"}, {"ST@", "HL/20@2000A"});
}

TEST(choiceLoop, reports_no_unknown_identifier_with_noInitiatorSearch) {
    std::string grammar = levels;
    grammar.insert(1, "D  ");
    expectWalk(grammar, {"ST", "HL/20", "HL/99", "SE"}, {"3 HL 2@LOOP"}, {"ST@", "HL/20@2000A"});
}

TEST(choiceLoop, steps_over_notes_behind_an_unknown_identifier_with_skipNotes) {
    // In kind 1 no identifier is unknown, so the bit is set by hand.
    TreeWalk walk(levels, {"ST", "HL/99", "NTE", "HL/20", "SE"});
    for (ValidationContext* node :
         {static_cast<ValidationContext*>(&walk.root), static_cast<ValidationContext*>(&walk.node<choiceLoop>({1})),
          static_cast<ValidationContext*>(&walk.node<Loop>({1, 0})),
          static_cast<ValidationContext*>(&walk.node<Loop>({1, 1}))})
        node->flags = skipNotes;
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"2 HL 8@2000A", "2.3 HL 7@||||99|00"}));
    EXPECT_EQ(walk.lines(), (Texts{"ST@", "HL/20@2000A", "SE@"}));
}

TEST(choiceLoop, takes_the_identifier_of_an_enclosing_loop_for_an_unknown_one) {
    expectWalk("2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL|20$ O|0|0|UnorderedGroup 2000$" +
                   loopOf("O|0|0|Loop 2000B", "HL|22") + loopOf("O|0|0|Loop 2000C", "HL|23") +
                   "M|0|0|EndUnorderedGroup$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "HL/20", "HL/22", "HL/20", "HL/23", "SE"}, {"4 HL 8@2000B", "4.3 HL 7@||||20|00"},
               {"ST@", "HL/20@2000A", "HL/22@2000B", "HL/23@2000C", "SE@"});
}

TEST(choiceLoop, gives_a_record_to_the_first_child_that_accepts_it) {
    expectWalk(
        around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "HL") + loopOf("O|0|0|Loop 2000B", "HL|22")),
        {"ST", "HL/22", "SE"}, {}, {"ST@", "HL/22@2000A", "SE@"});
}

TEST(choiceLoop, lets_an_earlier_child_claim_a_record_by_its_later_children) {
    std::string const group = "O|0|0|UnorderedGroup 2000$ O|0|0|Loop 2000A$ M|1|1|NM1$ O|0|1|REF$ M|0|0|EndLoop$" +
                              loopOf("O|0|0|Loop 2000B", "REF");
    expectWalk(around(group), {"ST", "REF", "SE"}, {"2 NM1 3@2000A"}, {"ST@", "REF@Loop 2", "SE@"});
}

// Plain segments in a group count and list, and never consume.
TEST(choiceLoop, does_not_let_a_plain_segment_consume) {
    expectWalk(around("O|0|0|UnorderedGroup 2000$ O|0|0|REF$" + loopOf("O|0|0|Loop 2000A", "NM1")), {"ST", "REF", "SE"},
               {"2 REF 2@LOOP"}, {"ST@", "REF@Unorde"});
}

TEST(choiceLoop, lists_a_plain_segment_in_each_pass_and_reports_its_limit) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") + "O|0|1|REF$"),
                  {"ST", "NM1", "REF", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3 REF 5@eredGr", "3 REF 2@LOOP"}));
    EXPECT_EQ(walk.lines(), (Texts{"ST@", "NM1@2000A", "REF@Unorde", "REF@Unorde"}));
    // One occurrence of the loop, and the segment capped at its maxRepeat.
    EXPECT_EQ(walk.node({1}).repeatCount, 2);
}

TEST(choiceLoop, that_consumed_nothing_is_not_settled) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("M|2|0|Loop 2000A", "NM1")), {"ST", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), Texts{});
    EXPECT_EQ(walk.node({1}).repeatCount, 0);
}

TEST(choiceLoop, that_is_mandatory_and_consumed_nothing_is_reported_by_its_parent_under_its_object_name) {
    expectWalk(around("M|0|0|UnorderedGroup 2000$" + loopOf("M|2|0|Loop 2000A", "NM1")), {"ST", "SE"}, {"2 NM1 3@LOOP"},
               {"ST@", "SE@"});
}

TEST(choiceLoop, counts_its_occurrences_capped_child_by_child) {
    TreeWalk walk(
        around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|2|Loop 2000A", "NM1") + loopOf("O|0|0|Loop 2000B", "CLM")),
        {"ST", "NM1", "NM1", "NM1", "CLM", "CLM", "CLM", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"4 NM1 5@2000A"}));
    EXPECT_EQ(walk.node({1}).repeatCount, 5);
}

TEST(choiceLoop, reports_a_missing_loop_under_the_object_name_of_its_first_child) {
    TreeWalk walk(
        around("O|0|1|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") + loopOf("M|0|0|Loop 2000B", "CLM")),
        {"ST", "NM1", "SE"});
    walk.run();
    // The report raises the counts of the child and of the group, which brings the group beyond its limit.
    EXPECT_EQ(walk.findings(), (Texts{"3 NM1 3@2000B", "2 NM1 5@2000"}));
    EXPECT_EQ(walk.node({1, 1}).repeatCount, 1);
    EXPECT_EQ(walk.node({1}).repeatCount, 2);
}

TEST(choiceLoop, reports_a_missing_child_with_a_minRepeat_of_2_twice_with_the_same_code) {
    TreeWalk walk(
        around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") + loopOf("M|2|0|Loop 2000B", "CLM")),
        {"ST", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3 NM1 3@2000B", "3 NM1 3@2000B"}));
    EXPECT_EQ(walk.node({1, 1}).repeatCount, 2);
    EXPECT_EQ(walk.node({1}).repeatCount, 3);
}

TEST(choiceLoop, reports_a_missing_child_with_a_minRepeat_of_1_once) {
    expectWalk(
        around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") + loopOf("M|1|0|Loop 2000B", "CLM")),
        {"ST", "NM1", "SE"}, {"3 NM1 3@2000B"}, {"ST@", "NM1@2000A", "SE@"});
}

TEST(choiceLoop, reports_too_few_of_a_child_once_however_many_it_lacks) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|9|0|Loop 2000A", "NM1")), {"ST", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3 NM1 3@2000A"}));
    EXPECT_EQ(walk.node({1, 0}).repeatCount, 2);
    EXPECT_EQ(walk.node({1}).repeatCount, 2);
}

TEST(choiceLoop, reports_a_missing_segment_under_its_own_name_trailers_included) {
    expectWalk("2M|1|1|ST$ O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") +
                   "M|0|0|REFERENCE$ M|0|0|SE$ M|0|0|EndUnorderedGroup$ O|0|0|DTP$",
               {"ST", "NM1", "DTP"}, {"3 REFERENCE 3@ENCE", "3 SE 3@"}, {"ST@", "NM1@2000A", "DTP@"});
}

TEST(choiceLoop, renames_a_nested_group_to_its_bare_tail_when_it_settles_it) {
    std::string const group = "O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") +
                              "M|2|0|UnorderedGroup 2100$" + loopOf("O|0|0|Loop 2100A", "CLM") +
                              "M|0|0|EndUnorderedGroup$";
    TreeWalk missing(around(group), {"ST", "NM1", "SE"});
    missing.run();
    EXPECT_EQ(missing.findings(), (Texts{"3 2100 3@eredGr", "3 2100 3@eredGr"}));
    EXPECT_STREQ(missing.node({1, 1}).segmentId, "2100");

    TreeWalk present(around(group), {"ST", "NM1", "CLM", "CLM", "SE"});
    present.run();
    EXPECT_EQ(present.node({1, 1}).repeatCount, 2);
    EXPECT_EQ(present.findings(), Texts{});
    EXPECT_STREQ(present.node({1, 1}).segmentId, "2100");
}

TEST(choiceLoop, leaves_the_name_of_a_nested_group_alone_while_it_is_not_settled) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$ O|0|0|UnorderedGroup 2100$" + loopOf("O|0|0|Loop 2100A", "CLM") +
                         "M|0|0|EndUnorderedGroup$"),
                  {"ST", "SE"});
    walk.run();
    EXPECT_STREQ(walk.node({1, 0}).segmentId, "UnorderedGroup 2100");
}

TEST(choiceLoop, renames_a_nested_group_without_a_tail_to_nothing) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") + "M|0|0|UnorderedGroup$" +
                         loopOf("O|0|0|Loop 2100A", "CLM") + "M|0|0|EndUnorderedGroup$"),
                  {"ST", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3  3@eredGr"}));
    EXPECT_STREQ(walk.node({1, 1}).segmentId, "");
}

TEST(choiceLoop, renames_twice_where_the_tail_is_a_groups_name_again) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") +
                         "M|2|0|UnorderedGroup UnorderedGroup 7$" + loopOf("O|0|0|Loop 2100A", "CLM") +
                         "M|0|0|EndUnorderedGroup$"),
                  {"ST", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3 UnorderedGroup 7 3@eredGr", "3 7 3@eredGr"}));
    EXPECT_STREQ(walk.node({1, 1}).segmentId, "7");
}

// The limit of a group.
TEST(choiceLoop, reports_each_occurrence_beyond_its_limit_at_numbers_worked_back_from_the_cursor) {
    expectWalk(
        around("O|0|3|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1") + loopOf("O|0|0|Loop 2000B", "CLM")),
        {"ST", "NM1", "NM1", "CLM", "CLM", "CLM", "SE"}, {"5 NM1 5@2000", "6 NM1 5@2000"},
        {"ST@", "NM1@2000A", "NM1@2000A", "CLM@2000B", "CLM@2000B", "CLM@2000B", "SE@"});
}

TEST(choiceLoop, takes_the_code_of_its_limit_from_the_size_of_its_last_child) {
    std::string const single = loopOf("O|0|0|Loop 2000A", "NM1");
    std::string const pair = "O|0|0|Loop 2000B$ M|1|1|CLM$ O|0|1|DTP$ M|0|0|EndLoop$";
    expectWalk(around("O|0|1|UnorderedGroup 2000$" + single + pair), {"ST", "NM1", "CLM", "SE"}, {"3 NM1 4@2000"},
               {"ST@", "NM1@2000A", "CLM@2000B", "SE@"});
    expectWalk(around("O|0|1|UnorderedGroup 2000$" + pair + single), {"ST", "NM1", "CLM", "SE"}, {"3 CLM 5@2000"},
               {"ST@", "NM1@2000A", "CLM@2000B", "SE@"});
}

TEST(choiceLoop, names_itself_in_its_limit_by_its_tail_from_the_first_digit_on) {
    struct Row {
        char const* name;
        char const* text;
    };
    for (Row row : {Row{"UnorderedGroup 2000", "2000"}, Row{"UnorderedGroup AB12C", "12C"},
                    Row{"UnorderedGroup ABC", "LOOP"}, Row{"UnorderedGroup", "LOOP"}, Row{"UnorderedGroup ", "LOOP"},
                    Row{"UnorderedGroup7", "LOOP"}, Row{"UnorderedGroup L-12345678", "123456"}}) {
        TreeWalk walk(around("O|0|1|" + std::string(row.name) + "$" + loopOf("O|0|0|Loop 2000A", "NM1")),
                      {"ST", "NM1", "NM1", "SE"});
        walk.run();
        EXPECT_EQ(walk.findings(), (Texts{std::string("3 NM1 5@") + row.text})) << row.name;
    }
}

TEST(choiceLoop, has_no_limit_with_a_maxRepeat_of_0) {
    Texts records{"ST"};
    records.insert(records.end(), 40, "NM1");
    records.push_back("SE");
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2000A", "NM1")), records);
    walk.run();
    EXPECT_EQ(walk.findings(), Texts{});
    EXPECT_EQ(walk.node({1}).repeatCount, 40);
}

TEST(choiceLoop, reports_its_limit_anew_at_each_walk_once_its_count_lies_beyond_it) {
    // The inner group is walked four times: it takes records 2, 4 and 6 and then nothing. It comes to its count of 2 at
    // the end of the second walk; the third begins beyond the limit; the fourth consumes nothing and reports all the
    // same.
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$ O|0|1|UnorderedGroup 2100$" + loopOf("O|0|0|Loop 2110", "NM1") +
                         "M|0|0|EndUnorderedGroup$" + loopOf("O|0|0|Loop 2200", "CLM")),
                  {"ST", "NM1", "CLM", "NM1", "CLM", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"4 NM1 5@2100",                                  //
                                      "7 NM1 5@2100", "5 NM1 5@2100", "6 NM1 5@2100",  //
                                      "5 NM1 5@2100", "6 NM1 5@2100"}));
    EXPECT_EQ(walk.node({1, 0}).repeatCount, 3);
    EXPECT_EQ(walk.node({1}).repeatCount, 3);
}

TEST(choiceLoop, takes_the_code_of_a_limit_reported_within_a_pass_from_the_number_of_its_children) {
    // As above, with an inner group of two children. Its last child is an initiator alone, which sets the code at the
    // end of a walk.
    TreeWalk walk(
        around("O|0|0|UnorderedGroup 2000$ O|0|1|UnorderedGroup 2100$" + loopOf("O|0|0|Loop 2110", "NM1") +
               loopOf("O|0|0|Loop 2120", "PER") + "M|0|0|EndUnorderedGroup$" + loopOf("O|0|0|Loop 2200", "CLM")),
        {"ST", "NM1", "CLM", "NM1", "CLM", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"4 NM1 5@2100",                                  //
                                      "7 NM1 4@2100", "5 NM1 5@2100", "6 NM1 5@2100",  //
                                      "5 NM1 5@2100", "6 NM1 5@2100"}));
}

TEST(choiceLoop, clears_the_counts_of_its_children_at_entry_and_leaves_their_unidentified_ones) {
    TreeWalk walk(around("O|0|0|UnorderedGroup 2000$" + loopOf("O|0|1|Loop 2000A", "HL|20")), {"ST", "HL", "SE"});
    Validator& loop = walk.node({1, 0});
    loop.repeatCount = 5;
    loop.unidentifiedCount = 3;
    walk.run();
    EXPECT_EQ(loop.repeatCount, 1);
    EXPECT_EQ(loop.unidentifiedCount, 4);
    EXPECT_EQ(walk.node({1}).repeatCount, 1);
}

TEST(choiceLoop, is_cleared_by_an_enclosing_loop_at_each_iteration) {
    expectWalk("2M|1|1|ST$ O|0|0|Loop 2000A$ M|1|1|HL$ O|0|1|UnorderedGroup 2000$" + loopOf("O|0|0|Loop 2010A", "NM1") +
                   "M|0|0|EndUnorderedGroup$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "HL", "NM1", "HL", "NM1", "SE"}, {},
               {"ST@", "HL@2000A", "NM1@2010A", "HL@2000A", "NM1@2010A", "SE@"});
}

TEST(choiceLoop, never_touches_its_parents_matched) {
    TreeWalk walk(levels, {"ST", "HL/20", "SE"});
    walk.root.matched = 5;
    walk.data.currentSegment = 2;
    walk.node({1}).context = &walk.root;
    EXPECT_EQ(walk.node({1}).validateLoop(&walk.data, walk.data.onOffer().segmentId, "20", nullptr, 2,
                                          walk.root.identifierBuffer),
              0);
    EXPECT_EQ(walk.root.matched, 5);
    EXPECT_EQ(walk.data.currentSegment, 3);
}

TEST(choiceLoop, without_children_accepts_nothing_and_reports_nothing) {
    expectWalk(around("O|0|1|UnorderedGroup 2000$"), {"ST", "SE"}, {}, {"ST@", "SE@"});
    expectWalk(around("O|0|1|UnorderedGroup 2000$"), {"ST", "NM1", "SE"}, {"2 NM1 2@LOOP"}, {"ST@"});
    // At the end of the data.
    expectWalk(around("O|0|1|UnorderedGroup 2000$"), {"ST"}, {}, {"ST@"});
}

TEST(choiceLoop, closes_at_the_end_of_the_data) {
    expectWalk(levels, {"ST", "HL/20"}, {"3  2@LOOP"}, {"ST@", "HL/20@2000A"});
}

}  // namespace
