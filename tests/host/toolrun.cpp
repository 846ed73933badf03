// Spawning the tool.
#include "toolrun.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

extern char** environ;

namespace edicheck {

namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

ToolTest::ToolTest() : folder_(testing::TempDir() + "edicheck-" + std::to_string(getpid())) {
    std::filesystem::create_directories(folder_);
}

ToolTest::~ToolTest() {
    std::filesystem::remove_all(folder_);
}

std::string ToolTest::path(const std::string& name) const {
    return folder_ + "/" + name;
}

std::string ToolTest::file(const std::string& name, const std::string& contents) const {
    std::ofstream(path(name), std::ios::binary) << contents;
    return path(name);
}

ToolResult ToolTest::runBare(std::vector<std::string> arguments) const {
    const std::string out = path("standard-output");
    const std::string err = path("standard-error");
    std::string program = EDICHECK_PROGRAM;
    std::vector<char*> argv = {program.data()};
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t child = 0;
    const int failed = posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        ADD_FAILURE() << program << " cannot be started";
        return {-1, "", ""};
    }
    int status = 0;
    waitpid(child, &status, 0);
    const ToolResult result = {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentsOf(out), contentsOf(err)};
    // A sanitizer ends the program with exit codes of its own, which could pass for one of the tool's.
    EXPECT_EQ(result.err.find("Sanitizer"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("runtime error"), std::string::npos) << result.err;
    return result;
}

ToolResult ToolTest::run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--library", EDICHECK_LIBRARY});
    return runBare(arguments);
}

ToolResult ToolTest::check(const std::string& grammar, const std::string& message,
                           const std::vector<std::string>& options) const {
    std::vector<std::string> arguments = {"check", "--grammar", file("grammar", grammar), file("message", message)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run(arguments);
}

}  // namespace edicheck
