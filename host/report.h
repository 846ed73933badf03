// The report of a walk: cutting the library's reply into findings, and saying in words what they mean.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "grammar.h"
#include "stream.h"

namespace edicheck {

// One line of the report; texts without the blanks that fill their columns.
struct Finding {
    std::string line;  // as it stands in the reply, the '$' at its end included
    long long number;
    int elementPosition;
    std::string segmentId;
    std::string code;
    std::string loopId;
    std::string elementText;
};

// A line has 173 bytes, and more where a number is wider than its column. Throws Failure when the reply is no report.
std::vector<Finding> cutReport(std::string_view reply);

struct Explanation {
    std::size_t record;  // 1-based; one past the last record is the end of the message; 0 is no place in it
    std::string codes;   // of the findings that it explains: "3", or "8 and 7"
    std::string words;
};

// In the order of the findings. Two findings that tell of one unknown identifier become one explanation.
std::vector<Explanation> explain(const std::vector<Finding>& findings, const Grammar& grammar,
                                 const std::vector<Record>& records);

}  // namespace edicheck
