// ValidateXML out of memory. The parser takes all that it needs by operator new, some hundred times a document, and
// doesn't survive every failure: see the tests. So each failure has a process of its own.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "conversation.h"

namespace {

using robustness::Ending;
using robustness::Kind;
using robustness::Outcome;
using robustness::Plan;
using robustness::Stage;
using robustness::Step;

// What came of a call in which an allocation failed.
enum class Fate {
    calmWithoutMemory,  // the library's own memory failed
    calmWithoutObject,  // an object failed, mostly one of the parser's
    notCalm,
    nothingFailed,
    ended,  // the process came to its end
};

constexpr int exitCodeOfFate =
    40;  // added to the fate: the parser and the sanitizers end processes with codes of their own

// What the parser asked for in vain it may also do without, and come to another reply.
bool isReply(const Outcome& outcome) {
    const cases::Answer& answer = outcome.answer;
    const std::size_t length = answer.reply.size();
    return outcome.ending == Ending::returned && answer.breach.empty() && answer.returnCode == 0 && length >= 2 &&
           answer.reply.compare(length - 2, 2, std::string(2, '\0')) == 0;
}

bool isCalm(const Outcome& outcome) {
    if (outcome.firstFailed == Kind::memory) return robustness::isRefused(outcome);
    return isReply(outcome) || robustness::isRefused(outcome) || robustness::isException(outcome, Ending::badAlloc) ||
           robustness::isException(outcome, Ending::parserOutOfMemory);
}

// A document, and what may come of a call with it that has all the memory it needs.
struct Validation {
    Step step;
    std::vector<std::string> outcomes;

    explicit Validation(const std::string& document) : step{"ValidateXML", 0, "000" + document} {}

    bool isUsual(const std::string& outcome) const {
        for (const std::string& usual : outcomes)
            if (outcome == usual) return true;
        return false;
    }
};

const Step creation{"CreateStruct", std::nullopt, "2"};

// Makes the call with an allocation that fails, and then again, with the same object.
Fate playFailing(const Validation& validation, Plan plan) {
    const long before = robustness::held().memory;
    Kind failed = Kind::none;
    {
        Stage stage;
        stage.play(creation);
        const Outcome outcome = stage.play(validation.step, plan);
        failed = outcome.firstFailed;
        const std::string again = describe(validation.step, stage.play(validation.step));
        if (failed == Kind::none) return Fate::nothingFailed;
        if (!isCalm(outcome) || !validation.isUsual(again)) {
            std::cerr << describe(validation.step, outcome) << "; made again: " << again << std::endl;
            return Fate::notCalm;
        }
    }
    if (robustness::held().memory != before) {
        std::cerr << "memory stays behind" << std::endl;
        return Fate::notCalm;
    }
    return failed == Kind::memory ? Fate::calmWithoutMemory : Fate::calmWithoutObject;
}

Fate playFailingInProcess(const Validation& validation, Plan plan) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit noCore = {};
        setrlimit(RLIMIT_CORE, &noCore);
        _exit(exitCodeOfFate + static_cast<int>(playFailing(validation, plan)));
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    const int fate = WIFEXITED(status) ? WEXITSTATUS(status) - exitCodeOfFate : -1;
    return fate >= 0 && fate < static_cast<int>(Fate::ended) ? static_cast<Fate>(fate) : Fate::ended;
}

enum class ParserMay { survive, end };

// Lets each allocation of the call fail, alone or with all behind it. Answers how often it was memory of the library's
// own.
std::size_t failEach(const Validation& validation, bool areLaterOnesToo, ParserMay parserMay = ParserMay::survive) {
    std::size_t memory = 0;
    std::size_t objects = 0;
    for (std::size_t number = 1;; ++number) {
        const Fate fate = playFailingInProcess(validation, {number, false, areLaterOnesToo});
        if (fate == Fate::nothingFailed) break;
        if (fate == Fate::calmWithoutMemory) ++memory;
        if (fate == Fate::calmWithoutObject) ++objects;
        EXPECT_NE(fate, Fate::notCalm) << "allocation " << number;
        if (parserMay == ParserMay::survive) {
            EXPECT_NE(fate, Fate::ended) << "allocation " << number;
        }
        if (testing::Test::HasFailure()) break;
    }
    EXPECT_GT(objects, 100U);
    return memory;
}

// A test that stands in the folder of the schema.
class XmlAllocations : public testing::Test {
protected:
    XmlAllocations() : before_(std::filesystem::current_path()) { std::filesystem::current_path(SCHEMA_FOLDER); }
    ~XmlAllocations() override { std::filesystem::current_path(before_); }

    // A document that has been validated before, so that the parser stands ready.
    static Validation validated(const std::string& document) {
        Validation validation(document);
        Stage stage;
        stage.play(creation);
        validation.outcomes.push_back(describe(validation.step, stage.play(validation.step)));
        return validation;
    }

private:
    std::filesystem::path before_;
};

const char* const documentWithoutFindings = "<!DOCTYPE a [<!ELEMENT a EMPTY>]><a/>";

std::string lines(std::size_t number) {
    std::string text;
    for (std::size_t i = 0; i < number; ++i)
        text += "<line/>";
    return text;
}

std::string order(const std::string& content) {
    return "<order xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:noNamespaceSchemaLocation='order.xsd'>" +
           content + "</order>";
}

// The buffer of the messages, and the reply.
TEST_F(XmlAllocations, of_a_document_without_findings_may_fail) {
    for (const bool areLaterOnesToo : {false, true})
        EXPECT_EQ(failEach(validated(documentWithoutFindings), areLaterOnesToo), 2U);
}

// The same, and one more for messages of more than 1,024 bytes and fewer than 2,048.
TEST_F(XmlAllocations, of_a_document_with_findings_may_fail) {
    const std::string document = "<!DOCTYPE a [<!ELEMENT a EMPTY>]><a>" + lines(15) + "</a>";
    for (const bool areLaterOnesToo : {false, true})
        EXPECT_EQ(failEach(validated(document), areLaterOnesToo), 3U);
}

TEST_F(XmlAllocations, of_a_document_in_an_unknown_encoding_may_fail) {
    for (const bool areLaterOnesToo : {false, true}) {
        EXPECT_EQ(failEach(validated("<?xml version='1.0' encoding='KLINGON'?><a/>"), areLaterOnesToo), 2U);
    }
}

// The parser's classes for schemas allocate in their destructors, and take down what they have not yet set up: some
// failures end the process, where no caller can do anything about it.
TEST_F(XmlAllocations, of_a_document_with_a_schema_may_fail_but_for_some_of_the_parsers_own) {
    EXPECT_EQ(failEach(validated(order("<number>1</number><line quantity='2'/>")), false, ParserMay::end), 2U);
    EXPECT_EQ(failEach(validated(order("<number>1</number>" + lines(15))), false, ParserMay::end), 3U);
}

// The parser can't be brought out of a first use that was cut short. Documents may be refused from then on.
TEST_F(XmlAllocations, of_the_parsers_first_use_may_fail) {
    Validation validation(documentWithoutFindings);
    validation.outcomes = {"return code 0, reply \"\\x00\\x00\"", "return code -1, output untouched"};
    EXPECT_EQ(failEach(validation, false), 2U);
}

}  // namespace
