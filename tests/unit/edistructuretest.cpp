// EDI_Structure: the walk of the root, its layout and the end of all that it owns.
#include <gtest/gtest.h>

#include <cstdlib>

#include "layout.h"
#include "probenode.h"
#include "treewalk.h"

namespace {

TEST(EDI_Structure, consists_of_kind_and_owned_objects_behind_its_two_bases) {
    EDI_Structure const root(1, nullptr, nullptr);
    ValidationContext const& context = root;
    EXPECT_TRUE(lieInOrder(context.segLists, root.grammarKind, root.dataSegment, root.rules, root.dataCopy,
                           root.identifierBuffer, root.xmlMessage, root.contents));
}

TEST(EDI_Structure, begins_mandatory_without_flags_and_with_the_id_of_its_kind) {
    for (int kind : {1, 2}) {
        EDI_Structure const root(kind, nullptr, nullptr);
        EXPECT_EQ(root.grammarKind, kind);
        EXPECT_STREQ(root.segmentId, kind == 1 ? "1X12" : "2X12");
        EXPECT_EQ(root.requirement, 'M');
        EXPECT_EQ(root.flags, 0U);
        EXPECT_EQ(root.currentChild, 0);
        EXPECT_EQ(root.position, 0);
        EXPECT_EQ(root.children.count, 0);
        EXPECT_EQ(root.dataSegment, nullptr);
        EXPECT_EQ(root.rules, nullptr);
        EXPECT_EQ(root.dataCopy, nullptr);
        EXPECT_EQ(root.identifierBuffer, nullptr);
        EXPECT_EQ(root.xmlMessage, nullptr);
        EXPECT_EQ(root.contents, nullptr);
    }
}

// The end of a root.
TEST(EDI_Structure, takes_down_its_records_its_findings_and_then_its_tree) {
    struct LoggingRecords : DataSegment {
        explicit LoggingRecords(Texts& endings) : log(&endings) {}
        ~LoggingRecords() override { log->push_back("records"); }
        Texts* log;
    };
    struct LoggingFindings : ErrorInfos {
        explicit LoggingFindings(Texts& endings) : log(&endings) {}
        ~LoggingFindings() override { log->push_back("findings"); }
        Texts* log;
    };
    Texts endings;
    {
        EDI_Structure root(2, new LoggingFindings(endings), new SegLists);
        root.dataSegment = new LoggingRecords(endings);
        root.dataCopy = static_cast<char*>(std::malloc(5));
        root.xmlMessage = static_cast<char*>(std::malloc(5));
        root.identifierBuffer = new IdentifierBuffer;
        root.identifierBuffer->add("20");
        root.segLists->add("ST", nullptr, nullptr, nullptr);
        root.segLists->add("NM1", nullptr, nullptr, nullptr);
        root.children.add(new ProbeNode(endings, "child"));
    }
    EXPECT_EQ(endings, (Texts{"records", "findings", "child"}));
}

TEST(EDI_Structure, ends_safely_after_its_tree_was_released_early) {
    Texts endings;
    {
        EDI_Structure root(2, new ErrorInfos, new SegLists);
        root.children.add(new ProbeNode(endings, "child"));
        root.deleteChildren();
        EXPECT_EQ(root.children.data, nullptr);
        EXPECT_EQ(root.children.count, 0);
        delete root.errorInfos;
        root.errorInfos = nullptr;
    }
    EXPECT_EQ(endings, (Texts{"child"}));
}

TEST(EDI_Structure, ends_with_a_tree_100000_deep_without_running_out_of_stack) {
    Texts endings;
    {
        EDI_Structure root(2, new ErrorInfos, new SegLists);
        ValidationContext* open = &root;
        for (int depth = 0; depth < 100'000; ++depth) {
            auto* loop = new Loop(0, root.errorInfos, root.segLists);
            open->children.add(loop);
            open = loop;
        }
        open->children.add(new ProbeNode(endings, "innermost"));
    }
    EXPECT_EQ(endings, (Texts{"innermost"}));
}

// The walk of the root.
TEST(RootWalk, locates_the_segments_of_a_clean_message_in_order) {
    expectWalk("2M|1|1|ST$ M|1|1|BHT$ O|0|2|REF$ M|1|1|SE$", {"ST", "BHT/AA", "REF", "REF", "SE"}, {},
               {"ST@", "BHT/AA@", "REF@", "REF@", "SE@"});
}

TEST(RootWalk, without_records_reports_only_what_stands_behind_its_first_child) {
    expectWalk("2M|1|1|ST$ O|0|1|BHT$ M|1|1|NM1$", {}, {"3 NM1 3@LOOP"}, {});
    // Trailers are exempt.
    expectWalk("2M|1|1|ST$ M|1|1|BHT$ M|1|1|SE$ M|1|1|UNT$", {}, {"2 BHT 3@LOOP"}, {});
}

TEST(RootWalk, without_children_has_no_place_for_the_first_record) {
    expectWalk("2", {"ST", "SE"}, {"1 ST 2@LOOP"}, {});
    expectWalk("2", {}, {}, {});
}

TEST(RootWalk, ends_at_an_id_that_the_grammar_does_not_know) {
    expectWalk("2M|1|1|ST$ O|0|1|REF$ M|1|1|SE$", {"ST", "XYZ", "REF", "SE"}, {"2 XYZ 2@LOOP"}, {"ST@"});
}

TEST(RootWalk, ends_at_an_id_that_lies_before_its_current_child) {
    expectWalk("2M|1|1|ST$ O|0|1|BHT$ O|0|1|REF$ M|1|1|SE$", {"ST", "REF", "BHT", "SE"}, {"3 BHT 2@LOOP"},
               {"ST@", "REF@"});
}

TEST(RootWalk, offers_a_repeat_to_the_current_child_first) {
    // Both are named REF: the second never sees one while the first stands.
    TreeWalk walk("2M|1|1|ST$ O|0|1|REF$ O|0|1|REF$ M|1|1|SE$", {"ST", "REF", "REF", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3 REF 5@LOOP"}));
    EXPECT_EQ(walk.node({1}).repeatCount, 2);
    EXPECT_EQ(walk.node({2}).repeatCount, 0);
}

TEST(RootWalk, reports_a_mandatory_child_at_the_record_that_passed_it) {
    expectWalk("2M|1|1|ST$ M|1|1|BHT$ O|0|1|REF$ M|1|1|SE$", {"ST", "REF", "SE"}, {"2 BHT 3@LOOP"},
               {"ST@", "REF@", "SE@"});
}

TEST(RootWalk, reports_a_mandatory_child_again_at_its_place_where_no_later_child_matched) {
    expectWalk("2M|1|1|ST$ M|1|1|BHT$ O|0|1|REF$ M|1|1|SE$", {"ST", "XYZ", "SE"},
               {"2 BHT 3@LOOP", "2 XYZ 2@LOOP", "2 BHT 3@LOOP"}, {"ST@"});
}

TEST(RootWalk, withdraws_the_findings_of_the_failed_pass_alone_with_dropFailedPassErrors) {
    // The limit of ST is a finding of an earlier pass.
    expectWalk("2D  M|1|1|ST$ M|1|1|BHT$ O|0|1|REF$ M|1|1|SE$", {"ST", "ST", "XYZ", "SE"},
               {"2 ST 5@LOOP", "3 XYZ 2@LOOP", "2 BHT 3@LOOP"}, {"ST@", "ST@"});
    expectWalk("2M|1|1|ST$ M|1|1|BHT$ O|0|1|REF$ M|1|1|SE$", {"ST", "ST", "XYZ", "SE"},
               {"2 ST 5@LOOP", "3 BHT 3@LOOP", "3 XYZ 2@LOOP", "2 BHT 3@LOOP"}, {"ST@", "ST@"});
}

TEST(RootWalk, withdraws_the_findings_of_a_loop_in_the_failed_pass_and_keeps_its_lines) {
    expectWalk("2D  M|1|1|ST$ O|0|1|Loop 1000A$ M|1|1|NM1$ M|1|1|REF$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "NM1", "XYZ", "SE"}, {"3 XYZ 2@LOOP"}, {"ST@", "NM1@1000A"});
}

TEST(RootWalk, reports_too_few_of_a_child_only_where_there_is_one) {
    expectWalk("2M|1|1|ST$ O|2|0|REF$ M|1|1|SE$", {"ST", "SE"}, {}, {"ST@", "SE@"});
    expectWalk("2M|1|1|ST$ O|2|0|REF$ M|1|1|SE$", {"ST", "REF", "SE"}, {"3 REF 1@LOOP"}, {"ST@", "REF@", "SE@"});
    expectWalk("2M|1|1|ST$ O|2|0|REF$ M|1|1|SE$", {"ST", "REF", "REF", "SE"}, {}, {"ST@", "REF@", "REF@", "SE@"});
    expectWalk("2M|1|1|ST$ M|2|0|REF$ M|1|1|SE$", {"ST", "SE"}, {"2 REF 3@LOOP"}, {"ST@", "SE@"});
}

TEST(RootWalk, reports_too_few_of_its_current_child_once_in_a_pass_that_goes_on_behind_a_loop) {
    expectWalk("2M|1|1|ST$ O|3|0|REF$ O|0|1|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$ M|1|1|SE$",
               {"ST", "REF", "NM1", "SE"}, {"3 REF 1@LOOP"}, {"ST@", "REF@", "NM1@1000A", "SE@"});
}

TEST(RootWalk, exempts_trailers_from_its_reports) {
    expectWalk("2M|1|1|ST$ M|1|1|UNT$ M|1|1|SE$ M|1|1|REF$", {"ST", "REF"}, {}, {"ST@", "REF@"});
    expectWalk("2M|1|1|ST$ M|3|0|SE$ M|3|0|UNT$ M|1|1|REF$", {"ST", "SE", "UNT", "REF"}, {},
               {"ST@", "SE@", "UNT@", "REF@"});
    // A loop that begins with one.
    expectWalk("2M|1|1|ST$ M|1|1|Loop 1000A$ M|1|1|SE$ M|0|0|EndLoop$ M|1|1|REF$", {"ST", "REF"}, {}, {"ST@", "REF@"});
    expectWalk("2M|1|1|ST$ M|1|1|SE$", {"ST"}, {}, {"ST@"});
}

TEST(RootWalk, does_not_check_its_current_child_at_the_end) {
    expectWalk("2M|1|1|ST$ M|1|1|BHT$ M|1|1|NM1$", {"ST"}, {"2 BHT 3@LOOP", "3 NM1 3@LOOP"}, {"ST@"});
}

TEST(RootWalk, goes_on_behind_a_loop_with_the_record_that_it_left) {
    expectWalk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$ O|0|1|REF$ M|1|1|SE$",
               {"ST", "NM1", "NM1", "REF", "SE"}, {}, {"ST@", "NM1@1000A", "NM1@1000A", "REF@", "SE@"});
}

TEST(RootWalk, reports_the_record_that_a_loop_left_and_no_later_child_takes) {
    expectWalk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$ O|0|1|REF$ M|1|1|SE$",
               {"ST", "NM1", "XYZ", "SE"}, {"3 XYZ 2@LOOP"}, {"ST@", "NM1@1000A"});
}

TEST(RootWalk, moves_its_current_child_for_plain_segments_only) {
    TreeWalk walk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$ O|0|1|REF$", {"ST", "NM1"});
    walk.run();
    EXPECT_EQ(walk.root.currentChild, 0);
    EXPECT_EQ(walk.findings(), (Texts{"3  2@LOOP"}));
    EXPECT_EQ(walk.data.currentSegment, 3);
}

TEST(RootWalk, does_not_look_for_a_place_behind_the_last_record_when_a_segment_took_it) {
    expectWalk("2M|1|1|ST$ O|0|1|REF$", {"ST", "REF"}, {}, {"ST@", "REF@"});
}

TEST(RootWalk, looks_at_nothing_behind_the_record_that_has_no_place) {
    TreeWalk walk("2M|1|1|ST$ M|1|1|SE$", {"ST", "XYZ", "SE"});
    walk.run();
    EXPECT_EQ(walk.data.currentSegment, 2);
    EXPECT_EQ(walk.lines(), (Texts{"ST@"}));
}

TEST(RootWalk, steps_over_notes_with_skipNotes) {
    TreeWalk within("12003M|1|1|ST$ O|0|1|REF$ M|1|1|SE$", {"NTE", "ST", "NTE", "NTE", "REF", "SE"});
    within.run();
    EXPECT_EQ(within.findings(), Texts{});
    EXPECT_EQ(within.node({1}).repeatCount, 1);
    EXPECT_EQ(within.node({2}).repeatCount, 1);
}

TEST(RootWalk, finds_no_place_behind_a_note_at_the_end_of_the_data_with_skipNotes) {
    TreeWalk walk("12003M|1|1|ST$ O|0|1|REF$", {"ST", "NTE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"3  2@LOOP"}));
    EXPECT_EQ(walk.data.currentSegment, 3);
}

TEST(RootWalk, reports_a_note_that_has_no_place_without_skipNotes) {
    TreeWalk walk("1M|1|1|ST$ M|1|1|SE$", {"ST", "NTE", "SE"});
    walk.run();
    EXPECT_EQ(walk.findings(), (Texts{"2 NTE 2@LOOP"}));
}

TEST(RootWalk, takes_its_kind_from_the_call_and_is_its_own_context) {
    TreeWalk walk("1M|1|1|ST$", {"ST"});
    walk.root.currentChild = 5;
    walk.root.grammarKind = 7;
    walk.root.validateStructure(&walk.data, nullptr, nullptr, nullptr, 1, nullptr);
    EXPECT_EQ(walk.root.grammarKind, 1);
    EXPECT_EQ(walk.root.currentChild, 0);
    EXPECT_EQ(walk.root.context, &walk.root);
    EXPECT_EQ(walk.findings(), Texts{});
}

TEST(RootWalk, treats_any_kind_but_2_as_kind_1) {
    TreeWalk walk("2M|1|1|ST$ M|1|1|SE$", {"ST", "SE"});
    walk.root.validateStructure(&walk.data, nullptr, nullptr, nullptr, 3, walk.root.identifierBuffer);
    EXPECT_EQ(walk.findings(), Texts{});
    EXPECT_EQ(walk.lines(), Texts{});
    EXPECT_EQ(walk.root.segLists->size, 0);
}

TEST(RootWalk, makes_room_for_a_line_of_each_record_and_a_step_of_a_tenth_but_at_least_10) {
    struct Row {
        int records;
        int size;
        int growBy;
    };
    for (Row row : {Row{0, 0, 10}, Row{1, 1, 10}, Row{99, 99, 10}, Row{110, 110, 11}, Row{259, 259, 25}}) {
        Texts const records(static_cast<std::size_t>(row.records), "XYZ");
        TreeWalk walk("2O|0|1|ST$", records);
        walk.run();
        EXPECT_EQ(walk.root.segLists->size, row.size) << row.records;
        EXPECT_EQ(walk.root.segLists->growBy, row.growBy) << row.records;
    }
}

TEST(RootWalk, reports_the_same_in_both_kinds) {
    for (char kind : {'1', '2'}) {
        TreeWalk walk(std::string(1, kind) +
                          "M|1|1|ST$ O|0|2|Loop 1000A$ M|1|1|NM1$ O|0|1|PER$ M|1|1|REF$ M|0|0|EndLoop$ M|1|1|SE$",
                      {"ST", "NM1", "REF", "PER", "PER", "SE"});
        walk.run();
        // PER behind REF begins an iteration without initiator, in which the second PER is one too many.
        EXPECT_EQ(walk.findings(), (Texts{"4 NM1 3@1000A", "5 PER 5@1000A", "6 REF 3@1000A", "6 REF 1@1000A"})) << kind;
    }
}

}  // namespace
