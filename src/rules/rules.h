// Rules: the rule objects of one RunRules call, in the order of their records.
#pragma once

#include "common/pointerarray.h"
#include "rules/rule.h"

class Rules : public PointerArray<Rule> {
public:
    /// Throws szFailure where there is no memory.
    Rules();
    /// Deletes the rules.
    virtual ~Rules();
};
