// The replies of ValidateStruct and RunRules, cut into their lines and columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace edicheck {

// A line of a report of findings; texts without the blanks that fill their columns.
struct Finding {
    std::string line;  // as it stands in the reply, the '$' at its end included
    long long number;
    int elementPosition;
    std::string subElement;  // two digits, "00" for none
    std::string segmentId;
    std::string code;
    std::string loopId;
    std::string errorText;
    std::string elementText;
};

// A line of the values that rules took out of a message; texts without the blanks that fill their columns.
struct Content {
    std::string line;  // as it stands in the reply, the '$' at its end included
    long long number;
    int elementPosition;
    int subElementPosition;
    std::string segmentId;
    std::string code;
    std::string loopId;
    std::string transactionText;
    std::string segmentText;
    std::string message;
    std::string value;
    std::string qualifier;
    std::string key;
    std::string date;
    std::string v1;
    std::string v2;
    std::string codeTable;
};

// A line has 173 bytes, and more where a number is wider than its column. Throws Failure when the reply is no report.
std::vector<Finding> cutReport(std::string_view reply);

// A line has 223 bytes, and more where a number is wider than its column. Throws Failure when the reply is not made of
// such lines.
std::vector<Content> cutContents(std::string_view reply);

// Whether a reply of RunRules begins with a value, and not with a finding.
bool holdsContents(std::string_view reply);

}  // namespace edicheck
