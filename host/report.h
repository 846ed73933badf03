// Saying in words what the findings of the walk and of the rules mean.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "grammar.h"
#include "reply.h"
#include "stream.h"

namespace edicheck {

// The other side of a rule's finding.
struct Context {
    std::size_t record;  // as in Explanation
    std::string words;
};

struct Explanation {
    std::size_t record;  // 1-based; one past the last record is the end of the message; 0 is no place in it
    std::string codes;   // of the findings that it explains: "3", or "8 and 7"
    std::string words;
    bool ofRule = false;  // the code is the rule's own
    std::optional<Context> context = std::nullopt;
};

// In the order of the findings. Two findings that tell of one unknown identifier become one explanation.
std::vector<Explanation> explain(const std::vector<Finding>& findings, const Grammar& grammar,
                                 const std::vector<Record>& records);

// The findings of rules: each pair is one explanation, the second finding of it being the context. In the order of the
// records; what has no place comes last. `located` are the lines that rules speak of.
std::vector<Explanation> explainRules(const std::vector<Finding>& findings, const std::vector<LocatedRecord>& located);

// The record that stands on the 1-based line of the located segments; 0 where there is no such line.
std::size_t recordOfLine(long long line, const std::vector<LocatedRecord>& located);

}  // namespace edicheck
