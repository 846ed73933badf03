// Every message under examples/, checked by edicheck against the grammar beside it. A message FILE with a FILE.expected
// gives the findings that stand there, in that order; a message without one gives none.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "findings.h"

namespace fs = std::filesystem;

namespace {

struct Example {
    fs::path message;

    fs::path folder() const { return message.parent_path(); }
    fs::path expectedFile() const { return message.string() + ".expected"; }
    bool faulty() const { return fs::exists(expectedFile()); }
    bool cutOff() const { return message.filename().string().rfind("cut-off", 0) == 0; }
};

void PrintTo(const Example& example, std::ostream* out) {
    *out << example.message.string();
}

bool isMessage(const fs::path& path) {
    return path.extension() == ".x12" || path.extension() == ".edi";
}

std::vector<Example> examples() {
    std::vector<Example> found;
    for (const auto& entry : fs::recursive_directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.is_regular_file() && isMessage(entry.path())) found.push_back({entry.path()});
    }
    std::sort(found.begin(), found.end(), [](const Example& a, const Example& b) { return a.message < b.message; });
    return found;
}

std::string testName(const testing::TestParamInfo<Example>& info) {
    const fs::path& message = info.param.message;
    std::string name = message.parent_path().filename().string() + "_" + message.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

struct Outcome {
    int exitStatus;
    std::string output;
};

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

Outcome edicheck(const std::string& arguments) {
    const std::string command = quoted(EDICHECK) + " " + arguments;
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t size = fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), size);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

class Examples : public testing::TestWithParam<Example> {};

TEST_P(Examples, give_the_findings_that_their_folder_tells) {
    const Example& example = GetParam();
    const Outcome outcome = edicheck("check --format report --grammar " + quoted(example.folder() / "grammar.txt") +
                                     " " + quoted(example.message));
    const auto expected = example.faulty() ? filledLines(readFile(example.expectedFile())) : std::vector<std::string>{};
    EXPECT_EQ(shortFindings(outcome.output), expected);
    EXPECT_EQ(outcome.exitStatus, example.faulty() ? 1 : 0);
}

// The elements of a line of a message that holds a segment a line.
std::vector<std::string> elementsOf(std::string line) {
    const char delimiter = line.find('*') == line.npos ? '+' : '*';
    line.pop_back();
    std::vector<std::string> elements;
    std::istringstream stream(line);
    for (std::string element; std::getline(stream, element, delimiter);)
        elements.push_back(element);
    return elements;
}

// The places of the segments with this id.
std::vector<std::size_t> placesOf(const std::string& id, const std::vector<std::string>& lines) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (elementsOf(lines[i]).at(0) == id) places.push_back(i);
    }
    return places;
}

TEST_P(Examples, have_right_counts_and_control_numbers) {
    const auto lines = filledLines(readFile(GetParam().message));
    const auto place = [&](const std::string& id) {
        const auto places = placesOf(id, lines);
        return places.size() == 1 ? places[0] : throw std::runtime_error("not one segment " + id);
    };
    const auto segment = [&](const std::string& id) { return elementsOf(lines[place(id)]); };
    const auto countBetween = [&](const char* first, const char* last) {
        return std::to_string(place(last) - place(first) + 1);
    };
    if (GetParam().cutOff()) {
        EXPECT_EQ(placesOf("SE", lines).size(), 0U);
        EXPECT_EQ(placesOf("IEA", lines).size(), 0U);
    } else if (GetParam().message.extension() == ".x12") {
        EXPECT_EQ(segment("SE").at(1), countBetween("ST", "SE"));
        EXPECT_EQ(segment("SE").at(2), segment("ST").at(2));
        EXPECT_EQ(segment("GE").at(1), "1");
        EXPECT_EQ(segment("GE").at(2), segment("GS").at(6));
        EXPECT_EQ(segment("IEA").at(1), "1");
        EXPECT_EQ(segment("IEA").at(2), segment("ISA").at(13));
    } else {
        EXPECT_EQ(segment("UNT").at(1), countBetween("UNH", "UNT"));
        EXPECT_EQ(segment("UNT").at(2), segment("UNH").at(1));
        EXPECT_EQ(segment("UNZ").at(1), "1");
        EXPECT_EQ(segment("UNZ").at(2), segment("UNB").at(5));
    }
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::ValuesIn(examples()), testName);

TEST(ExampleFolders, hold_clean_and_faulty_messages_and_tell_of_each) {
    int folders = 0;
    for (const auto& entry : fs::directory_iterator(EXAMPLES_FOLDER)) {
        if (!entry.is_directory()) continue;
        ++folders;
        const std::string readme = readFile((entry.path() / "README.md").string());
        int clean = 0;
        int faulty = 0;
        for (const Example& example : examples()) {
            if (example.folder() != entry.path()) continue;
            ++(example.faulty() ? faulty : clean);
            EXPECT_NE(readme.find("`" + example.message.filename().string() + "`"), readme.npos) << example.message;
        }
        EXPECT_GE(clean, 2) << entry.path();
        EXPECT_GE(faulty, 2) << entry.path();
    }
    EXPECT_GE(folders, 5);
}

TEST(ExampleFolders, hold_no_expected_findings_without_a_message) {
    for (const auto& entry : fs::recursive_directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.path().extension() != ".expected") continue;
        EXPECT_TRUE(fs::exists(fs::path(entry.path()).replace_extension())) << entry.path();
    }
}

}  // namespace
