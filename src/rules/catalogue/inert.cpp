// The rules that judge nothing.
#include "rules/catalogue/inert.h"

#include "rules/catalogue/ruletools.h"

int Rule99::ValidateRule() {
    for (ExplicitScopes scope(*this); scope.next();) {
        SideOfRule side = outerSide == rightIsOuter ? rightSide : leftSide;
        int line = firstLine(side, scope.begin, scope.end);
        for (int passes = 0; line != noLine && passes < walkCap; ++passes) {
            valueOf(side, line);
            side.firstValue();
            line = lineBehind(side, line, scope.end);
        }
    }
    return 1;
}
