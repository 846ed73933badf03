// The commands of edicheck, free of the command line.
#pragma once

#include <string>
#include <vector>

namespace edicheck {

// What each command ends with; of several files the worst one counts.
enum ExitCode : int { kClean = 0, kFindings = 1, kFailed = 2 };

enum class Format {
    Words,   // findings in words, grouped by transaction
    Report,  // the library's replies as they stand, a line for each finding and each value
    Show,    // the whole message, indented by loop, each finding at its segment
};

struct Options {
    std::string library = "libediexit.so.1";
    std::string grammar;
    std::string rules;  // a rules file, or empty
    std::vector<std::string> files;
    bool rawStream = false;  // the files are streams as a host delivers them, and no interchanges
    std::string delimiters = "*:~X";
    std::string identifiers;
    Format format = Format::Words;
    bool wellFormed = false;  // of XML documents, whether they are well-formed is all that is asked
};

// Checks the files and prints the findings. Throws Failure where no file can be checked.
ExitCode check(const Options& options);

// Prints the segments of the files as the library located them. Throws Failure where no file can be read.
ExitCode loops(const Options& options);

// Validates XML documents and prints the findings. Each is validated in its own folder, in which the process works for
// that time. Throws Failure where the library cannot be used.
ExitCode xml(const Options& options);

}  // namespace edicheck
