// The examples of docs/edicheck.md: blocks marked console, each a command behind "$ " and all that it prints.
#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "edicheckrun.h"
#include "findings.h"

namespace {

const std::string kPrompt = "$ edicheck ";

struct Command {
    std::string arguments;
    std::string output;
};

void PrintTo(const Command& command, std::ostream* out) {
    *out << command.arguments;
}

// A block that doesn't begin with a command comes out as one without arguments, which no test passes.
std::vector<Command> commandsOf(const std::string& page) {
    std::vector<Command> commands;
    std::istringstream lines(page);
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        if (line == "```console") {
            inside = true;
            std::getline(lines, line);
            const bool isCommand = line.rfind(kPrompt, 0) == 0;
            commands.push_back({isCommand ? line.substr(kPrompt.size()) : "", ""});
        } else if (line == "```") {
            inside = false;
        } else if (inside) {
            commands.back().output += line + '\n';
        }
    }
    return commands;
}

class EdicheckPage : public testing::TestWithParam<Command> {};

TEST_P(EdicheckPage, shows_what_edicheck_prints) {
    ASSERT_FALSE(GetParam().arguments.empty()) << "the block does not begin with " << kPrompt;
    EXPECT_EQ(edicheck(GetParam().arguments + " 2>&1").output, GetParam().output);
}

std::string testName(const testing::TestParamInfo<Command>& command) {
    return "number_" + std::to_string(command.index + 1);
}

INSTANTIATE_TEST_SUITE_P(Examples, EdicheckPage, testing::ValuesIn(commandsOf(readFile(EDICHECK_PAGE))), testName);

TEST(EdichecksPage, shows_eight_commands_at_least) {
    EXPECT_GE(commandsOf(readFile(EDICHECK_PAGE)).size(), 8U);
}

}  // namespace
