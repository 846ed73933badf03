/*
 * A host in C++, for what a case file can't show: the bytes that a call changes in the host's own input, replies that
 * outlive their object, inputs of many megabytes, calls for which there is no memory.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "host.h"
#include "reportlines.h"

/* A request for more memory than there is answers null here too, as it does without the sanitizer. */
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace {

using cases::Answer;
using cases::Host;
using namespace std::string_literals;

const char* const plainKind1 = "1M|1|1|ST$M|1|1|SE$";
const char* const plainKind2 = "2M|1|1|ST$M|1|1|SE$";
constexpr size_t tenMegabytes = 10 * 1024 * 1024;

const cases::SymbolLookup& library() {
    static const cases::SymbolLookup symbols = cases::openLibrary();
    return symbols;
}

const Host& host() {
    static const Host theHost(library());
    return theHost;
}

/* An object and its handle, destroyed at the end of the test. */
class Object {
public:
    explicit Object(const std::string& grammar) : creation(host().call("CreateStruct", grammar)) {
        EXPECT_EQ(creation.returnCode, 0);
        EXPECT_EQ(creation.output, Answer::Output::reply);
    }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() {
        if (!isAlive) return;
        EXPECT_EQ(destroy().returnCode, 0);
    }

    const std::string& handle() const { return creation.reply; }
    size_t handleLength() const { return creation.reply.size(); }
    const Answer& created() const { return creation; }

    Answer call(const char* exportName, const std::string& input = "") const {
        return host().call(exportName, handle() + input);
    }

    Answer destroy(const std::string& input = "") {
        isAlive = false;
        return call("DestroyStruct", input);
    }

private:
    Answer creation;
    bool isAlive = true;
};

std::string finding(size_t number, const std::string& name, const std::string& code) {
    return cases::formatLine(cases::findingLayout(), {std::to_string(number), "0", "00", name, code, "LOOP", "NONE",
                                                      "SEG", "ERROR", "Element Text"});
}

/* A value that rule 70 takes from element 0 of a line outside of any loop. */
std::string content(size_t number, const std::string& name, const std::string& value) {
    return cases::formatLine(cases::contentLayout(), {std::to_string(number), "0", "00", name, "", "", "", "", "",
                                                      value, "QualVal", "KeyVal", "DateVal", "", "", ""});
}

std::string kind2Record(const std::string& id, const std::string& rest = "") {
    return id + std::string(15 - id.size(), ' ') + rest + "~";
}

std::string repeated(const std::string& text, size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

/* What a call leaves of its input: the handle with a NUL at index 2, and the rest as given, with the NUL behind it. */
std::string inputAfter(const Object& object, const std::string& rest) {
    std::string input = object.handle() + rest + '\0';
    input[2] = '\0';
    return input;
}

void expectRefused(const Answer& answer) {
    EXPECT_EQ(answer.returnCode, -1);
    EXPECT_EQ(answer.output, Answer::Output::untouched);
    EXPECT_EQ(answer.breach, "");
}

void expectReport(const Answer& answer, const std::string& report) {
    EXPECT_EQ(answer.returnCode, 0);
    EXPECT_EQ(answer.breach, "");
    EXPECT_EQ(answer.output, report.empty() ? Answer::Output::none : Answer::Output::reply);
    EXPECT_TRUE(answer.reply == report) << answer.reply.size() << " bytes instead of " << report.size();
}

const char* textSymbol(const char* name) {
    return static_cast<const char*>(library()(name));
}

void release(char* reply) {
    reinterpret_cast<void (*)(void*)>(library()("voptMemFree"))(reply);
}

// The exported symbols.

TEST(ExportedTexts, say_what_the_library_is) {
    EXPECT_STREQ(textSymbol("cQrntVersion"), "4.4.1.7");
    EXPECT_STREQ(textSymbol("cQrntOperatingSystem"), "LINUX");
    EXPECT_STREQ(textSymbol("szVersion"), "9.0.0(96)");
    EXPECT_STREQ(textSymbol("szFullKLVVersion"), "9.0.0.4(96)");
    EXPECT_STREQ(textSymbol("szVoptVersionLabel"), "VoptVerLabel=9.0.0.4(96)");
    EXPECT_STRNE(textSymbol("szProductName"), "");
    EXPECT_STRNE(textSymbol("szNotice"), "");
}

TEST(MemoryExports, give_memory_and_take_it_back) {
    const auto allocate = reinterpret_cast<void* (*)(uint64_t)>(library()("voptMemAlloc"));
    const auto release = reinterpret_cast<void (*)(void*)>(library()("voptMemFree"));
    ASSERT_NE(allocate, nullptr);
    ASSERT_NE(release, nullptr);
    void* memory = allocate(1000);
    ASSERT_NE(memory, nullptr);
    std::memset(memory, 'x', 1000);
    release(memory);
    release(nullptr);
    EXPECT_EQ(allocate(std::numeric_limits<uint64_t>::max() / 2), nullptr);
}

// The handle.

TEST(Handle, is_left_with_a_nul_at_its_third_byte_and_nothing_else_changed) {
    const Object object(plainKind2);
    EXPECT_EQ(object.call("SetDelimiters", "*:~X").input, inputAfter(object, "*:~\0"s));
    const std::string stream = kind2Record("ST", "ST*1") + kind2Record("SE", "SE*1");
    EXPECT_EQ(object.call("ValidateStruct", stream).input, inputAfter(object, stream));
    EXPECT_EQ(object.call("DestroyGrammar", "behind it").input, inputAfter(object, "behind it"));
}

TEST(Handle, of_a_destroyed_object_is_left_the_same_way) {
    Object object(plainKind1);
    const Answer answer = object.destroy("behind it");
    EXPECT_EQ(answer.input, inputAfter(object, "behind it"));
    EXPECT_EQ(answer.output, Answer::Output::untouched);
}

TEST(Handle, that_was_used_once_can_be_used_again) {
    const Object object("2M|1|1|ST$M|1|1|BGM$M|1|1|SE$");
    std::string used = object.call("SetDelimiters", "*:~X").input;
    used.resize(object.handleLength());
    EXPECT_EQ(used[2], '\0');
    const Answer answer = host().call("ValidateStruct", used + kind2Record("ST") + kind2Record("SE"));
    expectReport(answer, finding(2, "BGM", "3"));
}

TEST(Handle, may_have_its_digits_filled_up_to_sixteen) {
    for (size_t digits = 13; digits <= 16; ++digits) {
        const Object object(plainKind1);
        const std::string address = object.handle().substr(3);
        ASSERT_LE(address.size(), digits);
        char length[3];
        std::snprintf(length, sizeof length, "%2.2x", static_cast<unsigned>(digits));
        const std::string handle = length + "0"s + std::string(digits - address.size(), '0') + address;
        expectReport(host().call("ValidateStruct", handle + "ZZ $"), finding(1, "ST", "3") + finding(1, "ZZ", "2"));
    }
}

TEST(Reply, outlives_its_object) {
    tagExitParamStruct param = {};
    std::string handle;
    {
        Object object(plainKind1);
        std::string input = object.handle() + "ZZ $";
        param.inputText = input.data();
        param.inputLength = input.size();
        reinterpret_cast<void (*)(tagExitParamStruct*)>(library()("ValidateStruct"))(&param);
    }
    const std::string expected = finding(1, "ST", "3") + finding(1, "ZZ", "2");
    ASSERT_NE(param.outputText, nullptr);
    EXPECT_EQ(std::string(param.outputText, param.outputLength), expected);
    release(param.outputText);
}

// Inputs that are not there.

TEST(InputLength, inside_the_handle_leaves_no_stream_and_no_rules_behind_it) {
    // Without segments the root names what is mandatory behind its first child, by its place.
    const std::string reportOfNothing = finding(2, "BGM", "3");
    const std::string rule = "70|||||BGM|0$";
    for (const size_t missing : {0U, 1U, 12U, 15U}) {
        SCOPED_TRACE(missing);
        const Object kind1("1M|1|1|ST$M|1|1|BGM$M|1|1|SE$");
        const size_t length = kind1.handleLength() - std::min(missing, kind1.handleLength());
        expectReport(host().callWithLength("ValidateStruct", kind1.handle() + "ZZ $", length), reportOfNothing);

        const Object kind2("2M|1|1|ST$M|1|1|BGM$M|1|1|SE$");
        kind2.call("SetDelimiters", "*:~X");
        const std::string stream = kind2Record("ST") + kind2Record("BGM", "BGM*2");
        expectReport(host().callWithLength("ValidateStruct", kind2.handle() + stream, length), reportOfNothing);
        const Object located("2M|1|1|ST$M|1|1|BGM$M|1|1|SE$");
        located.call("SetDelimiters", "*:~X");
        expectReport(located.call("ValidateStruct", stream), "");
        expectReport(host().callWithLength("RunRules", located.handle() + rule, length), "");
        expectReport(located.call("RunRules", rule), content(2, "BGM", "BGM"));
    }
}

TEST(InputLength, inside_the_handle_leaves_delimiters_and_a_document_that_are_read_to_their_nul) {
    const Object object("2M|1|1|ST$M|1|1|SE$");
    EXPECT_EQ(host().callWithLength("SetDelimiters", object.handle() + "*:~X", 1).returnCode, 0);
    expectReport(object.call("ValidateStruct", kind2Record("ST") + kind2Record("ZZ")), finding(2, "ZZ", "2"));
    const Answer answer = host().callWithLength("ValidateXML", object.handle() + "101<a/>", 1);
    EXPECT_EQ(answer.returnCode, 0);
    EXPECT_EQ(answer.reply, "\0\0"s);
}

/* A call without an input text; the length says otherwise. */
tagExitParamStruct callWithoutInput(const char* exportName) {
    tagExitParamStruct param = {};
    param.inputLength = 100;
    param.returnCode = Host::presetReturnCode;
    reinterpret_cast<void (*)(tagExitParamStruct*)>(library()(exportName))(&param);
    return param;
}

TEST(CreateStruct, without_an_input_text_makes_a_grammar_of_kind_2_without_nodes) {
    const tagExitParamStruct param = callWithoutInput("CreateStruct");
    EXPECT_EQ(param.returnCode, 0);
    ASSERT_NE(param.outputText, nullptr);
    const std::string handle(param.outputText, param.outputLength);
    release(param.outputText);
    EXPECT_EQ(host().call("SetDelimiters", handle + "*:~X").returnCode, 0);  // refused by kind 1
    expectReport(host().call("ValidateStruct", handle + kind2Record("ST")), finding(1, "ST", "2"));
    EXPECT_EQ(host().call("DestroyStruct", handle).returnCode, 0);
}

TEST(OtherCalls, without_an_input_text_are_refused) {
    for (const char* exportName : {"SetDelimiters", "ValidateStruct", "GetLoopText", "RunRules", "ValidateXML",
                                   "GetErrorText", "DestroyGrammar"}) {
        SCOPED_TRACE(exportName);
        const tagExitParamStruct param = callWithoutInput(exportName);
        EXPECT_EQ(param.returnCode, -1);
        EXPECT_EQ(param.outputText, nullptr);
        EXPECT_EQ(param.outputLength, 0U);
    }
}

TEST(OtherCalls, without_an_input_text_have_nothing_to_destroy_or_nothing_to_read) {
    EXPECT_EQ(callWithoutInput("DestroyStruct").returnCode, 0);
    const tagExitParamStruct param = callWithoutInput("GetQRNTVersion");
    EXPECT_EQ(param.returnCode, 0);
    EXPECT_EQ(std::string(param.outputText, param.outputLength), "4.4.1.7|LINUX|9.0.0(96)");
    release(param.outputText);
}

// A NUL as element delimiter.

TEST(ElementDelimiter, may_be_a_nul_which_ends_the_loop_text_and_hides_the_elements) {
    const Object object("2M|1|1|ST$M|1|1|BGM$M|1|1|SE$");
    object.call("SetDelimiters", "\0:~X"s);
    const std::string stream =
        kind2Record("ST", "ST\0001"s) + kind2Record("BGM", "BGM*2") + kind2Record("SE", "SE\0003"s);
    expectReport(object.call("ValidateStruct", stream), "");
    const Answer answer = object.call("GetLoopText");
    EXPECT_EQ(answer.returnCode, 0);
    EXPECT_EQ(answer.reply, "ST");
    // Rule 70 on element 1 of two lines, and then on element 0, which is the text up to its first NUL.
    expectReport(object.call("RunRules", "70|||||BGM|1$70|||||SE|1$"), "");
    expectReport(object.call("RunRules", "70|||||BGM|0$70|||||SE|0$"),
                 content(2, "BGM", "BGM*2") + content(3, "SE", "SE"));
}

// What the calls change in the host's input.

TEST(HostInput, of_a_grammar_has_nuls_where_records_and_fields_end) {
    const Object object("2M||1|1|ST$\n|O|0|9|REF||20|$M|1|1|SE$ rest");
    EXPECT_EQ(object.created().input,
              "2M\0|1\0001\0ST\0\n"
              "|O\0000\0009\0REF\0|20\0\0"
              "M\0001\0001\0SE\0 rest\0"s);
}

TEST(HostInput, of_a_grammar_keeps_the_separators_behind_the_21st_identifier) {
    const std::string identifiers = repeated("I|", 25);
    const Object object("2M|1|1|ST|" + identifiers + "$");
    EXPECT_EQ(object.created().input, "2M\0001\0001\0ST\0"s + repeated("I\0"s, 21) + repeated("I|", 4) + "\0"s + "\0"s);
}

TEST(HostInput, of_a_refused_grammar_is_read_to_its_end) {
    const Answer answer = host().call("CreateStruct", "2M$M|1|1|SE$");
    expectRefused(answer);
    EXPECT_EQ(answer.input, "2M\0M\0001\0001\0SE\0\0"s);
}

TEST(HostInput, of_delimiters_loses_its_marker) {
    const Object object(plainKind2);
    EXPECT_EQ(object.call("SetDelimiters", "X:~\r\nX and more X").input, inputAfter(object, "X:~\r\n\0 and more X"s));
    EXPECT_EQ(object.call("SetDelimiters", "*:abcdeX").input, inputAfter(object, "*:abcde\0"s));
    EXPECT_EQ(object.call("SetDelimiters", "*:abcdefX").input, inputAfter(object, "*:abcdefX"));
    EXPECT_EQ(object.call("SetDelimiters", "*:~").input, inputAfter(object, "*:~"));
}

TEST(HostInput, of_a_walk_of_kind_1_has_nuls_where_segments_end) {
    const Object object(plainKind1);
    EXPECT_EQ(object.call("ValidateStruct", "ST 1$\nSE 2$ rest").input, inputAfter(object, "ST 1\0\nSE 2\0 rest"s));
}

TEST(HostInput, of_a_walk_of_kind_2_is_left_alone) {
    const Object object(plainKind2);
    object.call("SetDelimiters", "*:~\nX");
    const std::string stream = "ST             ST*1~\nSE             SE*1~\n rest";
    EXPECT_EQ(object.call("ValidateStruct", stream).input, inputAfter(object, stream));
}

// Calls for which there is no memory, or no sense.

TEST(ValidateStruct, answers_minus_99_where_there_is_no_memory_for_the_stream) {
    const Object object(plainKind2);
    object.call("SetDelimiters", "*:~X");
    const Answer answer = host().callWithLength("ValidateStruct", object.handle(), uint64_t{1} << 62);
    EXPECT_EQ(answer.returnCode, Host::presetReturnCode);
    EXPECT_EQ(answer.reply, "-99");
    EXPECT_EQ(answer.breach, "");
}

TEST(ValidateStruct, walks_a_message_after_a_call_without_memory) {
    const Object object(plainKind2);
    object.call("SetDelimiters", "*:~X");
    EXPECT_EQ(host().callWithLength("ValidateStruct", object.handle(), uint64_t{1} << 62).reply, "-99");
    expectReport(object.call("ValidateStruct", kind2Record("ST") + kind2Record("ZZ")), finding(2, "ZZ", "2"));
}

TEST(ValidateStruct, is_refused_where_the_grammar_is_gone) {
    for (const char* grammar : {plainKind1, plainKind2}) {
        const Object object(grammar);
        object.call("DestroyGrammar");
        expectRefused(object.call("ValidateStruct", "ST $SE $"));
    }
}

TEST(SetDelimiters, are_refused_where_the_object_has_no_place_for_them) {
    const Object object(plainKind1);
    expectRefused(object.call("SetDelimiters", "*:~X"));
    expectReport(object.call("ValidateStruct", "ST $ZZ $"), finding(2, "ZZ", "2"));
}

TEST(GetErrorText, is_refused_beyond_nine) {
    for (const char* number :
         {"10", "11", "4294967295", "4294967296", "-1", "99999999999999999999", "18446744073709551616"}) {
        SCOPED_TRACE(number);
        expectRefused(host().call("GetErrorText", number));
    }
}

// Many, long and deep.

TEST(Grammar, may_have_more_children_than_the_root_has_room_for_at_first) {
    constexpr int number = 1000;
    std::string grammar = "1";
    std::string stream;
    for (int i = 0; i < number; ++i) {
        const std::string name = std::to_string(i);
        grammar += "M|1|1|" + name + "$";
        stream += name + std::string(3 - name.size(), ' ') + "$";
    }
    expectReport(Object(grammar).call("ValidateStruct", stream), "");
    expectReport(
        Object(grammar).call("ValidateStruct", "0  $2  $"), finding(2, "1", "3") + [] {
            std::string missing;
            for (int i = 3; i < number; ++i)
                missing += finding(static_cast<size_t>(i) + 1, std::to_string(i), "3");
            return missing;
        }());
}

TEST(Walk, of_many_short_segments_counts_them_all) {
    constexpr size_t number = 20000;
    expectReport(Object("1M|1|19998|ST$").call("ValidateStruct", repeated("ST$", number)),
                 finding(number - 1, "ST", "5") + finding(number, "ST", "5"));
    const Object object("2M|1|19998|A$");
    object.call("SetDelimiters", "*:~X");
    expectReport(object.call("ValidateStruct", repeated("A~", number)),
                 finding(number - 1, "A", "5") + finding(number, "A", "5"));
}

TEST(Walk, of_many_identified_segments_keeps_its_identifiers_apart) {
    constexpr size_t number = 20000;
    const Object object("2M|1|1|ST$O|0|0|Loop 1000A$O|0|0|N1|ABCD$O|0|0|EndLoop$M|1|1|SE$");
    object.call("SetDelimiters", "*:~X");
    const std::string stream = "ST~" + repeated("N1 ABCD ~", number) + "N1 ABCE ~SE~";
    expectReport(object.call("ValidateStruct", stream), finding(number + 2, "N1", "2"));
}

TEST(Report, may_have_thousands_of_findings) {
    constexpr size_t number = 5000;
    std::string report;
    for (size_t i = 2; i <= number; ++i)
        report += finding(i, "ST", "5");
    expectReport(Object("1M|1|1|ST$").call("ValidateStruct", repeated("ST $", number)), report);
}

TEST(Identifier, of_a_grammar_may_be_longer_than_a_growth_step_of_its_pool) {
    for (const size_t length : {4085U, 4086U, 4087U, 4088U, 4096U, 5000U, 8192U, 100000U}) {
        SCOPED_TRACE(length);
        const std::string grammar = "2M|1|1|ST$O|0|0|Loop 1000A$O|0|0|N1|" + std::string(length, 'I') + "|BY|" +
                                    std::string(length, 'J') + "|ST$O|0|0|EndLoop$M|1|1|SE$";
        const Object object(grammar);
        object.call("SetDelimiters", "*:~X");
        expectReport(object.call("ValidateStruct", "ST~N1 BY  ~N1 ST  ~SE~"),
                     finding(2, "N1", "2"));  // "BY" and two blanks: the record's end keeps them
        const Object trimmed(grammar);
        trimmed.call("SetDelimiters", "*:~X");
        expectReport(trimmed.call("ValidateStruct", "ST~N1 BY   ~N1 ST   ~N1 IIII ~SE~"), finding(4, "N1", "2"));
    }
}

TEST(Name, of_a_node_may_be_of_any_length) {
    expectReport(Object("1M|1|1|ST$M|1|1|" + std::string(tenMegabytes, 'N') + "$").call("ValidateStruct", "ST $"),
                 finding(2, "NNNNNNNN", "3"));
}

TEST(TenMegabytesOfOneLetter, are_a_grammar_without_nodes) {
    expectReport(Object(std::string(tenMegabytes, 'M')).call("ValidateStruct", ""), "");
}

TEST(TenMegabytesOfOneLetter, are_a_record_without_fields_to_make_a_node_of) {
    expectRefused(host().call("CreateStruct", std::string(tenMegabytes, 'M') + "$"));
    expectRefused(host().call("CreateStruct", std::string(tenMegabytes, '$')));
    expectRefused(host().call("CreateStruct", std::string(tenMegabytes, '|') + "$"));
}

TEST(TenMegabytesOfOneLetter, may_be_a_field_of_a_grammar) {
    const std::string letters(tenMegabytes, '7');
    const Answer answer = Object("1" + letters + "M|" + letters + "|" + letters + "|ST|" + letters + "$").created();
    EXPECT_EQ(answer.returnCode, 0);
}

TEST(TenMegabytesOfOneLetter, are_a_stream_without_segments) {
    expectReport(Object(plainKind1).call("ValidateStruct", std::string(tenMegabytes, 'S')), "");
    const Object object(plainKind2);
    object.call("SetDelimiters", "*:~X");
    expectReport(object.call("ValidateStruct", std::string(tenMegabytes, 'S')), "");
    const Object longTerminator(plainKind2);
    longTerminator.call("SetDelimiters", "*:SSAX");
    expectReport(longTerminator.call("ValidateStruct", std::string(tenMegabytes, 'S')), "");
}

TEST(TenMegabytesOfOneLetter, may_be_one_segment) {
    expectReport(Object("1M|1|1|SSS$").call("ValidateStruct", std::string(tenMegabytes, 'S') + "$"), "");
    const Object object("2M|1|1|SSS$");
    object.call("SetDelimiters", "*:~X");
    expectReport(object.call("ValidateStruct", std::string(tenMegabytes, 'S') + "~"), "");
}

TEST(TenMegabytesOfOneLetter, may_be_delimiters) {
    const Object object(plainKind2);
    EXPECT_EQ(object.call("SetDelimiters", std::string(tenMegabytes, '~')).returnCode, 0);
    expectReport(object.call("ValidateStruct", "ST~~~~ZZ~~~~"), finding(2, "ZZ", "2"));
}

TEST(TenMegabytesOfOneLetter, ask_for_no_error_text) {
    EXPECT_EQ(host().call("GetErrorText", std::string(tenMegabytes, 'a')).reply, "");
    EXPECT_EQ(host().call("GetErrorText", std::string(tenMegabytes, '9')).reply, "");
    EXPECT_EQ(host().call("GetErrorText", std::string(tenMegabytes, '0') + "5").reply, "ERR_SEG_EXCEED_LIMIT");
}

TEST(OneLetter, may_be_a_hundred_thousand_empty_segments) {
    constexpr size_t number = 100000;  // each takes 128 bytes of the library's memory
    const std::string report = finding(1, "ST", "3") + finding(1, "", "2");
    expectReport(Object(plainKind1).call("ValidateStruct", std::string(number, '$')), report);
    const Object object(plainKind2);
    object.call("SetDelimiters", "*:~X");
    expectReport(object.call("ValidateStruct", std::string(number, '~')), report);
}

TEST(Groups, may_nest_a_thousand_deep) {
    constexpr size_t depth = 1000;
    const std::string closings = repeated("O|0|0|EndLoop$", depth);
    const Object loops("2M|1|1|ST$" + repeated("O|0|1|Loop 1000A$O|0|1|N1$", depth) + closings + "M|1|1|SE$");
    loops.call("SetDelimiters", "*:~X");
    expectReport(loops.call("ValidateStruct", "ST~" + repeated("N1~", depth) + "SE~"), "");
    const Object groups("2M|1|1|ST$" + repeated("O|0|1|UnorderedGroup 1$", depth) + closings + "M|1|1|SE$");
    groups.call("SetDelimiters", "*:~X");
    expectReport(groups.call("ValidateStruct", "ST~ZZ~"), finding(2, "ZZ", "2"));
}

TEST(Groups, may_nest_deeper_than_any_walk_goes) {
    constexpr size_t depth = 300000;
    const std::vector<std::pair<const char*, std::string>> deepGrammars = {
        {"O|0|1|Loop 1000A$O|0|1|N1$", finding(4, "ZZ", "2")},  // two of the loops take N1
        {"O|0|1|UnorderedGroup 1$", finding(2, "N1", "2")},
        {"O|0|1|Loop 1000A$", finding(2, "N1", "2")},
    };
    for (const auto& [opening, report] : deepGrammars) {
        SCOPED_TRACE(opening);
        const Object object("2M|1|1|ST$" + repeated(opening, depth));
        object.call("SetDelimiters", "*:~X");
        expectReport(object.call("ValidateStruct", "ST~N1~N1~ZZ~"), report);
    }
}

/* A group that has taken a record offers the next one to its children once more, and so do the groups around it. Each
 * child has declined it by then, and says so without asking what lies inside it again: the work grows with the depth
 * and not with its square, which would take minutes here. */
TEST(Groups, that_nest_two_thousand_deep_answer_for_each_of_thousands_of_records) {
    constexpr size_t depth = 2000;
    constexpr size_t pairs = 2000;
    const std::string outerLoop = "O|0|0|LoopU$O|0|0|U$O|0|0|EndLoop$";
    const std::string innerLoop = "O|0|0|LoopD$O|0|0|D$O|0|0|EndLoop$";
    const std::string grammar = "1O|0|0|UnorderedGroup$" + outerLoop + repeated("O|0|0|UnorderedGroup$", depth) +
                                innerLoop + repeated("O|0|0|EndUnorderedGroup$", depth + 1) + "M|1|1|SE$";
    const std::string stream = repeated("D  $U  $", pairs);
    expectReport(Object(grammar).call("ValidateStruct", stream + "SE $"), "");
    expectReport(Object(grammar).call("ValidateStruct", stream + "ZZ $"), finding(2 * pairs + 1, "ZZ", "2"));
}

TEST(Groups, may_be_closed_a_million_times) {
    expectReport(
        Object("1M|1|1|ST$" + repeated("O|0|0|EndLoop$", 1000000) + "M|1|1|SE$").call("ValidateStruct", "ST $ZZ $"),
        finding(2, "ZZ", "2"));
}

}  // namespace
