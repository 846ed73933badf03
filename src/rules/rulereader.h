// The rule reader: from rule records to rule objects.
//
// A record is text ended by '$'; its fields are separated by '|', and an empty field stays in its place. Text behind
// the last '$' is ignored.
//
//   field     goes into
//   0         selects the class (catalogue/catalogue.h)
//   1         outerSide: 'R' right, 'S' scope, anything else left
//   2         scopeSegmentId
//   3         ruleArgument3
//   4 to 8    leftSide: loop id, segment id, element positions, sub-element positions, values; lists separated by '*'
//   9 to 13   leftSide2
//   14 to 18  rightSide
//   19 to 23  rightSide2
//   24        scopeSide's loop id, and scopeText
//   25        errorOrder: 'L' left first, 'R' right first, anything else none
//   26 to 29  errorCodeText, txnCodeText, segCodeText, messageText
//   30 to 32  ruleArgument30, ruleArgument31, ruleArgument32
#pragma once

#include <cstddef>

class Contents;
class ErrorInfos;
class Rules;
class SegLists;

/// The root's lists that every rule works on.
struct SharedLists {
    SegLists* segLists;  // null for a grammar of kind 1
    ErrorInfos* errorInfos;
    Contents* contents;
};

/// Adds an object to `rules` for each record of `text`, and changes the text: '$', '|' and '*' that end a record, a
/// field or an entry of a list become NULs. The objects point into it. Throws szFailure where there is no memory, or
/// where there is a record and no list of located lines.
void readRules(char* text, std::size_t length, SharedLists lists, Rules& rules);
