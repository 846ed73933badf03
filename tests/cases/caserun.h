/*
 * Runs a case: its sections are calls, in order, and what is expected of the answers. README.md tells what each section
 * means and what is expected of a call where the case says nothing.
 */
#pragma once

#include <string>
#include <vector>

#include "casefile.h"
#include "host.h"

namespace cases {

struct Failure {
    int line;  // in the case file; 0 for the file as a whole
    std::string text;
};

/* What went wrong, in the order of the case; empty if the case holds. Every object is destroyed at the end. */
std::vector<Failure> runCase(const CaseFile& caseFile, const Host& host);

}  // namespace cases
