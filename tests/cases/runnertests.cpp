/*
 * Tests of the case runner itself, against a library that answers whatever the test tells it to: a case that holds
 * passes, and a case that doesn't hold fails and says where.
 */
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "casefile.h"
#include "caserun.h"
#include "host.h"
#include "hostinput.h"
#include "reportlines.h"

namespace {

using cases::CaseError;
using cases::Failure;

/* What the library that isn't one answers, and what it was given. */
struct FakeLibrary {
    std::string handle = "0c07f3a10c04e20";
    std::string walkReply;
    std::string errorText;
    std::string loopText;
    int32_t walkReturnCode = 0;
    bool refusesGrammar = false;
    bool leavesWalkUntouched = false;
    bool touchesOutputInSetDelimiters = false;
    bool writesLengthOnly = false;
    bool writesHostField = false;
    bool hasLoopText = true;
    std::vector<std::string> calls;
};

FakeLibrary fake;

void reply(tagExitParamStruct* param, const std::string& text) {
    param->outputText = static_cast<char*>(std::malloc(text.size() + 1));
    std::memcpy(param->outputText, text.data(), text.size());
    param->outputLength = text.size();
    param->returnCode = 0;
}

void note(const char* name, const tagExitParamStruct* param) {
    fake.calls.push_back(std::string(name) + " " + std::string(param->inputText, param->inputLength));
}

void fakeCreateStruct(tagExitParamStruct* param) {
    note("CreateStruct", param);
    if (fake.refusesGrammar) {
        param->returnCode = -1;
    } else {
        reply(param, fake.handle);
    }
}

void fakeSetDelimiters(tagExitParamStruct* param) {
    note("SetDelimiters", param);
    param->returnCode = 0;
    if (fake.touchesOutputInSetDelimiters) {
        param->outputText = nullptr;
        param->outputLength = 0;
    }
}

void fakeValidateStruct(tagExitParamStruct* param) {
    note("ValidateStruct", param);
    param->returnCode = fake.walkReturnCode;
    if (fake.writesHostField) param->hostOnly64[3] = 0;
    if (fake.writesLengthOnly) {
        param->outputLength = 0;
    } else if (fake.walkReply.empty() && !fake.leavesWalkUntouched) {
        param->outputText = nullptr;
        param->outputLength = 0;
    } else if (!fake.walkReply.empty()) {
        reply(param, fake.walkReply);
        param->returnCode = fake.walkReturnCode;
    }
}

void fakeGetErrorText(tagExitParamStruct* param) {
    reply(param, fake.errorText);
}
void fakeGetLoopText(tagExitParamStruct* param) {
    reply(param, fake.loopText);
}

void fakeDestroyStruct(tagExitParamStruct* param) {
    note("DestroyStruct", param);
    param->returnCode = 0;
}

void* fakeSymbol(const std::string& name) {
    if (name == "GetLoopText" && !fake.hasLoopText) return nullptr;
    static const std::map<std::string, void*> symbols = {
        {"CreateStruct", reinterpret_cast<void*>(fakeCreateStruct)},
        {"SetDelimiters", reinterpret_cast<void*>(fakeSetDelimiters)},
        {"ValidateStruct", reinterpret_cast<void*>(fakeValidateStruct)},
        {"GetErrorText", reinterpret_cast<void*>(fakeGetErrorText)},
        {"GetLoopText", reinterpret_cast<void*>(fakeGetLoopText)},
        {"DestroyStruct", reinterpret_cast<void*>(fakeDestroyStruct)},
        {"voptMemFree", reinterpret_cast<void*>(std::free)},
    };
    const auto found = symbols.find(name);
    return found == symbols.end() ? nullptr : found->second;
}

std::string findingLine(const std::string& number, const std::string& name, char code, const std::string& loop) {
    return number + "00000" + name + std::string(8 - name.size(), ' ') + code + "    " + loop +
           std::string(6 - loop.size(), ' ') + "NONESEG ERROR" + std::string(75, ' ') + "Element Text" +
           std::string(38, ' ') + "$";
}

class CaseRunTest : public testing::Test {
protected:
    void SetUp() override { fake = FakeLibrary(); }

    static std::vector<Failure> run(const std::string& text) {
        return cases::runCase(cases::parseCase("a.case", "# what it shows\n" + text), cases::Host(fakeSymbol));
    }

