// The grammars and messages that the benchmark hands to the library. They are made here, so that a size is a number and
// not a file. Every message is one that its grammar finds clean.
#pragma once

#include <cstddef>
#include <string>

struct Message {
    std::string grammar;     // the whole text, its kind at the head
    std::string delimiters;  // as SetDelimiters reads them; empty for kind 1, which has none
    std::string stream;
    std::size_t records;  // in the stream
    char recordEnd;       // the character that ends each of them
};

/// `records` segments that stand at the root of a grammar of `kind`, which has no loops.
Message plainMessage(int kind, std::size_t records);

/// One transaction of kind 2 with `claims` claims: a provider, and a subscriber with one claim of two service lines
/// each, in the loops of a health care claim.
Message claimBatch(std::size_t claims);

/// A grammar text of `records` records.
std::string grammarOf(std::size_t records);

/// The text of `number` rule records, which the claims of a batch keep.
std::string rulesForClaims(std::size_t number);
