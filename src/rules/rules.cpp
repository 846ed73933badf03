// Rules: the rule objects of one run.
#include "rules/rules.h"

Rules::Rules() : PointerArray(32, 16) {}

Rules::~Rules() {
    for (int index = 0; index < count; ++index)
        delete data[index];
}
