// What a host that is linked with the library's parser can do to it from outside: the two share one parser.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>
#include <xercesc/util/XMLString.hpp>

#include "xml/parsexml.h"
#include "xmlcalls.h"

namespace xmltests {
namespace {

using xercesc::MemoryManager;
using xercesc::XMLPlatformUtils;
using xercesc::XMLString;

std::string localText(const XMLCh* text) {
    char* transcoded = XMLString::transcode(text);
    const std::string result = transcoded;
    XMLString::release(&transcoded);
    return result;
}

// No document brings it about that the parser gives up with an exception of its own, so it is handed a memory manager that
// does: one that throws an exception whose message holds a text where it is first asked for memory, and gives it from then on.
class RefusingManager : public MemoryManager {
public:
    RefusingManager(MemoryManager* theManager, std::string theText) : manager(theManager), text(std::move(theText)) {}

    MemoryManager* getExceptionMemoryManager() override { return manager; }
    void* allocate(XMLSize_t size) override {
        if (!hasRefused) {
            hasRefused = true;
            ThrowXMLwithMemMgr1(xercesc::RuntimeException, xercesc::XMLExcepts::File_CouldNotOpenFile, text.c_str(),
                                manager);
        }
        return manager->allocate(size);
    }
    void deallocate(void* memory) override { manager->deallocate(memory); }

    // The message of its exception, as the parser has it.
    std::string message() {
        try {
            RefusingManager(manager, text).allocate(1);
        } catch (const xercesc::XMLException& exception) {
            return localText(exception.getMessage());
        }
        return "";
    }

private:
    MemoryManager* const manager;
    const std::string text;
    bool hasRefused = false;
};

// Makes a call under a manager that refuses, and puts the parser's own back.
std::string replyUnder(const Object& object, RefusingManager& refusing) {
    MemoryManager* const before = XMLPlatformUtils::fgMemoryManager;
    XMLPlatformUtils::fgMemoryManager = &refusing;
    const std::string text = object.validate("<a/>");
    XMLPlatformUtils::fgMemoryManager = before;
    return text;
}

class ParserException : public testing::Test {
protected:
    ParserException() { object.validate("<a/>"); }  // so that the parser has been initialised

    const Object object;
};

TEST_F(ParserException, makes_parsexml_answer_minus_one_and_leave_the_length) {
    char document[] = "<a/>";
    char* text = nullptr;
    unsigned long length = 17;
    RefusingManager refusing(XMLPlatformUtils::fgMemoryManager, "a file of the test");
    MemoryManager* const before = std::exchange(XMLPlatformUtils::fgMemoryManager, &refusing);
    const int result = ParseXML(document, &text, 1, 1, 1, &length);
    XMLPlatformUtils::fgMemoryManager = before;
    EXPECT_EQ(result, -1);
    EXPECT_EQ(length, 17U);
    EXPECT_EQ(text, refusing.message());
    std::free(text);

    EXPECT_EQ(ParseXML(document, &text, 1, 1, 1, &length), 0);
    EXPECT_EQ(length, 1024U);
    std::free(text);
}

TEST_F(ParserException, is_answered_with_its_message_alone) {
    RefusingManager refusing(XMLPlatformUtils::fgMemoryManager, "a file of the test");
    const std::string message = refusing.message();
    ASSERT_NE(message.find("a file of the test"), message.npos);
    EXPECT_EQ(replyUnder(object, refusing), message);
}

TEST_F(ParserException, of_a_long_message_is_answered_whole) {
    RefusingManager refusing(XMLPlatformUtils::fgMemoryManager, std::string(1500, 'f'));
    const std::string message = refusing.message();
    ASSERT_GT(message.size(), 1500U);
    EXPECT_EQ(replyUnder(object, refusing), message);
}

TEST_F(ParserException, leaves_the_object_as_good_as_before) {
    RefusingManager refusing(XMLPlatformUtils::fgMemoryManager, "a file");
    EXPECT_NE(replyUnder(object, refusing), "");
    EXPECT_EQ(placesOf(object.validate("<a/>")), (std::vector<std::string>{"Error 1:5"}));
}

// docs/security.md tells hosts how to keep the parser off the network.
TEST(NetAccessor, may_be_taken_away_by_the_host) {
    XMLPlatformUtils::Initialize();
    delete XMLPlatformUtils::fgNetAccessor;
    XMLPlatformUtils::fgNetAccessor = nullptr;
    const auto findings = findingsOf(validate(order("http://127.0.0.1/order.xsd", goodContent)));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(placeOf(findings[0]), "Fatal Error 0:0");
    EXPECT_EQ(validate(order((schemaFolder() / "order.xsd").string(), goodContent)), "");
}

}  // namespace
}  // namespace xmltests
