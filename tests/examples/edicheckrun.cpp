// Running edicheck through the shell.
#include "edicheckrun.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <stdexcept>

Outcome edicheck(const std::string& arguments) {
    const std::string command = "cd '" PROJECT_FOLDER "' && '" EDICHECK "' " + arguments;
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t size = fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), size);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}
