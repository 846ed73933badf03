// The grammar builder: from grammar text to the tree of nodes.
//
// The text: the first character selects the kind ('1' is kind 1, every other kind 2). Records follow, each ended by
// '$'; white space behind a '$' is skipped, and text behind the last '$' is not looked at. A record's fields are
// separated by '|' in the manner of strtok: an empty field doesn't exist.
//
//   field    content
//   1        requirement, its first character; in the first record version text + requirement character
//   2        minRepeat
//   3        maxRepeat, 0 for no limit
//   4        name of the node, or a keyword: "UnorderedGroup", "EndUnorderedGroup", "Loop", "EndLoop"
//   5 to 24  identifiers
#pragma once

#include <cstddef>

class EDI_Structure;

/// The kind that a grammar text selects: 1 or 2.
int grammarKindOf(char const* text);

/// Builds the nodes of `text` below `root`, and changes the text: each '$' and '|' that ends a field becomes a NUL.
/// Answers false if a record lacks one of its first four fields; the text is read to its end all the same.
/// Throws szFailure where there is no memory; what was built then hangs from the root.
bool buildGrammar(EDI_Structure& root, char* text, std::size_t length);
