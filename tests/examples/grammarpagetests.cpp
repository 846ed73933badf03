// The examples of docs/grammars.md, run through the library. An example is three fenced blocks, grammar, message and
// findings, with a fourth, located, where the page shows in which loops the segments were placed.
//
// A line of a message block is a segment, with its identifier in front where it has one: <20> HL*1**20*1
#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "findings.h"
#include "host.h"

namespace {

struct Block {
    std::string kind;  // what stands behind the opening fence
    int line;          // of the opening fence
    std::string text;
};

struct PageExample {
    int line = 0;
    std::string grammar;
    std::string message;
    std::string findings;
    std::string located;
    bool showsLocated = false;
};

void PrintTo(const PageExample& example, std::ostream* out) {
    *out << "the example on line " << example.line;
}

std::vector<Block> blocksOf(const std::string& page) {
    const std::string fence = "```";
    std::vector<Block> blocks;
    std::istringstream stream(page);
    bool inside = false;
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        const bool isFence = line.rfind(fence, 0) == 0;
        if (isFence && !inside) blocks.push_back({line.substr(fence.size()), number, ""});
        if (isFence) {
            inside = !inside;
        } else if (inside) {
            blocks.back().text += line + '\n';
        }
    }
    return blocks;
}

// Blocks that don't begin an example, or break one off, come out as an example without a grammar, which no test passes.
std::vector<PageExample> examplesOf(const std::string& page) {
    const std::vector<Block> blocks = blocksOf(page);
    std::vector<PageExample> examples;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto kindAt = [&](std::size_t at) { return at < blocks.size() ? blocks[at].kind : std::string(); };
        if (kindAt(i) == "text") continue;
        PageExample example;
        example.line = blocks[i].line;
        if (kindAt(i) == "grammar" && kindAt(i + 1) == "message" && kindAt(i + 2) == "findings") {
            example.grammar = blocks[i].text;
            example.message = blocks[i + 1].text;
            example.findings = blocks[i + 2].text;
            i += 2;
            if (kindAt(i + 1) == "located") {
                example.located = blocks[++i].text;
                example.showsLocated = true;
            }
        }
        examples.push_back(example);
    }
    return examples;
}

std::string filledUp(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// A record of the stream, but for what ends it.
std::string recordOf(const std::string& line, bool kind1) {
    std::string identifier;
    std::string segment = line;
    if (line[0] == '<') {
        const std::size_t end = line.find("> ");
        identifier = line.substr(1, end - 1);
        segment = line.substr(end + 2);
    }
    const std::string id = filledUp(segment.substr(0, segment.find('*')), 3);
    return kind1 ? id : id + filledUp(identifier, 5) + std::string(7, ' ') + segment;
}

std::string streamOf(const std::string& message, bool kind1) {
    std::string stream;
    for (const std::string& line : filledLines(message))
        stream += recordOf(line, kind1) + (kind1 ? '$' : '~');
    return stream;
}

// Segment and loop of each line of the loop text, which has them in front of the other elements.
std::string locatedLines(const std::string& loopText) {
    std::string located;
    std::istringstream stream(loopText);
    for (std::string line; std::getline(stream, line, '~');) {
        const std::size_t idEnd = line.find('*');
        const std::size_t loopEnd = line.find('*', idEnd + 1);
        located += line.substr(0, idEnd) + '|' + line.substr(idEnd + 1, loopEnd - idEnd - 1) + '\n';
    }
    return located;
}

std::string testName(const testing::TestParamInfo<PageExample>& example) {
    return "line_" + std::to_string(example.param.line);
}

class GrammarPage : public testing::TestWithParam<PageExample> {};

TEST_P(GrammarPage, shows_what_the_library_finds) {
    const PageExample& example = GetParam();
    ASSERT_FALSE(example.grammar.empty()) << "no example of grammar, message and findings begins here";
    const bool kind1 = example.grammar[0] == '1';
    const cases::Host host(cases::openLibrary());
    const auto call = [&](const char* name, const std::string& input) {
        const cases::Answer answer = host.call(name, input);
        EXPECT_EQ(answer.breach, "");
        EXPECT_EQ(answer.returnCode, 0) << name;
        return answer.reply;
    };

    const std::string handle = call("CreateStruct", example.grammar);
    if (!kind1) call("SetDelimiters", handle + "*:~X");
    const std::string report = call("ValidateStruct", handle + streamOf(example.message, kind1));
    EXPECT_EQ(shortFindings(report), filledLines(example.findings));
    if (example.showsLocated) {
        EXPECT_EQ(locatedLines(call("GetLoopText", handle)), example.located);
    }
    call("DestroyStruct", handle);
}

INSTANTIATE_TEST_SUITE_P(Examples, GrammarPage, testing::ValuesIn(examplesOf(readFile(GRAMMARS_PAGE))), testName);

TEST(GrammarsPage, shows_twenty_examples_at_least) {
    EXPECT_GE(examplesOf(readFile(GRAMMARS_PAGE)).size(), 20U);
}

}  // namespace
