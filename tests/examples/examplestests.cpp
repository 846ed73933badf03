// Every message under examples/, checked by edicheck against the grammar beside it. A message FILE with a FILE.expected
// gives the findings that stand there, in that order; a message without one gives none.
//
// Where a rules.txt stands beside it, a message without structural findings is also checked with these rules, and gives
// the findings of its FILE.rules.expected, or none. With a FILE.contents.expected, the rules of rules-codes.txt take the
// values that stand there out of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "edicheckrun.h"
#include "findings.h"

namespace fs = std::filesystem;

namespace {

struct Example {
    fs::path message;

    fs::path folder() const { return message.parent_path(); }
    fs::path beside(const std::string& ending) const { return message.string() + ending; }
    bool has(const std::string& ending) const { return fs::exists(beside(ending)); }
    bool faulty() const { return has(".expected"); }
    bool faultyByRules() const { return has(".rules.expected"); }
    bool hasRules() const { return fs::exists(folder() / "rules.txt"); }
    bool hasContents() const { return has(".contents.expected"); }
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

template <class Condition>
std::vector<Example> examplesWith(Condition condition) {
    std::vector<Example> found = examples();
    found.erase(std::remove_if(found.begin(), found.end(), [&](const Example& example) { return !condition(example); }),
                found.end());
    return found;
}

std::string testName(const testing::TestParamInfo<Example>& info) {
    const fs::path& message = info.param.message;
    std::string name = message.parent_path().filename().string() + "_" + message.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

std::string checkCommand(const Example& example) {
    return "check --format report --grammar " + quoted(example.folder() / "grammar.txt") + " " +
           quoted(example.message);
}

// With what it says on standard error, which should be nothing.
Outcome edicheckWithRules(const Example& example, const char* rules) {
    return edicheck(checkCommand(example) + " --rules " + quoted(example.folder() / rules) + " 2>&1");
}

std::vector<std::string> expectedLines(const Example& example, const std::string& ending) {
    return example.has(ending) ? filledLines(readFile(example.beside(ending))) : std::vector<std::string>{};
}

class Examples : public testing::TestWithParam<Example> {};

TEST_P(Examples, give_the_findings_that_their_folder_tells) {
    const Example& example = GetParam();
    const Outcome outcome = edicheck(checkCommand(example));
    EXPECT_EQ(shortFindings(outcome.output), expectedLines(example, ".expected"));
    EXPECT_EQ(outcome.exitStatus, example.faulty() ? 1 : 0);
}

class ExamplesWithRules : public testing::TestWithParam<Example> {};

TEST_P(ExamplesWithRules, give_the_findings_that_their_folder_tells) {
    const Example& example = GetParam();
    const Outcome outcome = edicheckWithRules(example, "rules.txt");
    EXPECT_EQ(ruleFindings(outcome.output), expectedLines(example, ".rules.expected"));
    EXPECT_EQ(outcome.exitStatus, example.faultyByRules() ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(All, ExamplesWithRules, testing::ValuesIn(examplesWith([](const Example& example) {
                             return example.hasRules() && !example.faulty();
                         })),
                         testName);

class ExamplesWithCodes : public testing::TestWithParam<Example> {};

TEST_P(ExamplesWithCodes, give_the_values_that_their_folder_tells) {
    const Example& example = GetParam();
    const Outcome outcome = edicheckWithRules(example, "rules-codes.txt");
    EXPECT_EQ(ruleContents(outcome.output), expectedLines(example, ".contents.expected"));
    EXPECT_EQ(outcome.exitStatus, 0);
}

INSTANTIATE_TEST_SUITE_P(All, ExamplesWithCodes,
                         testing::ValuesIn(examplesWith([](const Example& example) { return example.hasContents(); })),
                         testName);

std::vector<std::string> fieldsOf(const std::string& line, char delimiter) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, delimiter);)
        fields.push_back(field);
    return fields;
}

// The elements of a line of a message that holds a segment a line.
std::vector<std::string> elementsOf(std::string line) {
    const char delimiter = line.find('*') == line.npos ? '+' : '*';
    line.pop_back();
    return fieldsOf(line, delimiter);
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
        if (!fs::exists(entry.path() / "grammar.txt")) continue;  // documents of another kind
        ++folders;
        const std::string readme = readFile((entry.path() / "README.md").string());
        int clean = 0;
        int faulty = 0;
        for (const Example& example : examples()) {
            if (example.folder() != entry.path()) continue;
            ++(example.faulty() || example.faultyByRules() ? faulty : clean);
            EXPECT_NE(readme.find("`" + example.message.filename().string() + "`"), readme.npos) << example.message;
        }
        EXPECT_GE(clean, 2) << entry.path();
        EXPECT_GE(faulty, 2) << entry.path();
    }
    EXPECT_GE(folders, 5);
}

TEST(ExampleFolders, hold_nothing_expected_without_a_message) {
    for (const auto& entry : fs::recursive_directory_iterator(EXAMPLES_FOLDER)) {
        fs::path message = entry.path();
        if (message.extension() != ".expected" || !fs::exists(message.parent_path() / "grammar.txt")) continue;
        while (message.has_extension() && !isMessage(message))
            message.replace_extension();
        EXPECT_TRUE(fs::exists(message)) << entry.path();
    }
}

// A rule of which no message tells could be wrong, or stand there in vain.
TEST(ExampleFolders, have_a_faulty_message_for_each_rule) {
    int rules = 0;
    for (const auto& entry : fs::recursive_directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.path().filename() != "rules.txt") continue;
        std::string expected;
        for (const Example& example : examples()) {
            if (example.folder() == entry.path().parent_path() && example.faultyByRules())
                expected += readFile(example.beside(".rules.expected"));
        }
        for (const std::string& line : filledLines(readFile(entry.path()))) {
            if (line[0] == '#') continue;
            ++rules;
            const std::string code = fieldsOf(line, '|').at(26);
            EXPECT_NE(expected.find("|" + code + "|"), expected.npos) << code << " of " << entry.path();
        }
    }
    EXPECT_GE(rules, 25);
}

}  // namespace
