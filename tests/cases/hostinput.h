/*
 * What the host writes into the input of a call, made from the readable forms of a case file: streams and rule records.
 */
#pragma once

#include <string>
#include <vector>

#include "casefile.h"

namespace cases {

/* The delimiter text that a host hands to SetDelimiters, taken apart as the library does. */
struct Delimiters {
    char element;
    std::string terminator;
};

Delimiters readDelimiters(const std::string& delimiterText);

/* The streams of the two grammar kinds from a section with one segment a line. Throw CaseError. */
std::string streamOfKind1(const Section& message);
std::string streamOfKind2(const Section& message, const Delimiters& delimiters);

/* The rule records from a section with a rule's fields by name, rules separated by blank lines. Throws CaseError. */
std::string ruleRecords(const Section& rules);

/* The section's lines as one text, with the escapes replaced. */
std::string joined(const Section& section, const std::string& separator);

}  // namespace cases
