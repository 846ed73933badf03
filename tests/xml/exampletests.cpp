// The documents of examples/invoice-xml, in a host that works in their folder. A document FILE with a FILE.expected gives the
// findings that stand there, in that order; a document without one gives none.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>

#include "xmlcalls.h"

namespace fs = std::filesystem;

namespace xmltests {
namespace {

std::vector<fs::path> documents() {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(EXAMPLE_FOLDER)) {
        if (entry.path().extension() == ".xml") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

fs::path expectedFile(const fs::path& document) {
    return document.string() + ".expected";
}

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

// As an .expected file has them: level|line|column.
std::string shortForm(const std::vector<Finding>& findings) {
    std::string lines;
    for (const Finding& finding : findings) {
        std::string level = finding.level;
        std::transform(level.begin(), level.end(), level.begin(), [](unsigned char c) { return std::tolower(c); });
        lines += level + '|' + std::to_string(finding.line) + '|' + std::to_string(finding.column) + '\n';
    }
    return lines;
}

std::string testName(const testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class InvoiceExample : public testing::TestWithParam<fs::path> {};

TEST_P(InvoiceExample, gives_the_findings_that_its_folder_tells) {
    const fs::path before = fs::current_path();
    fs::current_path(EXAMPLE_FOLDER);
    const auto findings = findingsOf(validate(contentsOf(GetParam())));
    fs::current_path(before);
    const fs::path expected = expectedFile(GetParam());
    EXPECT_EQ(shortForm(findings), fs::exists(expected) ? contentsOf(expected) : "");
}

INSTANTIATE_TEST_SUITE_P(All, InvoiceExample, testing::ValuesIn(documents()), testName);

TEST(InvoiceExamples, are_clean_and_faulty_ones_and_are_told_of) {
    const std::string readme = contentsOf(fs::path(EXAMPLE_FOLDER) / "README.md");
    int clean = 0;
    int faulty = 0;
    for (const fs::path& document : documents()) {
        ++(fs::exists(expectedFile(document)) ? faulty : clean);
        EXPECT_NE(readme.find('`' + document.filename().string() + '`'), readme.npos) << document;
    }
    EXPECT_GE(clean, 2);
    EXPECT_GE(faulty, 3);
}

}  // namespace
}  // namespace xmltests
