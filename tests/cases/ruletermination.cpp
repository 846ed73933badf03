/*
 * Every rule number over messages that are cut off behind each of their segments, with sides on the first line, on loops
 * and on nothing: a run of rules comes back, with a reply of whole lines. A call that takes too long is named, and ends
 * the test program.
 */
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "host.h"
#include "reportlines.h"

namespace {

using cases::Answer;
using cases::Host;
using Texts = std::vector<std::string>;

constexpr unsigned secondsForACall = 2;
constexpr int lastRuleNumber = 99;
const char* const delimiters = "*:~X";

struct Setting {
    const char* name;
    const char* grammar;
    Texts message;
};

const std::vector<Setting> settings = {
    {"header in front",
     "2M|1|1|ST$O|0|0|Loop 2000$M|0|1|HL$O|0|0|NM1$O|0|0|Loop 2300$M|0|1|CLM$O|0|0|DTP$O|0|0|Loop "
     "2400$M|0|1|LX$O|0|0|SV1$"
     "O|0|0|EndLoop$O|0|0|EndLoop$O|0|0|EndLoop$M|1|1|SE$",
     {"ST*1*A", "HL*1*X", "NM1*A*B", "CLM*A*10*A:B", "DTP*2*20240101", "DTP*1*20240102-20240103", "LX*1*A",
      "SV1*A*5*X^Y", "LX*2", "SV1**7", "HL*2*A", "CLM*B*2.5*C", "LX*X*1", "LX*1*3", "CLM*A", "SE*16*1"}},
    {"a loop in front",
     "2O|0|0|Loop 2000$M|0|1|HL$O|0|0|ST$O|0|0|NM1$O|0|0|Loop 2300$M|0|1|CLM$O|0|0|DTP$O|0|0|Loop "
     "2400$M|0|1|LX$O|0|0|SV1$"
     "O|0|0|EndLoop$O|0|0|EndLoop$O|0|0|EndLoop$M|1|1|SE$",
     {"HL*1*A", "ST*A*1", "HL*2*B", "CLM*A*1*A:B", "DTP*1*20240101", "SV1*X*2", "CLM*B*2", "LX*1*A", "HL*3", "SE*9*1"}},
};

/* The fields of a side: loop, segment, elements, sub-elements, values. */
const Texts nothing = {"", "", "", "", ""};
const Texts firstLine = {"", "ST", "1", "", "1*A"};
const Texts firstLoop = {"2000", "HL", "1", "", ""};
const Texts firstOfALoop = {"", "HL", "1*2", "", "1"};
const Texts claims = {"2300", "CLM", "1*2", "1", "A*B"};
const Texts serviceLoop = {"2400", "", "1*2", "1*2", "X"};
const Texts services = {"2400", "SV1", "2", "", "A*5"};
const Texts nowhere = {"9999", "XXX", "1", "", "A"};

/* Some rules take the loop of their inner runs from the first value of the second right side. */
const Texts runsOfClaims = {"", "", "1", "", "2300*A"};
const Texts runsOfServices = {"2400", "SV1", "1", "", "2400*B"};

const std::vector<Texts> firstSides = {nothing, firstLine,   firstLoop, firstOfALoop,
                                       claims,  serviceLoop, services,  nowhere};
const std::vector<Texts> secondSides = {nothing, firstLine, serviceLoop, runsOfClaims, runsOfServices};
const Texts scopes = {"", "2300", "2400"};
const std::vector<Texts> scopeSegments = {{"", ""}, {"CLM", "LX"}};

const Host& host() {
    static const Host theHost(cases::openLibrary());
    return theHost;
}

/* What the handler of the alarm can say: it may neither allocate nor format. */
char runningCall[200];

extern "C" void nameTheCallAndEnd(int) {
    const char text[] = "this run of rules doesn't come back: ";
    ssize_t written = write(STDERR_FILENO, text, sizeof text - 1);
    written += write(STDERR_FILENO, runningCall, strlen(runningCall));
    written += write(STDERR_FILENO, "\n", 1);
    _exit(written > 0 ? 1 : 2);
}

std::string joined(const Texts& texts, const std::string& separator) {
    return std::accumulate(texts.begin() + 1, texts.end(), texts.front(),
                           [&](const std::string& sum, const std::string& text) { return sum + separator + text; });
}

/* The rule in every arrangement of sides, scopes and segments that begin scopes. */
Texts arrangements(int number, char outerSide) {
    Texts records;
    for (const Texts& left : firstSides)
        for (const Texts& right : firstSides)
            for (const Texts& second : secondSides)
                for (const std::string& scope : scopes)
                    for (const Texts& segments : scopeSegments)
                        records.push_back(
                            joined({std::to_string(number), std::string(1, outerSide), segments[0], segments[1],
                                    joined(left, "|"), joined(second, "|"), joined(right, "|"), joined(second, "|"),
                                    scope, "L", "E", "T", "S", "M", "1", "2", "3"},
                                   "|") +
                            "$");
    return records;
}

/* The numbers of rules that find something; the others are inert or unknown. */
bool canReport(int number) {
    const auto isWithin = [number](int first, int last) { return number >= first && number <= last; };
    return isWithin(1, 22) || isWithin(24, 31) || isWithin(37, 42) || isWithin(48, 53) || isWithin(60, 61) ||
           isWithin(70, 71) || number == 80;
}

class Message {
public:
    Message(const Setting& setting, size_t length) : handle(host().call("CreateStruct", setting.grammar).reply) {
        host().call("SetDelimiters", handle + delimiters);
        std::string stream;
        for (size_t i = 0; i < length; ++i) {
            const std::string& segment = setting.message[i];
            std::string head = segment.substr(0, segment.find('*'));
            head.resize(15, ' ');
            stream += head + segment + "~";
        }
        host().call("ValidateStruct", handle + stream);
    }
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;
    ~Message() { host().call("DestroyStruct", handle); }

