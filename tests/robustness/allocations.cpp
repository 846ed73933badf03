// Calls that run out of memory. Each allocation of a call fails once: alone; together with the first, which is the
// buffer of the failure reply; and with all that come behind it. Whatever fails, the call ends as documented, the
// object can be used and destroyed, and nothing stays behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "conversation.h"

namespace {

using robustness::Conversation;
using robustness::Ending;
using robustness::isFailureReply;
using robustness::isRefused;
using robustness::Kind;
using robustness::Outcome;
using robustness::Plan;
using robustness::Stage;
using robustness::Step;

// How many allocations of a kind a call makes.
struct Allocations {
    std::size_t memory = 0;
    std::size_t objects = 0;
};

bool operator==(const Allocations& first, const Allocations& second) {
    return first.memory == second.memory && first.objects == second.objects;
}

void PrintTo(const Allocations& allocations, std::ostream* out) {
    *out << allocations.memory << " of memory, " << allocations.objects << " of objects";
}

// The ways in which the allocation at `number` may fail.
std::vector<Plan> plansFor(std::size_t number) {
    return {{number, false, false}, {number, true, false}, {number, false, true}};
}

// The failure that decides how a call ends. The first allocation of a call with a failure reply is the buffer for it,
// which a call that succeeds doesn't need.
Kind decisiveFailure(const Step& step, Plan plan, const Outcome& outcome) {
    const bool isBufferGone = robustness::hasFailureReply(step.exportName) && (plan.number == 1 || plan.isFirstToo);
    return isBufferGone ? outcome.secondFailed : outcome.firstFailed;
}

// Whether a call that ran out of memory ended as it must. Rules over a grammar of kind 1 have the failure reply for
// their usual outcome, which takes the buffer too.
bool endsAsDocumented(const Step& step, Plan plan, const Outcome& outcome, const Outcome& usual) {
    const bool isBufferGone = plan.number == 1 || plan.isFirstToo;
    const bool hasFailureReply = robustness::hasFailureReply(step.exportName) && !isBufferGone;
    switch (decisiveFailure(step, plan, outcome)) {
        case Kind::none:
            return isFailureReply(usual) && isBufferGone ? isRefused(outcome)
                                                         : describe(step, outcome) == describe(step, usual);
        case Kind::object:
            return robustness::isException(outcome, Ending::badAlloc);
        case Kind::memory:
            return hasFailureReply ? isFailureReply(outcome) : isRefused(outcome);
    }
    return false;
}

std::vector<Outcome> usualOutcomes(const Conversation& conversation) {
    std::vector<Outcome> outcomes;
    Stage stage;
    for (const Step& step : conversation)
        outcomes.push_back(stage.play(step));
    return outcomes;
}

// Goes on behind a call that failed, with the same call again. How far a walk came is not known, and neither is what
// comes of it later; behind every other call all is as usual.
void playOn(Stage& stage, const Conversation& conversation, std::size_t failed, const std::vector<Outcome>& usual) {
    const bool isUsual = conversation[failed].exportName != "ValidateStruct";
    for (std::size_t index = failed; index < conversation.size(); ++index) {
        const Step& step = conversation[index];
        const std::string found = describe(step, stage.play(step));
        if (isUsual) {
            EXPECT_EQ(found, describe(step, usual[index])) << "call " << index << ", behind the failed one";
        }
    }
}

// Plays the conversation up to its call `target`, which fails as planned. Answers what came of that call.
Outcome playFailing(const Conversation& conversation, std::size_t target, Plan plan,
                    const std::vector<Outcome>& usual) {
    const robustness::Held before = robustness::held();
    Outcome outcome;
    {
        Stage stage;
        for (std::size_t index = 0; index < target; ++index)
            stage.play(conversation[index]);
        const Step& step = conversation[target];
        outcome = stage.play(step, plan);
        EXPECT_TRUE(endsAsDocumented(step, plan, outcome, usual[target])) << describe(step, outcome);
        const bool isRepeatable = decisiveFailure(step, plan, outcome) != Kind::none;
        if (isRepeatable && !plan.isFirstToo && !plan.areLaterOnesToo) playOn(stage, conversation, target, usual);
    }
    EXPECT_EQ(robustness::held().memory - before.memory, 0) << "memory stays behind";
    EXPECT_EQ(robustness::held().objects - before.objects, 0) << "objects stay behind";
    return outcome;
}

// Lets each allocation of one call fail. Stops at the first that isn't calm. Answers what the call allocates.
Allocations failEach(const Conversation& conversation, std::size_t target) {
    const std::vector<Outcome> usual = usualOutcomes(conversation);
    Allocations allocations;
    for (std::size_t number = 1; !testing::Test::HasFailure(); ++number) {
        for (const Plan plan : plansFor(number)) {
            SCOPED_TRACE(conversation[target].exportName + ", call " + std::to_string(target) + ", allocation " +
                         std::to_string(number) + (plan.isFirstToo ? " and the first" : "") +
                         (plan.areLaterOnesToo ? " and all behind it" : ""));
            const Outcome outcome = playFailing(conversation, target, plan, usual);
            if (plan.isFirstToo || plan.areLaterOnesToo) continue;
            if (outcome.firstFailed == Kind::none) return allocations;
            if (outcome.firstFailed == Kind::memory) ++allocations.memory;
            if (outcome.firstFailed == Kind::object) ++allocations.objects;
        }
    }
    return allocations;
}

// A kind 2 object with its delimiters set.
Conversation begun(const std::string& grammar) {
    return {{"CreateStruct", std::nullopt, grammar}, {"SetDelimiters", 0, "*:~X"}};
}

Conversation operator+(Conversation conversation, const Step& step) {
    conversation.push_back(step);
    return conversation;
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

// A record of a kind 2 stream.
std::string record(std::string id, const std::string& elements) {
    id.resize(3, ' ');
    return id + "AAAA        " + elements + "~";
}

// Optional segments of names that no message has.
std::string fillers(std::size_t number) {
    std::string grammar;
    for (std::size_t i = 0; i < number; ++i)
        grammar += "O|0|1|F" + std::to_string(10 + i) + "$";
    return grammar;
}

// 40 nodes at the root, and 26 in a loop. A list of nodes has 16 places at first, and then 24, 36 and 54.
const std::string wideTree = "O|0|0|Loop 2300$M|1|1|CLM$" + fillers(25) + "O|0|0|EndLoop$" +
                             "O|0|0|UnorderedGroup$O|0|1|NTE$O|0|1|K3$O|0|0|EndUnorderedGroup$" + fillers(36) +
                             "M|1|1|SE$";
constexpr std::size_t nodesOfWideTree = 40 + 26 + 2;

TEST(Allocations, of_a_kind_2_grammar_may_fail) {
    // The text pool has 4,096 bytes, and is made 8,192 for the first identifier and 16,384 for the second.
    const std::string identifiers = std::string(5000, 'A') + "|" + std::string(10000, 'B');
    const Conversation conversation =
        begun("2004010M|1|1|ST|" + identifiers + "$" + wideTree) + Step{"ValidateStruct", 0, record("ST", "ST")};
    Allocations expected;
    expected.memory = 1                      // the failure buffer
                      + 1                    // the findings
                      + 1                    // the text pool
                      + 3                    // the nodes of the root, of the loop and of the group
                      + 2                    // growth of the pool
                      + 5                    // growth of the root's nodes, to 54, and of the loop's, to 36
                      + 1;                   // the handle
    expected.objects = 4 + nodesOfWideTree;  // findings, located lines, root and pool, and the nodes
    EXPECT_EQ(failEach(conversation, 0), expected);
}

TEST(Allocations, of_a_kind_1_grammar_may_fail) {
    const Conversation conversation = {{"CreateStruct", std::nullopt, "1004010M|1|1|ST$" + wideTree},
                                       {"ValidateStruct", 0, "ST*1$"}};
    Allocations expected;
    expected.memory = 1 + 1 + 3 + 5 + 1;     // as in kind 2, without the pool
    expected.objects = 2 + nodesOfWideTree;  // findings, root, nodes
    EXPECT_EQ(failEach(conversation, 0), expected);
}

TEST(Allocations, of_a_grammar_that_is_refused_may_fail) {
    const Conversation conversation = {{"CreateStruct", std::nullopt, "2M|1|1|ST$M|1$M|1|1|SE$"}};
    // Failure buffer, findings, nodes of the root, pool; findings, located lines, root, pool, and two nodes.
    EXPECT_EQ(failEach(conversation, 0), (Allocations{4, 6}));
}

// 3,000 records of 31 bytes each, of which 20 are faults.
std::string longMessage() {
    return record("ST", "ST*850*00000001") + repeated(record("REF", "REF*ON*12345678"), 2977) +
           repeated(record("N1", "N1*ST*SOMEBODY."), 21) + record("SE", "SE*3000*0000001");
}

TEST(Allocations, of_a_kind_2_walk_may_fail) {
    ASSERT_EQ(longMessage().size(), 3000U * 31);
    const Conversation conversation = begun("2M|1|1|ST$O|0|0|REF$O|0|1|N1$M|1|1|SE$") +
                                      Step{"ValidateStruct", 0, longMessage()} + Step{"GetLoopText", 0, ""};
    Allocations expected;
    expected.memory = 1     // the failure buffer
                      + 1   // the copy of the stream
                      + 1   // the pool, sized for 93,000 / 38.5 records: 4,824 bytes
                      + 1   // the records: 2,415, and 241 at a time
                      + 3   // growth of the records, beyond 3,000
                      + 5   // growth of the pool, by 4,096 at a time, for 3,000 identifiers of 8 bytes
                      + 1   // the located lines
                      + 1   // growth of the findings, beyond 16
                      + 1;  // the report
    expected.objects = 1;   // the list of records
    EXPECT_EQ(failEach(conversation, 2), expected);
}

TEST(Allocations, of_a_kind_1_walk_may_fail) {
    const std::string message = "ST$" + repeated("REF$", 100) + repeated("N1$", 21) + "SE$";
    const Conversation conversation = {{"CreateStruct", std::nullopt, "1M|1|1|ST$O|0|0|REF$O|0|1|N1$M|1|1|SE$"},
                                       {"ValidateStruct", 0, message}};
    Allocations expected;
    expected.memory = 1     // the failure buffer
                      + 1   // the records: 469 / 13.5 = 34, and 10 at a time
                      + 9   // growth of the records, to 124, for 123 of them
                      + 1   // growth of the findings, beyond 16
                      + 1;  // the report
    expected.objects = 1;
    EXPECT_EQ(failEach(conversation, 1), expected);
}

TEST(Allocations, of_a_walk_that_finds_nothing_may_fail) {
    const Conversation conversation =
        begun("2M|1|1|ST$M|1|1|SE$") + Step{"ValidateStruct", 0, record("ST", "ST") + record("SE", "SE")};
    // Failure buffer, copy, pool, records, located lines. Two records of 18 bytes are taken for none, so the list opens
    // empty and grows.
    EXPECT_EQ(failEach(conversation, 2), (Allocations{5, 1}));
}

TEST(Allocations, of_a_second_message_may_fail) {
    const Step message{"ValidateStruct", 0, longMessage()};
    const Conversation conversation = begun("2M|1|1|ST$O|0|0|REF$O|0|1|N1$M|1|1|SE$") + message + message;
    Allocations expected;
    expected.memory = 1     // the failure buffer
                      + 1   // the copy of the stream
                      + 1   // the records
                      + 3   // growth of the records
                      + 6   // growth of the pool, for another 24,000 bytes
                      + 10  // growth of the located lines, by 300 at a time
                      + 0   // the findings have room for 1,040
                      + 1;  // the report
    expected.objects = 2;   // the list of records, and the place of the first copy
    EXPECT_EQ(failEach(conversation, 3), expected);
}

TEST(Allocations, of_the_loop_text_may_fail) {
    const Conversation conversation = begun("2M|1|1|ST$M|1|1|SE$") +
                                      Step{"ValidateStruct", 0, record("ST", "ST*1") + record("SE", "SE*2")} +
                                      Step{"GetLoopText", 0, ""} + Step{"GetLoopText", 0, ""};
    EXPECT_EQ(failEach(conversation, 3), (Allocations{2, 0}));
}

TEST(Allocations, of_an_error_text_may_fail) {
    const Conversation conversation = {
        {"GetErrorText", std::nullopt, "5"}, {"GetErrorText", std::nullopt, "0"}, {"GetErrorText", std::nullopt, "10"}};
    EXPECT_EQ(failEach(conversation, 0), (Allocations{2, 0}));
    EXPECT_EQ(failEach(conversation, 1), (Allocations{2, 0}));
    EXPECT_EQ(failEach(conversation, 2), (Allocations{1, 0}));
}

TEST(Allocations, of_the_version_may_fail) {
    const Conversation conversation = {{"GetQRNTVersion", std::nullopt, ""}, {"GetQRNTVersion", std::nullopt, ""}};
    EXPECT_EQ(failEach(conversation, 0), (Allocations{1, 0}));
}

TEST(Allocations, are_not_made_by_calls_that_could_not_tell_of_their_failure) {
    const Conversation conversation = begun("2M|1|1|ST$M|1|1|SE$") +
                                      Step{"ValidateStruct", 0, record("ST", "ST*1") + record("SE", "SE*2")} +
                                      Step{"DestroyGrammar", 0, ""} + Step{"DestroyStruct", 0, ""};
    for (const std::size_t call : {1U, 3U, 4U})
        EXPECT_EQ(failEach(conversation, call), Allocations()) << call;
}

// 20 lines of the loop 2300, and a trailer.
Conversation locatedMessage() {
    std::string message;
    for (std::size_t i = 0; i < 20; ++i)
        message += record("CLM", "CLM*" + std::to_string(10 + i) + "*HC:" + std::to_string(10 + i) + ":TAIL*P^Q^R");
    return begun("2M|1|0|Loop 2300$M|1|1|CLM$O|0|0|EndLoop$M|1|1|SE$") +
           Step{"ValidateStruct", 0, message + record("SE", "SE*21")};
}

using Fields = std::map<std::size_t, std::string>;

// A rule record from those of its fields that are not empty.
std::string rule(const Fields& fields) {
    constexpr std::size_t fieldNumber = 33;
    std::string text;
    for (std::size_t field = 0; field < fieldNumber; ++field)
        text += (field > 0 ? "|" : "") + (fields.count(field) > 0 ? fields.at(field) : "");
    return text + "$";
}

struct RuleRow {
    const char* name;
    std::string records;
    Allocations beyondUsual;  // of what every run of rules allocates
};

class RuleAllocations : public testing::TestWithParam<RuleRow> {};

TEST_P(RuleAllocations, may_fail) {
    const Step run{"RunRules", 0, GetParam().records};
    // Failure buffer, findings, contents, rules; the three lists.
    const Allocations usual = {4, 3};
    const Allocations expected = {usual.memory + GetParam().beyondUsual.memory,
                                  usual.objects + GetParam().beyondUsual.objects};
    EXPECT_EQ(failEach(locatedMessage() + run, 3), expected);
    EXPECT_EQ(failEach(locatedMessage() + run + run, 4), expected);
}

const RuleRow ruleRows[] = {
    {"no_rule", "", {0, 0}},
    // The list of rules has 32 places at first.
    {"thirty_three_rules", repeated(rule({{0, "99"}}), 33), {1, 33}},
    // The table of values has 16 places at first, for 20 values.
    {"values_that_differ", rule({{0, "10"}, {4, "2300"}, {5, "CLM"}, {6, "0"}, {8, "CLM"}, {16, "1"}}), {1 + 1, 1}},
    // 19 faults of two findings each. Table, growth of the findings, report.
    {"findings",
     rule({{0, "10"}, {4, "2300"}, {5, "CLM"}, {6, "0"}, {8, "CLM"}, {16, "3"}, {25, "L"}}),
     {1 + 1 + 1, 1}},
    // 20 values. Sub-elements, joined text in two steps, growth of the contents beyond 16, report.
    {"sub_elements_joined", rule({{0, "70"}, {4, "2300"}, {5, "CLM"}, {6, "2"}, {7, "1*2"}}), {1 + 2 + 1 + 1, 1}},
    // Sub-elements of the second text, of the key and of the date; joined text in two steps; contents; report.
    {"second_text_key_and_date",
     rule({{0, "70"},
           {4, "2300"},
           {5, "CLM"},
           {6, "1"},
           {9, "2300"},
           {10, "CLM"},
           {11, "2"},
           {12, "3"},
           {14, "2300"},
           {15, "CLM"},
           {16, "2"},
           {17, "1"},
           {19, "2300"},
           {20, "CLM"},
           {21, "2"},
           {22, "2"}}),
     {3 + 2 + 1 + 1, 1}},
    // Pieces of the list; 60 values, which is 16 and three times 20 more; report.
    {"pieces_of_a_list", rule({{0, "70"}, {4, "2300"}, {5, "CLM"}, {6, "3"}}), {1 + 3 + 1, 1}},
    // Sub-elements of qualifier and code; 40 values; report.
    {"qualified_codes",
     rule({{0, "71"},
           {4, "2300"},
           {5, "CLM"},
           {6, "2"},
           {7, "1"},
           {8, "HC"},
           {9, "2300"},
           {10, "CLM"},
           {11, "2"},
           {12, "2*3"}}),
     {2 + 2 + 1, 1}},
    // Sub-elements; joined text in two steps; 20 values; report.
    {"occurrences",
     rule({{0, "80"}, {5, "SE"}, {6, "1"}, {8, "INDEX"}, {14, "2300"}, {15, "CLM"}, {16, "2"}, {17, "1+2"}}),
     {1 + 2 + 1 + 1, 1}},
};

INSTANTIATE_TEST_SUITE_P(Of, RuleAllocations, testing::ValuesIn(ruleRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Allocations, of_rules_over_a_grammar_without_located_lines_may_fail) {
    const Conversation conversation = {{"CreateStruct", std::nullopt, "1M|1|1|ST$M|1|1|SE$"},
                                       {"ValidateStruct", 0, "ST$SE$"},
                                       {"RunRules", 0, rule({{0, "5"}})}};
    EXPECT_EQ(failEach(conversation, 2), (Allocations{4, 3}));
}

// The loops of the tree know the list of findings that they were made with, which RunRules replaces. The message has a
// finding in its loop.
TEST(Allocations, that_rules_lack_leave_no_tree_whose_findings_are_gone) {
    const Step walk{"ValidateStruct", 0,
                    record("CLM", "CLM*1") + record("HI", "HI*1") + record("HI", "HI*2") + record("SE", "SE*4")};
    const Conversation walked = begun("2M|1|0|Loop 2300$M|1|1|CLM$O|0|1|HI$O|0|0|EndLoop$M|1|1|SE$") + walk;
    const Outcome walkedAgain = usualOutcomes(walked + walk).back();
    ASSERT_EQ(walkedAgain.answer.output, cases::Answer::Output::reply);
    for (std::size_t number = 1;; ++number) {
        Stage stage;
        for (const Step& step : walked)
            stage.play(step);
        if (stage.play({"RunRules", 0, rule({{0, "5"}})}, {number, false, false}).firstFailed == Kind::none) break;
        const Outcome outcome = stage.play(walk);
        EXPECT_TRUE(isRefused(outcome) || describe(walk, outcome) == describe(walk, walkedAgain))
            << "behind a failure of allocation " << number << ": " << describe(walk, outcome);
    }
}

class CaseAllocations : public testing::TestWithParam<std::string> {};

// The hundreds of cases of rules differ in their rules, and make much the same grammars and walks before.
TEST_P(CaseAllocations, may_fail) {
    const bool isOfRules = GetParam() == "rules";
    std::size_t calls = 0;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(std::string(CASES_FOLDER "/") + GetParam())) {
        if (entry.path().extension() != ".case") continue;
        SCOPED_TRACE(entry.path().string());
        const Conversation conversation = robustness::recordedFrom(entry.path().string());
        for (std::size_t call = 0; call < conversation.size() && !HasFailure(); ++call) {
            if (isOfRules && conversation[call].exportName != "RunRules") continue;
            failEach(conversation, call);
            ++calls;
        }
    }
    EXPECT_GT(calls, 0U);
}

std::vector<std::string> caseAreas() {
    std::vector<std::string> areas;
    for (const auto& entry : std::filesystem::directory_iterator(CASES_FOLDER))
        if (entry.is_directory()) areas.push_back(entry.path().filename().string());
    std::sort(areas.begin(), areas.end());
    return areas;
}

INSTANTIATE_TEST_SUITE_P(Of, CaseAllocations, testing::ValuesIn(caseAreas()),
                         [](const auto& area) { return area.param; });

}  // namespace
