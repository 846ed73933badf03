// The call of ValidateXML: its option, its input, its place among the other calls.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "xmlcalls.h"

namespace xmltests {
namespace {

using cases::Answer;

const std::vector<std::string> noRoot = {"Fatal Error 1:1"};
const std::vector<std::string> undeclared = {"Error 1:5"};

TEST(Option, leaves_errors_out_where_its_number_is_101) {
    EXPECT_EQ(placesOf(validate("<a/>", "000")), undeclared);
    EXPECT_EQ(placesOf(validate("<a/>", "101")), std::vector<std::string>());
}

TEST(Option, of_every_other_number_has_no_meaning) {
    for (const std::string option : {"100", "102", "001", "-10", "1  ", "010", "999"})
        EXPECT_EQ(placesOf(validate("<a/>", option)), undeclared) << option;
}

TEST(Option, may_be_no_number) {
    for (const std::string option : {"   ", "abc", "---", "x01", "$|~"})
        EXPECT_EQ(placesOf(validate("<a/>", option)), undeclared) << option;
}

// The number ends at the field's end because no digit follows, and it is read to its end where one does.
TEST(Option, is_three_characters_wide_however_long_its_number_is) {
    EXPECT_EQ(placesOf(validate("\n<a/>", "101")), std::vector<std::string>());
    EXPECT_EQ(placesOf(validate("0<a/>", "101")), noRoot);
    EXPECT_EQ(placesOf(validate("1<a/>", " 10")), noRoot);
    EXPECT_EQ(placesOf(validate("101<a/>", "   ")), noRoot);
}

TEST(Input, without_a_document_has_no_root) {
    EXPECT_EQ(placesOf(validate("")), noRoot);
    EXPECT_EQ(placesOf(validate("", "101")), noRoot);
    EXPECT_EQ(placesOf(validate(" \n")), (std::vector<std::string>{"Fatal Error 2:1"}));
}

TEST(Input, may_be_shorter_than_the_option) {
    for (const std::string option : {"", "1", "10"})
        EXPECT_EQ(placesOf(validate("", option)), noRoot) << option;
}

TEST(Input, ends_at_its_first_nul) {
    const std::string document = "<a/>";
    EXPECT_EQ(placesOf(validate(document + std::string(1, '\0') + "<b/>")), undeclared);
    EXPECT_EQ(placesOf(validate(document, "101")), std::vector<std::string>());
    EXPECT_EQ(placesOf(validate(std::string(1, '\0') + document)), noRoot);
}

TEST(Input, is_left_as_it_was_but_for_the_nul_in_the_handle) {
    const Object object;
    std::string input = object.handle() + "000<a>$|~</a>";
    const Answer answer = object.call("ValidateXML", "000<a>$|~</a>");
    input[2] = '\0';
    EXPECT_EQ(answer.input, input + '\0');
}

TEST(Input, with_a_handle_that_names_no_object_is_refused) {
    for (const std::string handle : {"000", "08000000000", "1100123456789abcdef0"}) {
        const Answer answer = host().call("ValidateXML", handle + "000<a/>");
        EXPECT_EQ(answer.returnCode, -1) << handle;
        EXPECT_EQ(answer.output, Answer::Output::untouched) << handle;
        EXPECT_EQ(answer.breach, "") << handle;
    }
}

// What the parser set up would be lost with the library, and set up anew each time.
TEST(Library, stays_loaded_where_its_host_unloads_it) {
    const auto anExport = reinterpret_cast<void*>(library()("ValidateXML"));
    Dl_info where;
    ASSERT_NE(dladdr(anExport, &where), 0);
    const std::string path = where.dli_fname;
    for (int i = 0; i < 2; ++i) {  // once for each time it was opened, here and by library()
        void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(handle, nullptr);
        dlclose(handle);
        dlclose(handle);
    }
    EXPECT_EQ(placesOf(validate("<a/>")), undeclared);
}

TEST(Input, is_read_up_to_its_nul_whatever_its_length_says) {
    const Object object;
    for (const std::uint64_t length : {0U, 3U, 16U, 17U}) {
        const Answer answer = host().callWithLength("ValidateXML", object.handle() + "101<a/>", length);
        EXPECT_EQ(answer.reply, std::string(2, '\0')) << length;
    }
}

TEST(Order, of_the_calls_leaves_the_document_out_of_account) {
    const std::string record = "SE             SE*2*1~";
    const Object object("2M|1|1|ST$M|1|1|SE$");
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
    object.call("SetDelimiters", "*:~X");
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
    const Answer report = object.call("ValidateStruct", record);
    EXPECT_EQ(report.reply.substr(0, 28), "000000000100000ST      3    ");
    const std::string located = object.call("GetLoopText").reply;
    EXPECT_EQ(located, "SE**2*1~");
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
    EXPECT_EQ(object.call("GetLoopText").reply, located);
    EXPECT_EQ(object.call("RunRules").returnCode, 0);
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
    object.call("DestroyGrammar");
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
}

TEST(Order, of_the_calls_asks_for_no_kind_of_grammar) {
    const Object object("1M|1|1|ST$M|1|1|SE$");
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
    const Answer report = object.call("ValidateStruct", "ST $SE $");
    EXPECT_EQ(report.output, Answer::Output::none);
    EXPECT_EQ(placesOf(object.validate("<a/>")), undeclared);
}

}  // namespace
}  // namespace xmltests
