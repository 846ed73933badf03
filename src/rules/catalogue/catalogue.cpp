// The one table that registers the rule classes. What a rule demands stands above its class, in the header of its
// family.
#include "rules/catalogue/catalogue.h"

#include <algorithm>
#include <iterator>

#include "rules/catalogue/amountbalance.h"
#include "rules/catalogue/codeextraction.h"
#include "rules/catalogue/crosslinecomparison.h"
#include "rules/catalogue/forbiddenpresence.h"
#include "rules/catalogue/inert.h"
#include "rules/catalogue/numericsums.h"
#include "rules/catalogue/occurrencenumbering.h"
#include "rules/catalogue/qualifiedcodes.h"
#include "rules/catalogue/requiredpresence.h"
#include "rules/catalogue/series.h"
#include "rules/catalogue/singlevalue.h"
#include "rules/catalogue/situationalpresence.h"
#include "rules/catalogue/valuecomparison.h"

namespace {

template <class RuleClass>
std::unique_ptr<Rule> make(SegLists const&) {
    return std::make_unique<RuleClass>();
}

/// The sub-element list of this rule's right side is written with '+'.
std::unique_ptr<Rule> makeRule80(SegLists const&) {
    auto rule = std::make_unique<Rule80>();
    rule->rightSide.subElementText.delimiter[0] = '+';
    return rule;
}

/// The room that this rule's table starts with depends on the message.
std::unique_ptr<Rule> makeRule10(SegLists const& lines) {
    return std::make_unique<Rule10>(lines.count);
}

struct Entry {
    long number;
    std::unique_ptr<Rule> (*make)(SegLists const& lines);
};

// Ascending, a line a class.
constexpr Entry table[] = {
    {1, make<Rule1>},    // value comparison
    {2, make<Rule2>},    // forbidden presence
    {3, make<Rule3>},    // required presence
    {4, make<Rule4>},    // forbidden presence
    {5, make<Rule5>},    // required presence
    {6, make<Rule6>},    // required presence
    {7, make<Rule7>},    // series
    {8, make<Rule8>},    // numeric sums
    {9, make<Rule9>},    // required presence
    {10, makeRule10},    // series
    {11, make<Rule11>},  // required presence
    {12, make<Rule12>},  // required presence
    {13, make<Rule13>},  // value comparison
    {14, make<Rule14>},  // numeric sums
    {15, make<Rule15>},  // series
    {16, make<Rule16>},  // value comparison
    {17, make<Rule17>},  // numeric sums
    {18, make<Rule18>},  // numeric sums
    {19, make<Rule19>},  // value comparison
    {20, make<Rule20>},  // numeric sums
    {21, make<Rule21>},  // forbidden presence
    {22, make<Rule22>},  // series
    {24, make<Rule24>},  // cross-line comparison
    {25, make<Rule25>},  // cross-line comparison
    {26, make<Rule26>},  // cross-line comparison
    {27, make<Rule27>},  // single values
    {28, make<Rule28>},  // situational presence
    {29, make<Rule29>},  // situational presence
    {30, make<Rule30>},  // situational presence
    {31, make<Rule31>},  // amount balance
    {32, make<Rule32>},  // inert
    {33, make<Rule33>},  // inert
    {34, make<Rule34>},  // inert
    {35, make<Rule35>},  // inert
    {36, make<Rule36>},  // inert
    {37, make<Rule37>},  // amount balance
    {38, make<Rule38>},  // amount balance
    {39, make<Rule39>},  // amount balance
    {40, make<Rule40>},  // single values
    {41, make<Rule41>},  // single values
    {42, make<Rule42>},  // cross-line comparison
    {48, make<Rule48>},  // cross-line comparison
    {49, make<Rule49>},  // cross-line comparison
    {50, make<Rule50>},  // cross-line comparison
    {51, make<Rule51>},  // situational presence
    {52, make<Rule52>},  // situational presence
    {53, make<Rule53>},  // amount balance
    {58, make<Rule58>},  // inert
    {59, make<Rule59>},  // inert
    {60, make<Rule60>},  // single values
    {61, make<Rule61>},  // single values
    {70, make<Rule70>},  // code extraction
    {71, make<Rule71>},  // qualified codes
    {80, makeRule80},    // occurrence numbering
};

}  // namespace

std::unique_ptr<Rule> makeRule(long number, SegLists const& lines) {
    Entry const* end = std::end(table);
    Entry const* entry = std::lower_bound(
        std::begin(table), end, number, [](Entry const& candidate, long wanted) { return candidate.number < wanted; });
    return entry != end && entry->number == number ? entry->make(lines) : make<Rule99>(lines);
}
