// The rules that judge nothing.
#include "rules/catalogue/inert.h"

#include "rules/catalogue/ruletools.h"

// A loop that stands nowhere gives one pass over the whole list.
int Rule99::ValidateRule() {
    ExplicitScopes scope(*this);
    scope.next();
    do
        readLines(scope.begin, scope.end);
    while (scope.next());
    return 1;
}

void Rule99::readLines(int begin, int end) {
    SideOfRule side = outerSide == rightIsOuter ? rightSide : leftSide;
    int line = firstLine(side, begin, end);
    for (int passes = 0; line != noLine && passes < walkCap; ++passes) {
        valueOf(side, line);
        side.firstValue();
        line = lineBehind(side, line, end);
    }
}
