/*
 * The program that runs case files: each file named on the command line, and each *.case below a folder named there, is
 * one test, whose name comes from its path.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "casefile.h"
#include "caserun.h"
#include "host.h"

namespace {

using std::filesystem::path;

class CaseTest : public testing::Test {
public:
    CaseTest(path theFile, const cases::Host& theHost) : file(std::move(theFile)), host(theHost) {}

    void TestBody() override {
        try {
            for (const cases::Failure& failure : cases::runCase(cases::readCase(file.string()), host)) {
                ADD_FAILURE_AT(file.c_str(), failure.line) << failure.text;
            }
        } catch (const cases::CaseError& fault) {
            ADD_FAILURE_AT(file.c_str(), fault.line) << "the case file is malformed: " << fault.what();
        }
    }

private:
    const path file;
    const cases::Host& host;
};

std::vector<path> caseFiles(const path& place) {
    if (!std::filesystem::is_directory(place)) return {place};
    std::vector<path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place)) {
        if (entry.path().extension() == ".case") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

/* GoogleTest gives '-' and ':' a meaning in its filters. */
std::string testName(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '-' || c == ':' || c == '.'; }, '_');
    return text;
}

void registerCase(const path& file, const cases::Host& host) {
    const std::string area = testName(file.parent_path().filename().string());
    const std::string name = testName(file.stem().string());
    testing::RegisterTest(area.c_str(), name.c_str(), nullptr, nullptr, file.c_str(), 1,
                          [file, &host]() -> CaseTest* { return new CaseTest(file, host); });
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " CASE-FILE-OR-FOLDER...\n";
        return 2;
    }
    const cases::Host host(cases::openLibrary());
    size_t number = 0;
    for (int i = 1; i < argc; ++i) {
        for (const path& file : caseFiles(argv[i])) {
            registerCase(file, host);
            ++number;
        }
    }
    if (number == 0) {
        std::cerr << "no case found\n";
        return 2;
    }
    return RUN_ALL_TESTS();
}
