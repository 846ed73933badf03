// Cross-line comparison: the text of one line against the text of another.
#pragma once

#include "rules/catalogue/ruletools.h"

/// Rule24: no run of the right loop may repeat the left pair of lines.
///   reads    leftSide, leftSide2: the pair of the scope; rightSide, rightSide2: the pair of each run of rightSide's
///            loop; scopeText. All elements behind the segment id are compared
///   silent   for a scope without a left line; for lines with different numbers of elements; without a right loop
///   reports  (right line, left line) for the pairs or the first lines; (right2 line, left2 line) for the second lines
class Rule24 : public Rule {
public:
    int ValidateRule() override;

private:
    /// The line of a side in a scope, and its number of elements, the segment id included; -1 where there is no line.
    struct CountedLine {
        int line;
        int count;
    };

    int result = 1;

    CountedLine countedLine(SideOfRule& side, int begin, int end);
    void checkScope(int begin, int end);
    void compareWithRun(CountedLine left, CountedLine left2, int run, int runEnd);
    bool haveSameElements(CountedLine left, CountedLine right);
    void fault(int rightLine, int leftLine);
};

/// Rule25: a left and a right line of a scope may not agree in all compared elements; in mode "B", where no scope so
/// far has a left line, each leftSide2 line and right line must.
///   reads    leftSide, rightSide: first element and first value as filters; leftSide2, rightSide2: the positions that
///            are compared, as many as rightSide2 has; scopeText as the mode
///   silent   for lines that a filter stops; in mode "B" from the first left line on
///   reports  (right line, left line) with the segment ids crosswise as values; (right line, none) in mode "B"
class Rule25 : public Rule {
public:
    int ValidateRule() override;

private:
    bool leftSeen = false;
    bool scopeHandled = false;  // goes on from scope to scope

    void checkScope(bool mustAgree, int begin, int end);
    void forbidAgreement(int line, int begin, int end);
    void demandAgreement(int begin, int end);
    bool haveSameElements(int line, int rightLine);
    void fault(int rightLine, int leftLine);
};

/// Rule26: a left text may not equal the right texts joined by blanks.
///   reads    leftSide, rightSide: first element, first value as filters; rightSide2: the positions that are joined
///   silent   for lines that a filter stops
///   reports  (right line, left line) with the segment ids crosswise as values
class Rule26 : public Rule {
public:
    int ValidateRule() override;

private:
    JoinedText joined;

    void checkScope(int begin, int end);
    void compareWithRightLines(int line, int begin, int end);
    void join(int rightLine);
};

/// Rule42: the first left line of a scope and its right lines carry the same text.
///   reads    leftSide, rightSide: first element; "TRIMRIGHT()" as first value removes trailing blanks; outerSide
///   silent   unless the left side is the outer one; for absent and empty texts
///   reports  (right line, left line)
class Rule42 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkScope(int begin, int end);
};

/// Rule48: no later line of the second side may repeat the text of the first line of the first side.
///   reads    leftSide and rightSide, exchanged where the right side is the outer one: first element; "NOT(U)" as first
///            value exempts the text "U"; scopeText
///   silent   for a scope without a text on its first line
///   reports  (first line, repeating line)
class Rule48 : public Rule {
public:
    int ValidateRule() override;

private:
    int result = 1;

    void checkScope(SideOfRule& first, SideOfRule& second, ExplicitScopes const& scope);
    void findRepeats(char* text, int firstLineOfScope, SideOfRule& second, int end);
};

/// Rule49: the texts of a scope begin with different characters.
///   reads    rightSide where it is the outer side, else leftSide: first element; "NOT(U)" as first value ends a scope
///            at the text "U"; scopeText
///   silent   for lines without text
///   reports  (first line with the character, line)
class Rule49 : public Rule {
public:
    int ValidateRule() override;

private:
    void checkScope(SideOfRule& side, ExplicitScopes const& scope);
};

/// Rule50: every left text of a scope stands on the first right line of one of its inner scopes.
///   reads    leftSide, rightSide: first element; ruleArgument3
///   silent   from a scope that begins at line 0 on; for the sixteenth left text of a scope and those behind it
///   reports  (right line of the last inner scope, left line)
class Rule50 : public Rule {
public:
    int ValidateRule() override;

private:
    static constexpr int entriesAtMost = 15;

    struct tableEntry {
        char text[81];
        int line;
        bool matched;
    };

    tableEntry table[entriesAtMost];
    int entryCount = 0;
    int lastRight = noLine;
    int result = 1;

    void collectLeftTexts(int begin, int end);
    void matchRightTexts(int begin, int end);
    void reportUnmatched();
};