    static void expectHolds(const std::string& text) {
        for (const Failure& failure : run(text))
            ADD_FAILURE() << failure.line << ": " << failure.text;
    }

    static void expectFails(const std::string& text, int line, const std::string& words) {
        const std::vector<Failure> failures = run(text);
        ASSERT_FALSE(failures.empty()) << "the case should not hold:\n" << text;
        EXPECT_EQ(failures[0].line, line) << failures[0].text;
        EXPECT_NE(failures[0].text.find(words), std::string::npos) << failures[0].text;
    }
};

TEST(ReportLine, of_a_finding_has_173_bytes_in_ten_columns) {
    EXPECT_EQ(cases::lineLength(cases::findingLayout()), 173u);
    EXPECT_EQ(cases::formatLine(cases::findingLayout(),
                                {"4", "0", "00", "NM1", "3", "1000A", "NONE", "SEG", "ERROR", "Element Text"}),
              findingLine("0000000004", "NM1", '3', "1000A"));
}

TEST(ReportLine, of_a_content_record_has_223_bytes_in_sixteen_columns) {
    EXPECT_EQ(cases::lineLength(cases::contentLayout()), 223u);
    const std::string line = cases::formatLine(
        cases::contentLayout(),
        {"12", "3", "1", "CLM", "E1", "2300", "T", "S", "M", "code", "qual", "key", "date", "V", "PA", "table"});
    EXPECT_EQ(line, "000000001200301CLM     E1   2300  T   S   M" + std::string(79, ' ') + "code" +
                        std::string(16, ' ') + "qual    key     date    V PA  table" + std::string(45, ' ') + "$");
}

TEST(ReportLine, is_lengthened_by_a_number_wider_than_its_column) {
    const std::vector<std::string> columns = {"1", "1000"};
    EXPECT_EQ(cases::formatLine(cases::findingLayout(), columns).size(), 174u);
    EXPECT_EQ(cases::formatLine(cases::findingLayout(), {"-1", "0"}).substr(0, 11), "-0000000001");
}

TEST(ReportLine, refuses_texts_that_no_report_shows) {
    EXPECT_THROW(cases::formatLine(cases::findingLayout(), {"x", "0"}), std::invalid_argument);
    EXPECT_THROW(cases::formatLine(cases::findingLayout(), {"", "0"}), std::invalid_argument);
    EXPECT_THROW(cases::formatLine(cases::findingLayout(), {"1", "0", "00", "NINELONGX"}), std::invalid_argument);
    EXPECT_THROW(cases::formatLine(cases::findingLayout(), std::vector<std::string>(11, "1")), std::invalid_argument);
}

TEST(ReportDifference, names_the_column_and_both_texts) {
    const std::string expected = findingLine("0000000004", "NM1", '3', "1000A");
    const std::string actual = findingLine("0000000004", "NM1", '3', "1000B");
    EXPECT_EQ(cases::explainDifference(cases::findingLayout(), {expected}, expected), "");
    const std::string text = cases::explainDifference(cases::findingLayout(), {expected}, actual);
    EXPECT_NE(text.find("loop: expected \"1000A \", found \"1000B \""), std::string::npos) << text;
    EXPECT_EQ(text.find("segment:"), std::string::npos) << text;
}

TEST(ReportDifference, names_missing_and_unexpected_records) {
    const std::string line = findingLine("0000000004", "NM1", '3', "1000A");
    EXPECT_NE(cases::explainDifference(cases::findingLayout(), {line}, "").find("record 1 is missing"),
              std::string::npos);
    EXPECT_NE(cases::explainDifference(cases::findingLayout(), {}, line).find("record 1 is unexpected"),
              std::string::npos);
    EXPECT_NE(cases::explainDifference(cases::findingLayout(), {line}, line + "x").find("record 2 is unexpected"),
              std::string::npos);
}

TEST(CaseFile, is_cut_into_sections_without_comments_and_blank_ends) {
    const cases::CaseFile file =
        cases::parseCase("a.case", "# head\n\n[one] first\nsecond\n\n# between\n\n[two]\n\nlast\n");
    ASSERT_EQ(file.sections.size(), 2u);
    EXPECT_EQ(file.sections[0].name, "one");
    EXPECT_EQ(cases::joined(file.sections[0], "/"), "first/second");
    EXPECT_EQ(file.sections[1].line, 8);
    EXPECT_EQ(cases::joined(file.sections[1], "/"), "/last");
}

TEST(CaseFile, has_escapes_for_every_byte) {
    EXPECT_EQ(cases::unescape({1, "a\\n\\r\\t\\0\\x41\\xfF\\\\\\#\\["}), std::string("a\n\r\t\0A\xff\\#[", 10));
    EXPECT_EQ(cases::escape(std::string("a\n\0\\\xff", 5)), "a\\n\\x00\\\\\\xff");
}

TEST(CaseFile, that_is_malformed_is_refused_at_its_line) {
    const std::vector<std::pair<std::string, int>> malformed = {
        {"[one]\n", 1},          {"", 0}, {"# head\n", 0}, {"# head\ntext\n[one]\n", 2}, {"# head\n\n[one\n", 3},
        {"# head\n[one]x\n", 2},
    };
    for (const auto& [text, line] : malformed) {
        try {
            cases::parseCase("a.case", text);
            ADD_FAILURE() << "should be refused: " << text;
        } catch (const CaseError& fault) {
            EXPECT_EQ(fault.line, line) << text;
        }
    }
    EXPECT_THROW(cases::unescape({1, "\\q"}), CaseError);
    EXPECT_THROW(cases::unescape({1, "\\x4"}), CaseError);
    EXPECT_THROW(cases::unescape({1, "end\\"}), CaseError);
}

TEST(HostInput, gives_each_kind_of_grammar_its_stream_form) {
    const cases::Section plain{"message", 1, {{2, "ST*850*0001"}, {3, ""}, {4, "SE*2"}}};
    EXPECT_EQ(cases::streamOfKind1(plain), "ST ST*850*0001$SE SE*2$");
    const cases::Section identified{"message", 1, {{2, "<BY> N1*BY*NAME"}, {3, "SE*2"}}};
    EXPECT_EQ(cases::streamOfKind2(identified, {'*', "~\n"}),
              "N1 BY" + std::string(10, ' ') + "N1*BY*NAME~\nSE" + std::string(13, ' ') + "SE*2~\n");
}

TEST(HostInput, refuses_a_segment_that_its_form_does_not_hold) {
    const auto message = [](const char* line) { return cases::Section{"message", 1, {{2, line}}}; };
    EXPECT_THROW(cases::streamOfKind2(message("ABCD*1"), {'*', "~"}), CaseError);
    EXPECT_THROW(cases::streamOfKind2(message("<123456> N1*1"), {'*', "~"}), CaseError);
    EXPECT_THROW(cases::streamOfKind2(message("<> N1*1"), {'*', "~"}), CaseError);
    EXPECT_THROW(cases::streamOfKind2(message("N1*1~N1*2"), {'*', "~"}), CaseError);
    EXPECT_THROW(cases::streamOfKind1(message("<BY> N1*1")), CaseError);
    EXPECT_THROW(cases::streamOfKind1(message("N1*1$")), CaseError);
}

TEST(HostInput, takes_the_terminator_from_the_delimiter_text) {
    EXPECT_EQ(cases::readDelimiters("*:~\nX").terminator, "~\n");
    EXPECT_EQ(cases::readDelimiters("+:'X").element, '+');
    EXPECT_EQ(cases::readDelimiters("*:X").terminator, "");
    EXPECT_EQ(cases::readDelimiters("").terminator, "");
}

TEST(HostInput, writes_all_33_fields_of_a_rule) {
    const cases::Section rules{"rule",
                               1,
                               {{2, "number 29"},
                                {3, "outer L"},
                                {4, "left 2300 CLM 1 - A*B C"},
                                {5, "right  2400  SV1 2*3 1"},
                                {6, "order L"},
                                {7, "message A claim without its  line"},
                                {8, "argument32 T"},
                                {9, ""},
                                {10, "number 5"}}};
    EXPECT_EQ(cases::ruleRecords(rules),
              "29|L|||2300|CLM|1||A*B C||||||2400|SV1|2*3|1||||||||L||||A claim without its  line|||T$"
              "5||||||||||||||||||||||||||||||||$");
}

TEST(HostInput, refuses_a_rule_that_is_none) {
    const auto rule = [](const char* line) { return cases::Section{"rule", 1, {{2, line}}}; };
    EXPECT_THROW(cases::ruleRecords(rule("left 2300")), CaseError);
    EXPECT_THROW(cases::ruleRecords(rule("nummer 5")), CaseError);
    EXPECT_THROW(cases::ruleRecords({"rule", 1, {{2, "number 5"}, {3, "number 6"}}}), CaseError);
}

TEST_F(CaseRunTest, makes_the_calls_in_order_and_destroys_the_object) {
    expectHolds("[grammar]\n2M|1|1|ST$\nM|1|1|SE$\n[message]\n<1> ST*1\n[report]\n");
    EXPECT_EQ(fake.calls, (std::vector<std::string>{
                              "CreateStruct 2M|1|1|ST$\nM|1|1|SE$",
                              "SetDelimiters 0c07f3a10c04e20*:~X",
                              "ValidateStruct 0c07f3a10c04e20ST 1           ST*1~",
                              "DestroyStruct 0c07f3a10c04e20",
                          }));
}

TEST_F(CaseRunTest, uses_the_delimiters_of_the_case) {
    expectHolds("[grammar] 2M|1|1|ST$\n[delimiters] +:'X\n[message]\nST+1\n[report]\n[destroy]\n");
    EXPECT_EQ(fake.calls[2], "ValidateStruct 0c07f3a10c04e20ST" + std::string(13, ' ') + "ST+1'");
    EXPECT_EQ(fake.calls.size(), 4u);
}

TEST_F(CaseRunTest, calls_with_a_handle_of_the_case) {
    expectHolds("[grammar] 1\n[handle] 000\n[stream] ST$\n[report]\n[object] 1\n[stream] SE$\n[no reply]\n");
    EXPECT_EQ(fake.calls[1], "ValidateStruct 000ST$");
    EXPECT_EQ(fake.calls[2], "ValidateStruct 0c07f3a10c04e20SE$");
}

TEST_F(CaseRunTest, destroys_the_object_of_a_case_that_fails) {
    fake.walkReply = "surprise";
    expectFails("[grammar] 1\n[stream] ST$\n[report]\n", 4, "record 1 is unexpected");
    EXPECT_EQ(fake.calls.back(), "DestroyStruct 0c07f3a10c04e20");
}

TEST_F(CaseRunTest, compares_findings_written_with_four_or_ten_columns) {
    fake.walkReply = findingLine("0000000004", "NM1", '3', "1000A");
    expectHolds("[grammar] 1\n[stream] ST$\n[report]\n4 | NM1 | 3 | 1000A\n");
    expectHolds("[grammar] 1\n[stream] ST$\n[report]\n4|0|00|NM1|3|1000A|NONE|SEG|ERROR|Element Text\n");
    expectFails("[grammar] 1\n[stream] ST$\n[report]\n4 | NM1 | 3 | 1000B\n", 4, "loop: expected \"1000B \"");
    expectFails("[grammar] 1\n[stream] ST$\n[report]\n4|0|00|NM1|3|1000A|NONE|SEG|ERROR|\n", 4, "value: expected");
    expectFails("[grammar] 1\n[stream] ST$\n[report]\n", 4, "record 1 is unexpected");
    expectFails("[grammar] 1\n[stream] ST$\n[report]\n4 | NM1 | 3\n", 5, "4 columns");
}

TEST_F(CaseRunTest, compares_content_records) {
    fake.walkReply = "000000001200301CLM     E1   2300  T   S   M" + std::string(79, ' ') + "code" +
                     std::string(16, ' ') + "qual    key     date    V PA  table" + std::string(45, ' ') + "$";
    const std::string head = "[grammar] 1\n[stream] ST$\n[contents]\n12|3|1|CLM|E1|2300|T|S|M|code|qual|";
    expectHolds(head + "key|date|V|PA|table\n");
    expectFails(head + "kez|date|V|PA|table\n", 4, "key: expected \"kez     \", found \"key     \"");
}

TEST_F(CaseRunTest, sees_each_way_in_which_an_answer_can_be_wrong) {
    const std::string walk = "[grammar] 1\n[stream] ST$\n";
    fake.walkReply = "surprise";
    expectFails(walk + "[destroy]\n[untouched]\n", 3, "expected no reply");
    expectFails(walk + "[reply] surprises\n", 4, "expected a reply of 9 bytes");
    expectFails(walk + "[untouched]\n", 4, "expected the output fields untouched");
    fake.walkReply.clear();
    expectFails(walk + "[reply]\n", 4, "expected a reply of 0 bytes");
    expectFails(walk + "[report]\n1 | ST | 2 | LOOP\n", 4, "record 1 is missing");
    expectFails(walk + "[return] 1\n", 3, "the return code: expected 1, found 0");
    expectFails(walk + "[return] untouched\n", 3, "expected untouched, found 0");
    fake.leavesWalkUntouched = true;
    expectFails(walk + "[report]\n", 4, "expected no reply");
    expectFails(walk + "[return] 0\n", 3, "expected no reply");
    fake.walkReturnCode = -1;
    expectHolds(walk + "[return] -1\n");
    expectFails(walk + "[untouched]\n", 3, "the return code: expected 0, found -1");
}

TEST_F(CaseRunTest, sees_what_a_call_must_never_do) {
    const std::string text = "[grammar] 1\n[stream] ST$\n[no reply]\n";
    fake.writesLengthOnly = true;
    expectFails(text, 3, "only one of outputText and outputLength");
    fake.writesLengthOnly = false;
    fake.writesHostField = true;
    expectFails(text, 3, "a field of the record that is the host's");
}

TEST_F(CaseRunTest, sees_a_touched_output_where_a_call_has_no_reply) {
    fake.touchesOutputInSetDelimiters = true;
    expectFails("[grammar] 2\n[delimiters] *:~X\n[stream]\n[report]\n", 3, "expected the output fields untouched");
}

TEST_F(CaseRunTest, sees_a_handle_that_is_none) {
    for (const char* handle : {"", "0c", "0c17f3a10c04e20", "0d07f3a10c04e20", "0c07F3A10C04E20", "0c007f3a10c04e2"}) {
        fake.handle = handle;
        expectFails("[grammar] 1\n[stream] ST$\n[report]\n", 2, "expected a handle");
    }
}

TEST_F(CaseRunTest, expects_a_grammar_to_be_refused_only_where_the_case_says_so) {
    fake.refusesGrammar = true;
    expectHolds("[grammar] 2$\n[return] -1\n");
    expectFails("[grammar] 2$\n[untouched]\n", 2, "the return code: expected 0, found -1");
}

TEST_F(CaseRunTest, compares_loop_text_line_by_line) {
    fake.loopText = "ST**850~N1*2000A*ST~";
    const std::string head = "[grammar] 2\n[delimiters] *:~X\n[stream]\n";
    expectHolds(head + "[loops]\nST**850\nN1*2000A*ST\n");
    expectFails(head + "[loops]\nST**850\nN1*2000B*ST\n", 5, "the located segments differ");
    fake.hasLoopText = false;
    expectFails(head + "[loops]\nST**850\n", 5, "does not export GetLoopText");
}

TEST_F(CaseRunTest, compares_replies_byte_by_byte) {
    fake.errorText = std::string("a\0b", 3);
    expectHolds("[error text] 1\n[reply] a\\0b\n");
    expectFails("[error text] 1\n[reply] a\\0c\n", 3, "found a reply of 3 bytes: \"a\\x00b\"");
    expectFails("[error text] 1\n[return] 0\n", 2, "needs its [reply]");
}

TEST_F(CaseRunTest, refuses_a_case_that_shows_nothing_or_makes_no_sense) {
    expectFails("[grammar] 2\n", 0, "the case expects nothing");
    expectFails("[report]\n", 2, "stands in front of any call");
    expectFails("[grammer] 2\n[report]\n", 2, "there is no section [grammer]");
    expectFails("[message]\nST*1\n[report]\n", 2, "has no object");
    expectFails("[grammar] 1\n[stream] ST$\n[report]\n[no reply]\n", 5, "has already told");
    expectFails("[grammar] 1\n[object] 1\n[report]\n", 4, "has no call in front of it");
    expectFails("[grammar] 1\n[object] 2\n[stream]\n[report]\n", 3, "no such object");
    expectFails("[grammar] 1\n[destroy]\n[stream] ST$\n[report]\n", 4, "has no object");
    expectFails("[grammar] 2\n[delimiters] *:X\n[message]\nST*1\n[report]\n", 4, "without a terminator");
    expectFails("[grammar] 1\n[stream] ST$\n[return] zero\n", 4, "takes a number");
}

}  // namespace
