// Code extraction: values taken out of a message as content records, with the key and the date that go with them.
#pragma once

#include "rules/catalogue/ruletools.h"

/// The key or the date of a value: the first element of a side that is found from the value's line on. A text that was
/// found once stays in force where a later search comes up empty, through all lines and scopes.
class CompanionText {
public:
    CompanionText(Rule& owner, SideOfRule& readSide, char const* literalText)
        : rule(owner), side(readSide), literal(literalText) {}

    /// The text for a value on `line` of a scope that ends at `end`: the element at `positionIndex` of the side's list,
    /// or its first sub-element; the literal where the side has no elements, and "_NONE_" where there is no text. A
    /// sub-element sets the rule's lastSubElementNumber. Throws szFailure where there is no memory.
    char const* read(int line, int end, int positionIndex);

private:
    Rule& rule;
    SideOfRule& side;
    char const* literal;
    char* found = nullptr;
    SubElements parts;
};

/// The base of the rules that extract codes.
class CodeExtraction : public Rule {
protected:
    /// How many sub-elements of a list are taken.
    static constexpr int cellsAtMost = 16;

    CompanionText key{*this, rightSide, "KeyVal"};
    CompanionText date{*this, rightSide2, "DateVal"};

    /// The sub-element number of a record, at the moment of the record: a key or a date that was read by sub-element
    /// shows its own number in the record of the value.
    int recordSubElement() const { return reportSubElementNumber != 0 ? lastSubElementNumber : 0; }
};

/// Whether a sub-element is the head of its element: the text before the first ':', or all of it. The character is the
/// literal colon, whatever the message's own delimiter is.
bool equalsHead(char const* subElement, char const* element);

/// Rule70: every element that the left side names, on every left line, is a code value. It judges nothing.
///   reads    leftSide: all element and sub-element positions; leftSide2: a second text on the same line; rightSide:
///            the key; rightSide2: the date; ruleArgument30 to 32
///   silent   for an element that the line does not have
///   leaves   a content record for each value; for each piece of a list joined by '^'; for the chosen sub-elements of a
///            composite and the second text, joined without a separator
class Rule70 : public CodeExtraction {
public:
    int ValidateRule() override;

private:
    SubElements parts;
    SubElements secondParts;
    SubElements listPieces;
    JoinedText joined;
    bool isJoining = false;  // there is a joined text, if only an empty one
    char* firstCell = nullptr;
    char* secondCell = nullptr;
    char* secondText = nullptr;

    int ProcessLeftSideAsOuter();
    void extract(int line, int end, int index);
    bool readCells(char* element);
    void readSecondText(int line);
    void takeCell(int line, char* cell, char const* keyText, char const* dateText);
    void addContent(int line, int element, int subElement, char const* value, char const* keyText,
                    char const* dateText);
};
