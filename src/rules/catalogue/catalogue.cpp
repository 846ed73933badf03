// The one table that registers the rule classes. What a rule demands stands above its class, in the header of its family.
#include "rules/catalogue/catalogue.h"

#include <algorithm>
#include <iterator>

#include "rules/catalogue/codeextraction.h"
#include "rules/catalogue/inert.h"
#include "rules/catalogue/requiredpresence.h"

namespace {

template <class RuleClass>
std::unique_ptr<Rule> make(SegLists const&) {
    return std::make_unique<RuleClass>();
}

struct Entry {
    long number;
    std::unique_ptr<Rule> (*make)(SegLists const& lines);
};

// Ascending, a line a class.
constexpr Entry table[] = {
    {3, make<Rule3>},    // required presence
    {5, make<Rule5>},    // required presence
    {6, make<Rule6>},    // required presence
    {9, make<Rule9>},    // required presence
    {11, make<Rule11>},  // required presence
    {12, make<Rule12>},  // required presence
    {32, make<Rule32>},  // inert
    {33, make<Rule33>},  // inert
    {34, make<Rule34>},  // inert
    {35, make<Rule35>},  // inert
    {36, make<Rule36>},  // inert
    {58, make<Rule58>},  // inert
    {59, make<Rule59>},  // inert
    {70, make<Rule70>},  // code extraction
};

}  // namespace

std::unique_ptr<Rule> makeRule(long number, SegLists const& lines) {
    Entry const* end = std::end(table);
    Entry const* entry = std::lower_bound(
        std::begin(table), end, number, [](Entry const& candidate, long wanted) { return candidate.number < wanted; });
    return entry != end && entry->number == number ? entry->make(lines) : make<Rule99>(lines);
}
