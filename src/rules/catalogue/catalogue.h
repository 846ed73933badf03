// The catalogue: from the number of a rule record to the object of its class.
#pragma once

#include <memory>

#include "rules/rule.h"

/// An object of the class that `number` selects; every number without a class of its own gives a Rule99.
/// `lines` is the message that it will run over. Throws szFailure where there is no memory.
std::unique_ptr<Rule> makeRule(long number, SegLists const& lines);
