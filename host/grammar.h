// A grammar file: the grammar text as the library takes it, and what the tool has to know of its records.
//
// Lines whose first character is '#' (blanks in front of it don't matter) are comments, and are delivered as empty
// lines. The library decides what a grammar is; this reader only serves to explain its answers.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace edicheck {

enum class NodeKind { Segment, Loop, Group };

struct GrammarNode {
    NodeKind kind;
    std::string name;
    std::size_t depth;      // loops and groups around it
    std::size_t loopDepth;  // loops around it
};

struct BadRecord {
    std::size_t line;
    std::size_t number;  // 1-based
    std::string text;
    std::size_t fields;
};

class Grammar {
public:
    // Takes the text of a grammar file.
    explicit Grammar(std::string_view fileText);

    const std::string& text() const { return text_; }
    int kind() const { return text_.substr(0, 1) == "1" ? 1 : 2; }

    // The first record that lacks one of its first four fields.
    const std::optional<BadRecord>& badRecord() const { return badRecord_; }

    // Line on which text stands behind the last '$', which no record ends.
    std::optional<std::size_t> unendedLine() const { return unendedLine_; }

    // Names of the root's children, as findings have them: a loop or group goes by the name of its first segment.
    const std::vector<std::string>& rootNames() const { return rootNames_; }

    // How many loops stand around the segments that the library lists under `loopId`.
    std::size_t depthOfLoop(std::string_view loopId) const;

private:
    void readRecords(std::size_t firstLine);
    void addNode(const std::string& name);
    std::string objectName(std::size_t node) const;

    std::string text_;
    std::vector<GrammarNode> nodes_;  // in the order of the records
    std::vector<std::size_t> open_;   // while reading: the loops and groups around the next record, as places in nodes_
    std::vector<std::string> rootNames_;
    std::optional<BadRecord> badRecord_;
    std::optional<std::size_t> unendedLine_;
};

}  // namespace edicheck
