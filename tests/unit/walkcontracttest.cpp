// The walk contract: the advance step, the identifier and the record on offer, the offer to a child, the standard
// error.
#include "walk/walkcontract.h"

#include <gtest/gtest.h>

#include "layout.h"
#include "probenode.h"
#include "treewalk.h"

namespace {

constexpr char anyGrammar[] = "2M|1|1|ST$";

/// Walks a message's cursor forward once. Answers where it stands then.
int advanced(Texts const& records, int from, unsigned long flags) {
    TreeWalk walk(anyGrammar, records);
    walk.data.currentSegment = from;
    advance(walk.data, flags);
    return walk.data.currentSegment;
}

TEST(Advance, moves_to_the_next_record) {
    EXPECT_EQ(advanced({"ST", "NM1", "SE"}, 0, 0), 1);
    EXPECT_EQ(advanced({"ST", "NM1", "SE"}, 1, 0), 2);
}

TEST(Advance, stops_at_a_note_in_a_tree_that_does_not_skip_notes) {
    EXPECT_EQ(advanced({"ST", "NTE", "SE"}, 1, 0), 2);
    EXPECT_EQ(advanced({"ST", "NTE", "SE"}, 1, noInitiatorSearch | dropFailedPassErrors), 2);
}

TEST(Advance, steps_over_a_run_of_notes_with_skipNotes) {
    EXPECT_EQ(advanced({"NTE", "NTE", "ST", "SE"}, 0, skipNotes), 3);
    EXPECT_EQ(advanced({"ST", "NTE", "NTE", "SE"}, 1, skipNotes), 4);
    EXPECT_EQ(advanced({"ST", "NM1", "NTE", "SE"}, 1, skipNotes), 2);
}

TEST(Advance, takes_only_the_whole_id_for_a_note) {
    EXPECT_EQ(advanced({"NTEX", "SE"}, 0, skipNotes), 1);
    EXPECT_EQ(advanced({"NT", "SE"}, 0, skipNotes), 1);
    EXPECT_EQ(advanced({"nte", "SE"}, 0, skipNotes), 1);
}

TEST(Advance, goes_beyond_the_end_of_the_data) {
    EXPECT_EQ(advanced({"ST", "SE"}, 2, 0), 3);
    EXPECT_EQ(advanced({"ST", "SE"}, 7, 0), 8);
    EXPECT_EQ(advanced({"ST", "NTE"}, 1, skipNotes), 3);
}

TEST(Advance, reaches_the_end_of_a_full_array_and_grows_it) {
    DataSegment data;
    data.segments.setSize(1, 10);
    data.recordCount = data.currentSegment = 1;
    advance(data, skipNotes);
    EXPECT_EQ(data.currentSegment, 2);
    EXPECT_EQ(data.segments.size, 11);
}

TEST(IdentifierOnOffer, is_the_text_at_the_offset_of_slot_0) {
    TreeWalk walk(anyGrammar, {"ST", "HL/20", "HL/22"});
    walk.data.currentSegment = 2;
    EXPECT_STREQ(identifierOnOffer(walk.data, walk.root.identifierBuffer), "20");
    walk.data.currentSegment = 3;
    EXPECT_STREQ(identifierOnOffer(walk.data, walk.root.identifierBuffer), "22");
}

TEST(IdentifierOnOffer, is_none_for_a_record_without_one_behind_the_data_and_without_a_pool) {
    TreeWalk walk(anyGrammar, {"ST", "HL/20"});
    walk.data.currentSegment = 1;
    EXPECT_EQ(identifierOnOffer(walk.data, walk.root.identifierBuffer), nullptr);
    walk.data.currentSegment = 3;
    EXPECT_EQ(identifierOnOffer(walk.data, walk.root.identifierBuffer), nullptr);
    walk.data.currentSegment = 2;
    EXPECT_EQ(identifierOnOffer(walk.data, nullptr), nullptr);
}

TEST(Offer, hands_the_child_the_record_on_offer_its_identifier_and_the_arguments_of_the_parent) {
    TreeWalk walk(anyGrammar, {"ST", "HL/20"});
    ProbeNode child;
    walk.root.matched = 1;
    walk.data.currentSegment = 2;
    EXPECT_FALSE(offer(walk.root, child, walk.data, "2000A", 2, walk.root.identifierBuffer));
    ASSERT_EQ(child.calls.size(), 1U);
    ProbeNode::Call const& call = child.calls[0];
    EXPECT_EQ(call.data, &walk.data);
    EXPECT_EQ(call.segment, walk.data.segments[1].segmentId);
    EXPECT_STREQ(call.identifier, "20");
    EXPECT_STREQ(call.loopContext, "2000A");
    EXPECT_EQ(call.kind, 2);
    EXPECT_EQ(call.identifiers, walk.root.identifierBuffer);
    EXPECT_EQ(call.parent, &walk.root);
    EXPECT_EQ(call.matchedOnEntry, 0);
    EXPECT_EQ(walk.root.matched, 0);
}

TEST(Offer, looks_at_the_cursor_afresh_each_time) {
    TreeWalk walk(anyGrammar, {"ST", "HL/20"});
    ProbeNode child;
    for (int number : {1, 2, 3}) {
        walk.data.currentSegment = number;
        offer(walk.root, child, walk.data, nullptr, 2, walk.root.identifierBuffer);
    }
    EXPECT_STREQ(child.calls[0].segment, "ST");
    EXPECT_EQ(child.calls[0].identifier, nullptr);
    EXPECT_STREQ(child.calls[1].segment, "HL");
    EXPECT_STREQ(child.calls[1].identifier, "20");
    EXPECT_STREQ(child.calls[2].segment, "");
    EXPECT_EQ(child.calls[2].identifier, nullptr);
}

TEST(Offer, tells_that_a_segment_took_the_record) {
    TreeWalk walk(anyGrammar, {"ST"});
    walk.data.currentSegment = 1;
    EXPECT_TRUE(offer(walk.root, walk.node({0}), walk.data, nullptr, 2, walk.root.identifierBuffer));
    EXPECT_EQ(walk.root.matched, 1);
    EXPECT_EQ(walk.data.currentSegment, 1);
}

TEST(Offer, does_not_tell_of_a_loop_that_consumed_records) {
    TreeWalk walk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|NM1$ M|0|0|EndLoop$", {"ST", "NM1", "NM1", "SE"});
    walk.data.currentSegment = 2;
    EXPECT_FALSE(offer(walk.root, walk.node({1}), walk.data, nullptr, 2, walk.root.identifierBuffer));
    EXPECT_EQ(walk.root.matched, 0);
    EXPECT_EQ(walk.data.currentSegment, 4);
}

TEST(Offer, takes_a_result_other_than_0_for_a_match) {
    struct ClaimingNode : ProbeNode {
        int validateLoop(DataSegment*, char const*, char const*, char const*, int, IdentifierBuffer*) override {
            return 5;
        }
    };
    TreeWalk walk(anyGrammar, {"ST"});
    ClaimingNode child;
    walk.data.currentSegment = 1;
    EXPECT_TRUE(offer(walk.root, child, walk.data, nullptr, 2, nullptr));
    EXPECT_EQ(walk.root.matched, 1);
}

// A probe as the last child of each kind of node sees what stands for the place of the offering node.
TEST(LoopContext, is_null_from_the_root) {
    TreeWalk walk(anyGrammar, {"ST", "SE"});
    auto* probe = new ProbeNode;
    walk.root.children.add(probe);
    walk.run();
    EXPECT_EQ(probe->contexts, (Texts{"null"}));
}

TEST(LoopContext, is_the_id_of_a_loop_in_a_normal_iteration_and_its_whole_name_without_an_initiator) {
    TreeWalk walk("2M|1|1|ST$ O|0|0|Loop 1000A$ M|1|1|HL$ O|0|0|NM1$ O|0|0|REF$ M|0|0|EndLoop$",
                  {"ST", "HL", "REF", "NM1", "REF", "SE"});
    auto* probe = new ProbeNode;
    walk.node<Loop>({1}).children.add(probe);
    walk.run();
    EXPECT_EQ(probe->contexts, (Texts{"1000A", "Loop 1000A"}));
}

TEST(LoopContext, is_the_whole_name_of_a_group) {
    TreeWalk walk("2M|1|1|ST$ O|0|0|UnorderedGroup 2000$ O|0|0|REF$ M|0|0|EndUnorderedGroup$", {"ST", "SE"});
    auto* probe = new ProbeNode;
    walk.node<choiceLoop>({1}).children.add(probe);
    walk.run();
    EXPECT_EQ(probe->contexts, (Texts{"UnorderedGroup 2000"}));
}

TEST(Walk, gives_a_node_without_a_pool_or_lines_the_kind_1) {
    TreeWalk walk("1M|1|1|ST$", {"ST", "SE"});
    auto* probe = new ProbeNode;
    walk.root.children.add(probe);
    walk.run();
    ASSERT_EQ(probe->calls.size(), 1U);
    EXPECT_EQ(probe->calls[0].kind, 1);
    EXPECT_EQ(probe->calls[0].identifiers, nullptr);
    EXPECT_EQ(probe->calls[0].identifier, nullptr);
}

/// Nested groups with a loop inside them all, at `level` from the root down.
std::string nestedGroups(int level) {
    std::string grammar = "2M|1|1|ST$";
    for (int group = 1; group < level; ++group)
        grammar += "O|0|0|UnorderedGroup$";
    return grammar + "O|0|0|Loop 1000A$ M|1|1|NM1$";
}

TEST(Walk, goes_down_as_many_nodes_as_it_says) {
    TreeWalk walk(nestedGroups(deepestWalk), {"ST", "NM1", "SE"});
    walk.run();
    EXPECT_EQ(walk.lines(), (Texts{"ST@", "NM1@1000A"}));
    EXPECT_EQ(walk.findings(), (Texts{"3 SE 2@LOOP"}));
}

TEST(Walk, is_declined_by_a_node_that_lies_deeper) {
    for (int level : {deepestWalk + 1, 100'000}) {
        TreeWalk walk(nestedGroups(level), {"ST", "NM1", "SE"});
        walk.run();
        EXPECT_EQ(walk.lines(), (Texts{"ST@"}));
        EXPECT_EQ(walk.findings(), (Texts{"2 NM1 2@LOOP"}));
    }
}

TEST(StandardError, has_fixed_words_in_the_columns_that_it_does_not_use) {
    ErrorInfos errors;
    addStandardError(errors, 12, "NM1", ERR_SEG_EXCEED_LIMIT, "1000A");
    ASSERT_EQ(errors.count, 1);
    ErrorInfo const& record = errors.records[0];
    EXPECT_EQ(record.lineNumber, 12);
    EXPECT_EQ(record.elementPosition, 0);
    EXPECT_STREQ(record.segmentId, "NM1");
    EXPECT_STREQ(record.errorCode, "5");
    EXPECT_STREQ(record.loopId, "1000A");
    EXPECT_STREQ(record.txnText, "NONE");
    EXPECT_STREQ(record.segText, "SEG");
    EXPECT_STREQ(record.errorText, "ERROR");
    EXPECT_STREQ(record.elementText, "Element Text");
    EXPECT_STREQ(record.subElementText, "00");
}

TEST(Trailer, is_SE_or_UNT_and_nothing_else) {
    EXPECT_TRUE(isTrailer("SE"));
    EXPECT_TRUE(isTrailer("UNT"));
    for (char const* name : {"", "S", "SEX", "UN", "UNTX", "se", "ST"})
        EXPECT_FALSE(isTrailer(name)) << name;
}

TEST(LoopId, is_the_name_from_its_sixth_character_on) {
    EXPECT_STREQ(loopIdOf("Loop 1000A"), "1000A");
    EXPECT_STREQ(loopIdOf("Loop-X"), "X");
    EXPECT_STREQ(loopIdOf("UnorderedGroup 2000"), "eredGroup 2000");
    for (char const* name : {"", "Loop", "Loop "})
        EXPECT_STREQ(loopIdOf(name), "") << name;
}

TEST(Name, is_that_of_a_record_if_it_is_its_whole_id) {
    EXPECT_TRUE(isNamed("NM1", "NM1"));
    for (char const* id : {"NM", "NM10", "nm1", ""})
        EXPECT_FALSE(isNamed("NM1", id)) << id;
}

TEST(Name, that_is_empty_is_that_of_no_record) {
    EXPECT_FALSE(isNamed("", ""));
}

}  // namespace
