// TreeWalk: a grammar, a message and the walk of the one through the other, in short notation.
//
//   grammar   the grammar text itself; white space behind a record's '$' is free
//   record    "NM1", or "HL/20" with an identifier
//   finding   "4 NM1 3@1000A" for a standard error: number, name, code, loop text. Any other finding is shown whole:
//             "4.3 HL 7@|txn|seg|error|element|sub", the element position behind the number
//   line      "HL/20@2000A": segment id, identifier, loop id
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "grammar/validators.h"
#include "rules/seglists.h"
#include "walk/datasegment.h"
#include "walk/errorinfos.h"

/// A text in a field that need not have a terminator.
template <std::size_t size>
std::string fieldText(char const (&field)[size]) {
    std::string const whole(field, size);
    return whole.substr(0, whole.find('\0'));
}

using Texts = std::vector<std::string>;

/// Each finding of the list in the notation above.
Texts notation(ErrorInfos const& errors);

/// Each line of the list in the notation above.
Texts notation(SegLists const& lines);

class TreeWalk {
public:
    EDI_Structure root;
    DataSegment& data;  // the root's

    TreeWalk(std::string grammar, Texts const& records);

    /// Walks the message through the tree, as far as it gets.
    void run();

    Texts findings() const { return notation(*root.errorInfos); }
    Texts lines() const { return notation(*root.segLists); }

    /// The node that the indices lead to, from the root down.
    template <typename Node = Validator>
    Node& node(std::vector<int> const& path) {
        return dynamic_cast<Node&>(find(path));
    }

private:
    std::deque<std::string> texts;  // the element text of each record: its id, '*' and its number

    Validator& find(std::vector<int> const& path);
    void addRecord(std::string const& record);
};

/// Walks the message through the grammar of kind 2 and holds what came of it against the findings and lines.
void expectWalk(std::string const& grammar, Texts const& records, Texts const& findings, Texts const& lines);
