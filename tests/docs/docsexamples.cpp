/*
 * Runs the examples of documents. Each Markdown file named on the command line is searched for fenced blocks that are
 * marked, in this order:
 *
 *   grammar     the grammar text
 *   delimiters  the delimiter text; left out for a grammar of kind 1
 *   stream      the data stream, a record or more on a line
 *   report      a finding a line, as a case file has it: number | name | code | loop, or all ten columns; may be empty
 *   loops       the lines of GetLoopText without their terminators; may be left out
 *
 * A stream may follow a report: it is walked by a new object of the same grammar. Blocks marked otherwise are passed
 * over. Each report is one test, whose name comes from the file and the line of its stream.
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
    static const std::array<const char*, 5> names = {"grammar", "delimiters", "stream", "report", "loops"};
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

/* Puts the blocks of a page together, and insists on their order. */
class ExampleReader {
public:
    explicit ExampleReader(path thePage) : page(std::move(thePage)) {}

    std::vector<CaseFile> read() {
        for (const Section& block : blocksOf(page)) {
            if (last == "stream" && block.name != "report") break;
            take(block);
            last = block.name;
        }
        if (last == "stream") throw fault(page, stream, "a report must follow the stream");
        if (last == "grammar" || last == "delimiters") throw fault(page, given.back(), "a stream must follow");
        if (examples.empty()) throw std::runtime_error(page.string() + " has no examples");
        return std::move(examples);
    }

private:
    path page;
    std::vector<Section> given;  // the grammar, and its delimiters if it has them
    Section stream;
    std::string last;  // the name of the block before
    std::vector<CaseFile> examples;

    void take(const Section& block) {
        if (block.name == "grammar") {
            given = {block};
        } else if (given.empty()) {
            throw fault(page, block, "a grammar must come first");
        } else if (block.name == "delimiters") {
            require(block, last == "grammar", "delimiters follow their grammar");
            given.push_back(block);
        } else if (block.name == "stream") {
            stream = block;
        } else if (block.name == "report") {
            require(block, last == "stream", "a report follows its stream");
            examples.push_back({page.string(), given});
            examples.back().sections.push_back(stream);
            examples.back().sections.push_back(block);
        } else {
            require(block, last == "report", "loops follow a report");
            examples.back().sections.push_back(block);
        }
    }

    void require(const Section& block, bool isInOrder, const std::string& text) const {
        if (!isInOrder) throw fault(page, block, text);
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
    const auto stream = std::find_if(example.sections.begin(), example.sections.end(),
                                     [](const Section& section) { return section.name == "stream"; });
    const std::string suite = path(example.path).stem().string();
    const std::string name = "line_" + std::to_string(stream->line);
    testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, example.path.c_str(), stream->line,
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