    size_t locatedLines() const {
        const std::string text = host().call("GetLoopText", handle).reply;
        return static_cast<size_t>(std::count(text.begin(), text.end(), '~'));
    }

    /* Runs the rules under the time limit. */
    Answer run(const std::string& records) const {
        alarm(secondsForACall);
        const Answer answer = host().call("RunRules", handle + records);
        alarm(0);
        return answer;
    }

private:
    std::string handle;
};

bool consistsOfLines(const std::string& reply, const cases::Layout& layout) {
    const size_t length = cases::lineLength(layout);
    if (reply.size() % length != 0) return false;
    for (size_t at = length; at <= reply.size(); at += length) {
        if (reply[at - 1] != '$') return false;
    }
    return true;
}

class RuleTermination : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override { std::signal(SIGALRM, nameTheCallAndEnd); }
};

TEST(RuleTerminationMessages, AreLocatedUpToWhereTheyAreCut) {
    for (const Setting& setting : settings) {
        for (size_t length = 1; length <= setting.message.size(); ++length) {
            EXPECT_EQ(Message(setting, length).locatedLines(), length) << setting.name;
        }
    }
}

TEST_P(RuleTermination, ARunOverAMessageCutOffAnywhereComesBack) {
    size_t replies = 0;
    for (const char outerSide : {'L', 'R', 'S'}) {
        const std::string records = joined(arrangements(GetParam(), outerSide), "");
        for (const Setting& setting : settings) {
            for (size_t length = 0; length <= setting.message.size(); ++length) {
                const std::string name = "rule " + std::to_string(GetParam()) + ", outer side " + outerSide + ", " +
                                         setting.name + ", cut behind " + std::to_string(length);
                runningCall[name.copy(runningCall, sizeof runningCall - 1)] = '\0';
                const Message message(setting, length);
                const Answer answer = message.run(records);
                EXPECT_EQ(answer.returnCode, 0) << name;
                EXPECT_EQ(answer.breach, "") << name;
                EXPECT_TRUE(consistsOfLines(answer.reply, cases::findingLayout()) ||
                            consistsOfLines(answer.reply, cases::contentLayout()))
                    << name;
                if (answer.output == Answer::Output::reply) ++replies;
            }
        }
    }
    EXPECT_EQ(replies > 0, canReport(GetParam())) << replies << " runs had a reply";
}

INSTANTIATE_TEST_SUITE_P(Rule, RuleTermination, ::testing::Range(0, lastRuleNumber + 1));

}  // namespace
