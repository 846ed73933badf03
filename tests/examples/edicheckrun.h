// Running edicheck as a person would.
#pragma once

#include <string>

struct Outcome {
    int exitStatus;  // -1 when a signal ended it
    std::string output;
};

// Runs edicheck through the shell, with these arguments (and redirections), in the project's folder.
Outcome edicheck(const std::string& arguments);
