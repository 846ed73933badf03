// Occurrence numbering: lines that are counted, and values that are passed on as they stand.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule80: numbers the left lines, and for each of them the leftSide2 lines and the values of rightSide in the scope.
/// It judges nothing.
///   reads    leftSide, leftSide2: loop, segment, first element, values; rightSide: first element, sub-element
///            positions, whose list is written with '+'; ruleArgument30 to 32
///   silent   for left lines without a first left value, with all that belongs to them; the value "INDEX" counts and is
///            not shown
///   leaves   a content record for each number and each value, without error code, qualifier, key and date
///
/// The left lines are not confined to the scope: the first scope takes them all.
class Rule80 : public Rule {
public:
    int ValidateRule() override;

private:
    JoinedText joined;
    SubElements parts;

    void serveLeftLine(int line, int count, int begin, int end);
    void numberLeft2Lines(int begin, int end);
    void copyRightValues(int begin, int end);
    char const* rightValueOf(int line);
    void addNumber(SideOfRule const& side, int line, int number);
    void addContent(SideOfRule const& side, int line, char const* value);
};
