// Reading a grammar file.
#include "grammar.h"

#include <algorithm>

#include "text.h"

namespace edicheck {

namespace {

constexpr std::string_view kSpace = " \t\n\v\f\r";
constexpr std::size_t kFields = 4;           // requirement, minimum, maximum, name
constexpr std::size_t kLoopIdBegin = 5;      // "Loop" and one separating character stand in front of the id
constexpr std::size_t kListedLoopWidth = 6;  // the library lists this much of a loop's id

std::string withoutComments(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        const std::size_t first = line.find_first_not_of(" \t");
        const bool comment = first != line.npos && line[first] == '#';
        result += comment ? std::string_view("\n") : line;
        text.remove_prefix(end);
    }
    return result;
}

// Fields are divided by runs of '|', so that an empty one does not exist.
std::vector<std::string> fieldsOf(std::string_view record) {
    std::vector<std::string> fields;
    std::size_t begin = record.find_first_not_of('|');
    while (begin != record.npos) {
        const std::size_t end = std::min(record.find('|', begin), record.size());
        fields.emplace_back(record.substr(begin, end - begin));
        begin = record.find_first_not_of('|', end);
    }
    return fields;
}

}  // namespace

Grammar::Grammar(std::string_view fileText) {
    if (startsWith(fileText, kByteOrderMark)) fileText.remove_prefix(kByteOrderMark.size());
    const std::string whole = withoutComments(fileText);
    const std::size_t begin = std::min(whole.find_first_not_of(kSpace), whole.size());
    text_ = whole.substr(begin);
    readRecords(lineAt(whole, begin, 0, 1));
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        if (nodes_[i].depth == 0) rootNames_.push_back(objectName(i));
    }
}

void Grammar::readRecords(std::size_t firstLine) {
    std::size_t line = firstLine;
    std::size_t position = std::min<std::size_t>(1, text_.size());  // the first character selects the kind
    for (std::size_t number = 1; position < text_.size(); ++number) {
        const std::size_t end = text_.find('$', position);
        if (end == text_.npos) {
            unendedLine_ = line;
            return;
        }
        const std::string record = text_.substr(position, end - position);
        const std::vector<std::string> fields = fieldsOf(record);
        if (fields.size() >= kFields) {
            addNode(fields[kFields - 1]);
        } else if (!badRecord_) {
            badRecord_ = BadRecord{line, number, record, fields.size()};
        }
        const std::size_t next = std::min(text_.find_first_not_of(kSpace, end + 1), text_.size());
        line = lineAt(text_, next, position, line);
        position = next;
    }
}

void Grammar::addNode(const std::string& name) {
    if (startsWith(name, "EndUnorderedGroup") || startsWith(name, "EndLoop")) {
        if (!open_.empty()) open_.pop_back();
        return;
    }
    const NodeKind kind = startsWith(name, "UnorderedGroup") ? NodeKind::Group
                          : startsWith(name, "Loop")         ? NodeKind::Loop
                                                             : NodeKind::Segment;
    std::size_t loopDepth = 0;
    if (!open_.empty()) {
        const GrammarNode& parent = nodes_[open_.back()];
        loopDepth = parent.loopDepth + (parent.kind == NodeKind::Loop ? 1 : 0);
    }
    nodes_.push_back({kind, name, open_.size(), loopDepth});
    if (kind != NodeKind::Segment) open_.push_back(nodes_.size() - 1);
}

std::string Grammar::objectName(std::size_t node) const {
    const auto hasChild = [this](std::size_t n) {
        return n + 1 < nodes_.size() && nodes_[n + 1].depth == nodes_[n].depth + 1;
    };
    while (nodes_[node].kind == NodeKind::Group && hasChild(node))
        ++node;
    if (nodes_[node].kind == NodeKind::Segment) return nodes_[node].name;
    return hasChild(node) ? nodes_[node + 1].name : std::string();
}

std::size_t Grammar::depthOfLoop(std::string_view loopId) const {
    if (loopId.empty()) return 0;
    const auto isListedAs = [loopId](const GrammarNode& node, std::size_t idBegin) {
        return node.kind == NodeKind::Loop && node.name.size() > idBegin &&
               std::string_view(node.name).substr(idBegin, kListedLoopWidth) == loopId;
    };
    for (const std::size_t idBegin : {kLoopIdBegin, std::size_t{0}}) {
        for (const GrammarNode& node : nodes_) {
            if (isListedAs(node, idBegin)) return node.loopDepth + 1;
        }
    }
    return 0;
}

}  // namespace edicheck
