// The grammar builder: records, fields, keywords, version tests and bad records.
#include "grammar/grammarbuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>

#include "rules/seglists.h"
#include "treewalk.h"
#include "walk/errorinfos.h"

namespace {

/// A root and what the builder made of a text.
struct Built {
    EDI_Structure root;
    std::string text;
    bool isGood;

    explicit Built(std::string grammar) : Built(grammar, grammar.size()) {}
    Built(std::string grammar, std::size_t length)
        : root(grammarKindOf(grammar.c_str()), new ErrorInfos,
               grammarKindOf(grammar.c_str()) == 2 ? new SegLists : nullptr),
          text(std::move(grammar)) {
        if (root.grammarKind == 2) root.identifierBuffer = new IdentifierBuffer;
        isGood = buildGrammar(root, text.data(), length);
    }

    Validator& child(int index) { return *root.children.data[index]; }
};

/// The tree below a node in short: the names of its children, and theirs in brackets.
std::string outline(ValidationContext& node) {
    std::string names;
    for (int index = 0; index < node.children.count; ++index) {
        Validator* child = node.children.data[index];
        names += (index > 0 ? " " : "") + std::string(child->segmentId);
        if (auto* below = dynamic_cast<ValidationContext*>(child)) names += "[" + outline(*below) + "]";
    }
    return names;
}

std::string outlineOf(std::string const& grammar) {
    Built built(grammar);
    EXPECT_TRUE(built.isGood) << grammar;
    return outline(built.root);
}

TEST(GrammarKind, is_1_for_a_text_that_begins_with_1_and_2_for_every_other) {
    EXPECT_EQ(grammarKindOf("1"), 1);
    EXPECT_EQ(grammarKindOf("1M|1|1|ST$"), 1);
    for (char const* text : {"2", "0", "X", "", "$", " 1"})
        EXPECT_EQ(grammarKindOf(text), 2) << text;
}

TEST(Grammar, makes_a_node_of_each_record_in_order) {
    EXPECT_EQ(outlineOf("2M|1|1|ST$M|1|1|BHT$M|1|1|SE$"), "ST BHT SE");
}

TEST(Grammar, without_records_makes_no_nodes) {
    for (char const* text : {"1", "2", "2M|1|1|ST", "2\n\n"})
        EXPECT_EQ(outlineOf(text), "") << text;
    Built empty("", 0);
    EXPECT_TRUE(empty.isGood);
    EXPECT_EQ(empty.root.children.count, 0);
}

TEST(Grammar, makes_no_node_of_a_last_record_without_its_end) {
    EXPECT_EQ(outlineOf("2M|1|1|ST$M|1|1|BHT$M|1|1|SE"), "ST BHT");
}

TEST(Grammar, skips_white_space_between_records) {
    EXPECT_EQ(outlineOf("2M|1|1|ST$\r\n \t\v\fM|1|1|BHT$\n"), "ST BHT");
}

TEST(Grammar, keeps_white_space_inside_and_in_front_of_its_records) {
    Built built("2 M|1|1|S\nT $ M|1|1| BHT$");
    EXPECT_STREQ(built.child(0).segmentId, "S\nT ");
    EXPECT_STREQ(built.child(1).segmentId, " BHT");
}

TEST(Grammar, is_read_no_further_than_its_length) {
    std::string const grammar = "2M|1|1|ST$M|1|1|SE$";
    Built cut(grammar, 10);
    EXPECT_EQ(outline(cut.root), "ST");
    EXPECT_EQ(cut.text.substr(10), "M|1|1|SE$");
}

TEST(Grammar, turns_what_ends_its_fields_into_NULs) {
    Built built("2M|1|1|ST$M|1|1|SE$");
    EXPECT_EQ(built.text, std::string("2M\0001\0001\0ST\0M\0001\0001\0SE\0", 19));
}

TEST(Grammar, gives_a_node_the_fields_of_its_record) {
    Built built("2M|1|1|ST$O|2|30|REF|G1|9F$");
    Validator& node = built.child(1);
    EXPECT_STREQ(node.segmentId, "REF");
    EXPECT_EQ(node.requirement, 'O');
    EXPECT_EQ(node.minRepeat, 2);
    EXPECT_EQ(node.maxRepeat, 30);
    EXPECT_EQ(node.position, 0);
    EXPECT_EQ(node.repeatCount, 0);
    EXPECT_EQ(node.unidentifiedCount, 0);
    EXPECT_EQ(node.text, nullptr);
    EXPECT_STREQ(built.root.identifierBuffer->at(node.identifierOffsets[0]), "G1");
    EXPECT_STREQ(built.root.identifierBuffer->at(node.identifierOffsets[1]), "9F");
    for (int slot = 2; slot < 20; ++slot)
        EXPECT_EQ(node.identifierOffsets[slot], 0);
}

TEST(Grammar, takes_the_first_character_of_the_requirement) {
    Built built("2M|1|1|ST$Optional|1|1|REF$mandatory|1|1|SE$");
    EXPECT_EQ(built.child(1).requirement, 'O');
    EXPECT_EQ(built.child(2).requirement, 'm');
}

TEST(Grammar, reads_numbers_as_far_as_they_go_and_cuts_them_to_32_bits) {
    struct Row {
        char const* field;
        int value;
    };
    for (Row row : {Row{"0", 0}, Row{"007", 7}, Row{"12abc", 12}, Row{"abc", 0}, Row{" 5", 5}, Row{"-1", -1},
                    Row{"2147483647", INT_MAX}, Row{"4294967297", 1}, Row{">1", 0}}) {
        Built built("2M|" + std::string(row.field) + "|" + row.field + "|ST$");
        EXPECT_EQ(built.child(0).minRepeat, row.value) << row.field;
        EXPECT_EQ(built.child(0).maxRepeat, row.value) << row.field;
    }
}

TEST(Grammar, keeps_31_characters_of_a_name) {
    Built built("2M|1|1|" + std::string(31, 'a') + "$M|1|1|" + std::string(40, 'b') + "$");
    EXPECT_EQ(built.child(0).segmentId, std::string(31, 'a'));
    EXPECT_EQ(built.child(1).segmentId, std::string(31, 'b'));
}

TEST(Grammar, knows_no_empty_field) {
    Built built("2M|1|1|ST$|M||2|||3|REF||G1|$");
    EXPECT_TRUE(built.isGood);
    Validator& node = built.child(1);
    EXPECT_EQ(node.requirement, 'M');
    EXPECT_EQ(node.minRepeat, 2);
    EXPECT_EQ(node.maxRepeat, 3);
    EXPECT_STREQ(node.segmentId, "REF");
    EXPECT_STREQ(built.root.identifierBuffer->at(node.identifierOffsets[0]), "G1");
}

TEST(Grammar, keeps_20_identifiers_of_a_record) {
    for (int given : {19, 20, 21, 22, 25}) {
        std::string grammar = "2M|1|1|HL";
        for (int number = 1; number <= given; ++number)
            grammar += "|" + std::to_string(number);
        Built built(grammar + "$M|1|1|SE|AA$");
        int const* offsets = built.child(0).identifierOffsets;
        for (int slot = 0; slot < 20; ++slot) {
            if (slot < given)
                EXPECT_STREQ(built.root.identifierBuffer->at(offsets[slot]), std::to_string(slot + 1).c_str());
            else
                EXPECT_EQ(offsets[slot], 0);
        }
        // Each text takes 8 bytes of the pool; those that are dropped take none.
        EXPECT_EQ(built.child(1).identifierOffsets[0], 8 + 8 * std::min(given, 20));
    }
}

TEST(Grammar, ignores_identifiers_in_kind_1) {
    Built built("1M|1|1|HL|20|21$");
    EXPECT_TRUE(built.isGood);
    for (int offset : built.child(0).identifierOffsets)
        EXPECT_EQ(offset, 0);
}

TEST(Grammar, nests_loops_and_groups) {
    EXPECT_EQ(outlineOf("2M|1|1|ST$O|0|0|Loop 2000A$M|1|1|HL$O|0|0|UnorderedGroup 2000$O|0|0|Loop 2010A$M|1|1|NM1$"
                        "M|0|0|EndLoop$M|0|0|EndUnorderedGroup$O|0|0|REF$M|0|0|EndLoop$M|1|1|SE$"),
              "ST Loop 2000A[HL UnorderedGroup 2000[Loop 2010A[NM1]] REF] SE");
}

TEST(Grammar, makes_the_class_that_the_keyword_says) {
    Built built("2M|1|1|ST$M|1|1|Loop$M|1|1|EndLoop$M|1|1|UnorderedGroup$");
    EXPECT_NE(dynamic_cast<SegmentValidator*>(&built.child(0)), nullptr);
    EXPECT_NE(dynamic_cast<Loop*>(&built.child(1)), nullptr);
    EXPECT_NE(dynamic_cast<choiceLoop*>(&built.child(2)), nullptr);
}

TEST(Grammar, compares_keywords_by_their_first_bytes_and_minds_their_case) {
    EXPECT_EQ(outlineOf("2M|1|1|Loops$M|1|1|EndLoopX$M|1|1|UnorderedGroups$M|1|1|EndUnorderedGroup2000$M|1|1|SE$"),
              "Loops[] UnorderedGroups[] SE");
    EXPECT_EQ(outlineOf("2M|1|1|loop$M|1|1|LOOP$M|1|1|Loo$M|1|1|Unordered$M|1|1|XLoop$M|1|1|End$"),
              "loop LOOP Loo Unordered XLoop End");
}

TEST(Grammar, closes_whatever_is_open_with_either_closing_keyword) {
    EXPECT_EQ(outlineOf("2M|1|1|UnorderedGroup 1$M|1|1|EndLoop$M|1|1|Loop 2$M|1|1|EndUnorderedGroup$M|1|1|SE$"),
              "UnorderedGroup 1[] Loop 2[] SE");
}

TEST(Grammar, accepts_groups_left_open_and_closed_too_often) {
    EXPECT_EQ(outlineOf("2M|1|1|Loop 1$M|1|1|HL$M|1|1|Loop 2$M|1|1|NM1$"), "Loop 1[HL Loop 2[NM1]]");
    EXPECT_EQ(outlineOf("2M|1|1|EndLoop$M|1|1|Loop 1$M|1|1|EndLoop$M|1|1|EndLoop$M|1|1|EndLoop$M|1|1|SE$"),
              "Loop 1[] SE");
}

TEST(Grammar, nests_without_limit) {
    constexpr int depth = 100'000;
    std::string grammar = "2";
    for (int level = 0; level < depth; ++level)
        grammar += level % 2 == 0 ? "M|1|1|Loop$" : "M|1|1|UnorderedGroup$";
    for (int level = 0; level < depth; ++level)
        grammar += "M|1|1|EndLoop$";
    Built built(grammar + "M|1|1|SE$");
    EXPECT_TRUE(built.isGood);
    ASSERT_EQ(built.root.children.count, 2);
    EXPECT_STREQ(built.child(1).segmentId, "SE");
    int levels = 0;
    for (ValidationContext* node = &built.root; node->children.count > 0; ++levels) {
        node = dynamic_cast<ValidationContext*>(node->children.data[0]);
        ASSERT_NE(node, nullptr);
    }
    EXPECT_EQ(levels, depth);
}

TEST(Grammar, gives_nodes_with_children_the_flags_and_lists_of_the_root) {
    Built built("2D  M|1|1|Loop 1$M|1|1|UnorderedGroup 2$");
    auto& loop = dynamic_cast<Loop&>(built.child(0));
    auto& group = dynamic_cast<choiceLoop&>(*loop.children.data[0]);
    for (ValidationContext const* node :
         {static_cast<ValidationContext*>(&loop), static_cast<ValidationContext*>(&group)}) {
        EXPECT_EQ(node->flags, noInitiatorSearch | dropFailedPassErrors);
        EXPECT_EQ(node->errorInfos, built.root.errorInfos);
        EXPECT_EQ(node->segLists, built.root.segLists);
    }
}

TEST(Grammar, takes_the_17th_and_the_25th_child_of_a_node) {
    std::string grammar = "2";
    for (int number = 1; number <= 25; ++number)
        grammar += "O|0|1|S" + std::to_string(number) + "$";
    Built built(grammar);
    EXPECT_EQ(built.root.children.count, 25);
    EXPECT_EQ(built.root.children.capacity, 36);
    EXPECT_STREQ(built.child(16).segmentId, "S17");
    EXPECT_STREQ(built.child(24).segmentId, "S25");
}

// The version text and the requirement in the first field of the first record.
TEST(GrammarVersion, leaves_the_last_character_of_its_field_to_the_requirement) {
    struct Row {
        char const* field;
        char requirement;
    };
    for (Row row : {Row{"M", 'M'}, Row{"xO", 'O'}, Row{"004010M", 'M'}, Row{"D  O", 'O'},
                    Row{"0123456789012345678901234567890123456789C", 'C'}}) {
        Built built("2" + std::string(row.field) + "|1|1|ST$");
        EXPECT_TRUE(built.isGood);
        EXPECT_EQ(built.child(0).requirement, row.requirement) << row.field;
        EXPECT_STREQ(built.child(0).segmentId, "ST");
    }
}

TEST(GrammarVersion, sets_the_walk_options) {
    struct Row {
        char const* field;
        unsigned long kind1;
        unsigned long kind2;
    };
    constexpr unsigned long early = noInitiatorSearch | dropFailedPassErrors;
    Row const rows[] = {
        {"M", 0, 0},
        {"3M", 0, 0},                  // two characters: no version
        {"004010M", 0, 0},             // below "2003"
        {"2002M", 0, 0},               //
        {"2003M", skipNotes, 0},       //
        {"2003XYZM", skipNotes, 0},    // four characters count
        {"3000M", skipNotes, 0},       //
        {"3060M", skipNotes, 0},       //
        {"3060ZZM", skipNotes, 0},     //
        {"3061M", 0, 0},               //
        {"200M", 0, 0},                // as if filled up with NUL: below "2003"
        {"306M", skipNotes, 0},        // and "306" below "3060"
        {"30M", skipNotes, 0},         //
        {"D  M", early, early},        //
        {"S  M", early, early},        //
        {"1  M", early, early},        //
        {"2  M", early, early},        // below "2003": a blank
        {"4  M", early, early},        //
        {"88 M", early, early},        //
        {"89 M", early, early},        //
        {"90 M", early, early},        //
        {"D  004010M", early, early},  // three characters count
        {"D M", 0, 0},                 // two characters and the requirement
        {"3  M", skipNotes, 0},        // not one of the eight, and between "2003" and "3060"
        {"91 M", 0, 0},                //
        {"d  M", 0, 0},                //
    };
    for (Row const& row : rows) {
        Built kind1("1" + std::string(row.field) + "|1|1|ST$");
        EXPECT_EQ(kind1.root.flags, row.kind1) << row.field;
        Built kind2("2" + std::string(row.field) + "|1|1|ST$");
        EXPECT_EQ(kind2.root.flags, row.kind2) << row.field;
    }
}

TEST(GrammarVersion, is_read_in_the_first_record_only) {
    Built built("1M|1|1|ST$2003M|1|1|REF$D  M|1|1|SE$");
    EXPECT_EQ(built.root.flags, 0U);
    EXPECT_EQ(built.child(1).requirement, '2');
    EXPECT_EQ(built.child(2).requirement, 'D');
}

// Bad records.
TEST(Grammar, is_bad_with_a_record_that_lacks_one_of_its_first_four_fields) {
    for (char const* text : {"2M|1|1|ST$M|1$", "2M|1|1|ST$M$", "2M|1|1|ST$M|1|1$", "2M|1|1|ST$$", "2$",
                             "2|||$M|1|1|ST$", "2M||1|ST$", "1M|1|1|ST$O|0|EndLoop$"})
        EXPECT_FALSE(Built(text).isGood) << text;
}

TEST(Grammar, that_is_bad_is_read_to_its_end) {
    Built built("2M|1$M|1|1|SE$");
    EXPECT_FALSE(built.isGood);
    EXPECT_EQ(outline(built.root), "SE");
    EXPECT_EQ(built.text.find('$'), std::string::npos);
}

TEST(Grammar, is_good_with_unknown_requirements_and_numbers_that_are_none) {
    EXPECT_EQ(outlineOf("2?|x|y|ST$!|-|+|SE$"), "ST SE");
}

}  // namespace
