// Running edicheck as a person does: by its arguments, and looking at what it prints and ends with.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace edicheck {

struct ToolResult {
    int exitCode;  // -1 when a signal ended it
    std::string out;
    std::string err;
};

// Tests that run the tool, with a folder for their files that goes away behind them.
class ToolTest : public testing::Test {
protected:
    ToolTest();
    ~ToolTest() override;

    // Writes a file and returns its path.
    std::string file(const std::string& name, const std::string& contents) const;
    std::string path(const std::string& name) const;

    // The tool by itself, and with the library of this build.
    ToolResult runBare(std::vector<std::string> arguments) const;
    ToolResult run(std::vector<std::string> arguments) const;

    // `check` of one message under a grammar, both given as text.
    ToolResult check(const std::string& grammar, const std::string& message,
                     const std::vector<std::string>& options = {}) const;

private:
    std::string folder_;
};

}  // namespace edicheck
