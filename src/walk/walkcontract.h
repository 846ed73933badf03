// What the walks of all nodes share: the advance step, the offer to a child, the standard error.
//
// The walk is one pass over the records. A parent offers the record on offer to a child; a plain segment tells a match
// through the parent's `matched`, a Loop or choiceLoop by leaving the cursor on the first record that it didn't
// consume.
//
// What `loopContext` holds depends on who offers: null from the root; the loop's id from a Loop in a normal iteration;
// the loop's whole name in an iteration without initiator; the group's whole name from a choiceLoop.
#pragma once

#include "walk/datasegment.h"
#include "walk/errorinfos.h"

/// How many nodes the walk goes down into. Each takes stack, and a grammar may nest without limit: a node that lies
/// deeper declines every record.
inline constexpr int deepestWalk = 2048;

/// Brings the next record on offer. With skipNotes, records whose id is "NTE" are stepped over.
void advance(DataSegment& data, unsigned long flags);

/// The identifier of the record on offer; null if it has none, or if the tree has no pool.
char const* identifierOnOffer(DataSegment& data, IdentifierBuffer const* identifiers);

/// Offers the record on offer to a child of `parent`. Answers whether a segment child took it.
bool offer(ValidationContext& parent, Validator& child, DataSegment& data, char const* loopContext, int kind,
           IdentifierBuffer* identifiers);

/// Whether a node's name is the id of a record. A record without an id has no node, and a node without children no
/// name.
bool isNamed(char const* name, char const* id);

/// "SE" and "UNT" are exempt from the missing and too-few reports of the root and of loops.
bool isTrailer(char const* name);

/// A loop's name from its sixth character on: the id behind "Loop" and its separator.
char const* loopIdOf(char const* name);

void addStandardError(ErrorInfos& errors, int number, char const* name, char const* code, char const* loopText);
