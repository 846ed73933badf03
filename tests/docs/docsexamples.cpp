/*
 * Runs the examples of documents. Each Markdown file named on the command line is searched for fenced blocks that are
 * marked with the name of a section of a case file:
 *
 *   grammar, delimiters                     what the messages behind them are walked with
 *   message, stream                         a message; each begins an example, with an object of its own
 *   report, loops, rule, rules, contents    what is called and what is expected, as in a case file
 *
 * Blocks marked otherwise are passed over. Each message is one test, whose name comes from the file and the line.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "casefile.h"
#include "caserun.h"
#include "host.h"

namespace {

using cases::CaseFile;
using cases::Section;
using std::filesystem::path;

constexpr char fence[] = "```";

bool startsWithFence(const std::string& text) {
    return text.compare(0, sizeof fence - 1, fence) == 0;
}

bool isOfExample(const std::string& name) {
    static const std::array<const char*, 9> names = {"grammar", "delimiters", "message", "stream",  "report",
                                                     "loops",   "rule",       "rules",   "contents"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::runtime_error fault(const path& page, const Section& block, const std::string& text) {
    return std::runtime_error(page.string() + ", line " + std::to_string(block.line) + ": " + text);
}

/* The marked blocks of a page, in order. */
std::vector<Section> blocksOf(const path& page) {
    std::ifstream file(page);
    if (!file) throw std::runtime_error(page.string() + " can't be read");
    std::vector<Section> blocks;
    Section block;
    bool isInside = false;
    int number = 0;
    for (std::string text; std::getline(file, text);) {
        ++number;
        if (isInside && text == fence) {
            if (isOfExample(block.name)) blocks.push_back(block);
            isInside = false;
        } else if (isInside) {
            block.lines.push_back({number, text});
        } else if (startsWithFence(text)) {
            block = {text.substr(sizeof fence - 1), number, {}};
            isInside = true;
        }
    }
    if (isInside) throw fault(page, block, "the block isn't closed");
    return blocks;
}

/* Puts the blocks of a page together. */
class ExampleReader {
public:
    explicit ExampleReader(path thePage) : page(std::move(thePage)) {}

    std::vector<CaseFile> read() {
        for (const Section& block : blocksOf(page)) take(block);
        if (examples.empty()) throw std::runtime_error(page.string() + " has no examples");
        return std::move(examples);
    }

private:
    path page;
    std::vector<Section> given;  // the grammar, and its delimiters if it has them
    std::vector<CaseFile> examples;
    bool isInExample = false;

    void take(const Section& block) {
        if (block.name == "grammar") {
            given = {block};
            isInExample = false;
            return;
        }
        if (given.empty()) throw fault(page, block, "a grammar must come first");
        if (block.name == "message" || block.name == "stream") {
            examples.push_back({page.string(), given});
            isInExample = true;
        }
        if (block.name != "delimiters" && !isInExample) throw fault(page, block, "a message must come first");
        (isInExample ? examples.back().sections : given).push_back(block);
    }
};

class ExampleTest : public testing::Test {
public:
    ExampleTest(CaseFile theExample, const cases::Host& theHost) : example(std::move(theExample)), host(theHost) {}

    void TestBody() override {
        for (const cases::Failure& failure : cases::runCase(example, host)) {
            ADD_FAILURE_AT(example.path.c_str(), failure.line) << failure.text;
        }
    }

private:
    const CaseFile example;
    const cases::Host& host;
};

void registerExample(const CaseFile& example, const cases::Host& host) {
    const auto isMessage = [](const Section& section) { return section.name == "message" || section.name == "stream"; };
    const auto message = std::find_if(example.sections.begin(), example.sections.end(), isMessage);
    const std::string suite = path(example.path).stem().string();
    const std::string name = "line_" + std::to_string(message->line);
    testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, example.path.c_str(), message->line,
                          [example, &host]() -> ExampleTest* { return new ExampleTest(example, host); });
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " MARKDOWN-FILE...\n";
        return 2;
    }
    try {
        const cases::Host host(cases::openLibrary());
        for (int index = 1; index < argc; ++index) {
            for (const CaseFile& example : ExampleReader(argv[index]).read())
                registerExample(example, host);
        }
        return RUN_ALL_TESTS();
    } catch (const std::runtime_error& error) {
        std::cerr << error.what() << "\n";
        return 2;
    }
}
