/*
 * The structural walk written a second time, as plainly as can be: a tree of values, texts as std::string, and one
 * function a node type. It shares no code with the library, and the stress test holds the library's answers against it.
 */
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace walkmodel {

enum class NodeType { segment, loop, group };

struct Node {
    NodeType type = NodeType::segment;
    std::string name;  // the fourth field of the grammar record, the keyword of a loop or group included
    char requirement = 'O';
    int32_t minRepeat = 0;
    int32_t maxRepeat = 0;
    std::vector<std::string> identifiers;
    std::vector<Node> children;
};

struct Grammar {
    int kind = 2;
    std::string version;  // stands in front of the first record's requirement
    std::vector<Node> nodes;
};

struct Record {
    std::string id;
    std::string identifier;
    std::string text;  // the elements, the segment id first
};

/* What a walk came across: the stress test shows by it that its random input reaches every corner. */
enum class Event {
    iteration,
    identifierMiss,
    iterationWithoutIdentifier,
    iterationWithoutInitiator,
    idleCycleEnded,
    iterationOverLimit,
    limitSparedByUnidentified,
    retreat,
    segmentOverLimit,
    segmentInGroup,
    noteSkipped,
    recordSteppedOver,
    groupPass,
    groupSettled,
    groupMissingChild,
    groupTooFewOfChild,
    groupCountCapped,
    groupRenamed,
    groupLimitInPass,
    groupLimitAtEnd,
    missingInLoop,
    tooFewInLoop,
    missingAtRoot,
    tooFewAtRoot,
    outOfSequence,
    outOfSequenceBehindEnd,
    passErrorsDropped,
    missingAtClose,
    count
};

struct Outcome {
    std::string report;    // the reply of ValidateStruct
    std::string loopText;  // the reply of GetLoopText
    std::array<int, static_cast<size_t>(Event::count)> events{};
};

Outcome walk(const Grammar& grammar, const std::vector<Record>& records, char elementDelimiter,
             const std::string& terminator);

}  // namespace walkmodel
