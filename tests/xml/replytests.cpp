// The reply of ValidateXML: its bytes, its size, and whose it is.
#include <gmock/gmock.h>

#include <cstring>

#include "xmlcalls.h"

namespace xmltests {
namespace {

using cases::Answer;
using testing::HasSubstr;
using testing::StartsWith;

const std::string cleanDocument = "<!DOCTYPE a [<!ELEMENT a EMPTY>]><a/>";

TEST(Reply, to_a_clean_document_is_two_nuls) {
    const Answer answer = Object().call("ValidateXML", "000" + cleanDocument);
    EXPECT_EQ(answer.returnCode, 0);
    EXPECT_EQ(answer.output, Answer::Output::reply);
    EXPECT_EQ(answer.reply, std::string(2, '\0'));
}

// The level, the message, line 1 and column 5, and what ends them: nothing else stands in the reply.
TEST(Reply, has_a_message_in_its_form_with_two_nuls_behind_it) {
    const Answer answer = Object().call("ValidateXML", "000<a/>");
    const std::string end = " found on line 1, column 5.$" + std::string(2, '\0');
    ASSERT_GT(answer.reply.size(), end.size());
    EXPECT_EQ(answer.reply.substr(answer.reply.size() - end.size()), end);
    EXPECT_THAT(answer.reply, StartsWith("Error. "));
    EXPECT_THAT(answer.reply, HasSubstr("'a'"));
}

// 200 messages take many times the 1,024 bytes with which the text begins.
TEST(Reply, keeps_earlier_messages_where_it_grows) {
    constexpr std::size_t count = 200;
    std::string document = "<a>\n";
    for (std::size_t i = 2; i < 2 + count; ++i)
        document += "<b" + std::to_string(i) + "/>\n";
    const std::string text = validate(document + "</a>");
    EXPECT_GT(text.size(), 5 * 1024U);
    const auto findings = findingsOf(text);
    ASSERT_EQ(findings.size(), 1 + count);
    for (std::size_t i = 2; i < 2 + count; ++i) {
        const std::string name = 'b' + std::to_string(i);
        EXPECT_EQ(placeOf(findings[i - 1]),
                  "Error " + std::to_string(i) + ':' + std::to_string(std::strlen("</>") + name.size() + 1));
        EXPECT_THAT(findings[i - 1].message, HasSubstr('\'' + name + '\''));
    }
}

// How much of so long a message the parser makes is its own affair.
TEST(Reply, holds_a_message_that_is_longer_than_a_kilobyte) {
    const std::string name(1500, 'n');
    const auto findings = findingsOf(validate('<' + name + "/>"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(placeOf(findings[0]), "Error 1:1504");
    EXPECT_THAT(findings[0].message, HasSubstr('\'' + name + '\''));
}

TEST(Reply, holds_several_messages_that_are_longer_than_a_kilobyte) {
    std::string document = "<a>\n";
    for (const char letter : {'x', 'y', 'z'})
        document += '<' + std::string(1100, letter) + "/>\n";
    const auto findings = findingsOf(validate(document + "</a>"));
    ASSERT_EQ(findings.size(), 4U);
    EXPECT_EQ(placeOf(findings[3]), "Error 4:1104");
    EXPECT_THAT(findings[1].message, HasSubstr(std::string(1100, 'x')));
    EXPECT_THAT(findings[2].message, HasSubstr(std::string(1100, 'y')));
    EXPECT_THAT(findings[3].message, HasSubstr(std::string(1100, 'z')));
}

TEST(Reply, survives_names_that_are_longer_than_any_message) {
    for (const std::size_t length : {2040U, 2048U, 4096U, 100000U, 1000000U}) {
        const auto findings = findingsOf(validate('<' + std::string(length, 'n') + "/>"));
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_EQ(placeOf(findings[0]), "Error 1:" + std::to_string(length + 4));
        EXPECT_THAT(findings[0].message, HasSubstr(std::string(1000, 'n')));
    }
}

// A document whose text of messages has a size that is told: the name of an element makes up for what is missing. `head`
// and `tail` stand around the element.
struct Sized {
    std::string head;
    std::string tail;
    std::size_t messages;

    std::string document(std::size_t nameLength) const {
        return head + '<' + std::string(nameLength, 'n') + "/>" + tail;
    }

    // The length of the name that gives a text of `size` bytes. The column grows with the name, and its digits may.
    std::size_t nameLengthFor(std::size_t size) const {
        constexpr std::size_t longestName = 2000;  // longer ones the parser cuts, and the text stays as it is
        std::size_t nameLength = 1;
        std::size_t textSize = validate(document(nameLength)).size();
        while (textSize < size && nameLength < longestName) {
            nameLength += size - textSize > 8 ? size - textSize - 6 : 1;
            textSize = validate(document(nameLength)).size();
        }
        return nameLength;
    }
};

class FilledBuffer : public testing::TestWithParam<std::size_t> {
protected:
    void expectWhole(const Sized& sized) const {
        const std::size_t nameLength = sized.nameLengthFor(GetParam());
        const std::string text = validate(sized.document(nameLength));
        EXPECT_EQ(text.size(), GetParam());
        const auto findings = findingsOf(text);
        ASSERT_EQ(findings.size(), sized.messages);
        for (const Finding& finding : findings)
            EXPECT_EQ(finding.level, "Error");
        const Finding& last = findings.back();
        EXPECT_THAT(last.message, HasSubstr('\'' + std::string(nameLength, 'n') + '\''));
        EXPECT_EQ(last.column, static_cast<long>(nameLength + std::strlen("</>") + 1));
    }
};

class BufferOfOneMessage : public FilledBuffer {};
class BufferOfMessages : public FilledBuffer {};

TEST_P(BufferOfOneMessage, ends_behind_its_text) {
    expectWhole({"", "", 1});
}

TEST_P(BufferOfMessages, ends_behind_its_text) {
    expectWhole({"<a>\n<b/>\n<c/>\n<d/>\n<e/>\n<f/>\n<g/>\n", "</a>", 8});
}

// Several messages that end exactly where the buffer does, with one more behind them.
TEST_P(BufferOfMessages, goes_on_behind_its_text) {
    const Sized first{"<a>\n", "</a>", 2};
    const Sized more{"<a>\n", "\n<z/></a>", 3};
    const std::size_t nameLength = first.nameLengthFor(GetParam());
    const std::string text = validate(first.document(nameLength));
    EXPECT_EQ(text.size(), GetParam());
    const std::string longer = validate(more.document(nameLength));
    EXPECT_EQ(longer.substr(0, text.size()), text);
    EXPECT_EQ(placesOf(longer).back(), "Error 3:5");
    EXPECT_EQ(findingsOf(longer).size(), 3U);
}

// The parser cuts its messages near 2,048 bytes, so that a text of that size takes several.
INSTANTIATE_TEST_SUITE_P(Sizes, BufferOfOneMessage, testing::Values(1021, 1022, 1023, 1024, 1025, 1026));
INSTANTIATE_TEST_SUITE_P(Sizes, BufferOfMessages,
                         testing::Values(1021, 1022, 1023, 1024, 1025, 1026, 2046, 2047, 2048, 2049));

// Replies as a host holds them: several at once, and beyond the object that made them.
TEST(Reply, belongs_to_the_host) {
    const auto validateXml = reinterpret_cast<void (*)(tagExitParamStruct*)>(library()("ValidateXML"));
    const auto release = reinterpret_cast<void (*)(void*)>(library()("voptMemFree"));
    std::vector<tagExitParamStruct> records(3);
    const std::vector<std::string> documents = {"<a/>", cleanDocument, "<bb/>"};
    {
        const Object object;
        for (std::size_t i = 0; i < records.size(); ++i) {
            std::string input = object.handle() + "000" + documents[i];
            records[i].inputText = input.data();
            records[i].inputLength = input.size();
            validateXml(&records[i]);
        }
    }
    const auto reply = [&](std::size_t i) { return std::string(records[i].outputText, records[i].outputLength); };
    EXPECT_EQ(placesOf(reply(0).c_str()), (std::vector<std::string>{"Error 1:5"}));
    EXPECT_EQ(reply(1), std::string(2, '\0'));
    EXPECT_EQ(placesOf(reply(2).c_str()), (std::vector<std::string>{"Error 1:6"}));
    for (const tagExitParamStruct& record : records)
        release(record.outputText);
}

TEST(Objects, answer_a_hundred_calls_each_by_itself) {
    const Object one;
    for (int i = 0; i < 100; ++i) {
        const std::string clean = cleanDocument;
        const std::string faulty = '<' + std::string(static_cast<std::size_t>(1 + i * 20), 'n') + "/>";
        EXPECT_EQ(placesOf(one.validate(i % 2 == 0 ? clean : faulty)).size(), static_cast<std::size_t>(i % 2));
    }
}

TEST(Objects, answer_for_themselves_where_there_are_a_hundred) {
    std::vector<std::unique_ptr<Object>> objects;
    for (int i = 0; i < 100; ++i)
        objects.push_back(std::make_unique<Object>());
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i < objects.size(); ++i) {
            const std::size_t nameLength = 1 + (i * 37) % 90;
            const auto places = placesOf(objects[i]->validate('<' + std::string(nameLength, 'n') + "/>"));
            EXPECT_EQ(places, (std::vector<std::string>{"Error 1:" + std::to_string(nameLength + 4)}));
        }
    }
}

}  // namespace
}  // namespace xmltests
