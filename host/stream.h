// The stream forms in which a message is delivered to the library.
//
//   kind 1   segment id (3 bytes, filled with blanks), '$'
//   kind 2   segment id (3), identifier (5), bytes that are not read (7), element text, terminator
//
// A transaction of an interchange file travels with its release characters undone, and under its own delimiters, each of
// which is replaced by another byte where the data hold it, so that no data can be taken for a delimiter.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "grammar.h"
#include "interchange.h"

namespace edicheck {

// One record of the stream: what the library is given, and what a person is shown.
struct Record {
    std::string id;         // the segment id as the library reads it
    std::string head;       // what stands in front of the element text
    std::string_view text;  // the segment as it stands in the file
    std::size_t line;       // 1-based line of the file on which it begins
};

struct Delivery {
    std::string delimiters;  // as SetDelimiters takes them; empty in kind 1
    std::string stream;
    std::vector<Record> records;
    std::optional<std::size_t> unendedLine;  // text stands behind the last terminator, where the library does not look
};

// Which element of a segment is its identifier.
class IdentifierElements {
public:
    // `overrides` is a list such as "NM1=1,REF=2", or empty. Throws Failure when it is not.
    explicit IdentifierElements(std::string_view overrides = {});

    std::size_t of(const std::string& segmentId) const;

private:
    std::map<std::string, std::size_t> elements_ = {{"HL", 3}};
};

// The text of a --delimiters option, with \n, \r, \t, \\ and \xNN understood: element delimiter, sub-element delimiter,
// terminator of one to three characters, 'X'. Throws Failure when it is not.
std::string parseDelimiters(std::string_view option);

// Throws Failure when no byte is left that could be a delimiter.
Delivery deliverTransaction(const Transaction& transaction, int kind, const IdentifierElements& identifiers);

// The text is the stream itself. Its records are found as the library finds them.
Delivery deliverStream(std::string_view text, int kind, const std::string& delimiters);

// The same message with the 1-based number of each record in the place of its element text, which the walk does not
// read. So a list of located segments tells which records they are, also where segments are alike or are listed twice.
// Its delimiters occur in neither the message nor the grammar, whose loop ids stand in that list.
Delivery numbered(const Delivery& delivery, const Grammar& grammar);

// The record that a line of the located segments of a numbered delivery is, and its loop.
struct LocatedRecord {
    std::size_t number;  // 1-based
    std::string loopId;
};

// Throws Failure when the text does not belong to the numbered delivery.
std::vector<LocatedRecord> cutLoopText(std::string_view loopText, const Delivery& numbered);

}  // namespace edicheck
