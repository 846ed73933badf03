// Qualified codes: a code that stands beside its qualifier.
#pragma once

#include "rules/catalogue/codeextraction.h"

/// Rule71: a left element is a qualifier; where the left values ask for it, the element of leftSide2 at the same index
/// of its list, on the same line, is a code. It judges nothing.
///   reads    leftSide: all element positions, first sub-element position, values; leftSide2: all positions, of the
///            left line; rightSide: the key; rightSide2: the date; ruleArgument30 to 32
///   silent   without a first left value; for a qualifier that the values do not ask for; for a code that is not there
///   leaves   a content record for each code, and for each chosen sub-element of a code
///
/// What the values ask for:
///   a qualifier that equals one of them: the code, with key and date
///   a qualifier that is not there, with "ABSENT()" as first value: the code, with the literal key and date
///   a qualifier that equals none, with a first value shaped as "NOT(": the same. What stands in the parentheses is not
///   compared with anything
class Rule71 : public CodeExtraction {
public:
    int ValidateRule() override;

private:
    SubElements qualifierParts;
    SubElements codeParts;

    int ProcessLeftSideAsOuter();
    void extract(int line, int end, int index);
    char* readQualifier(int line, int index);
    void addMatched(int line, int end, int index, char const* qualifier);
    void readCells(char* code, char** cells);
    void addUnmatched(int line, int index, char const* qualifier);
    void addContent(int line, int element, int subElement, char const* code, char const* qualifier, char const* keyText,
                    char const* dateText);
};
