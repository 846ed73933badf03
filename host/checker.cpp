// The calls that check one message.
#include "checker.h"

#include <utility>

#include "print.h"

namespace edicheck {

namespace {

std::string walk(Object& object, const Delivery& delivery) {
    if (!delivery.delimiters.empty()) object.setDelimiters(delivery.delimiters);
    return object.validateStruct(delivery.stream);
}

}  // namespace

Checker::Checker(const std::string& library, std::string grammarPath, Grammar grammar, std::string rules)
    : library_(library), grammarPath_(std::move(grammarPath)), grammar_(std::move(grammar)), rules_(std::move(rules)) {
    newObject();  // tells a refused grammar before any message is read
}

Verdict Checker::check(const Delivery& delivery) const {
    const auto object = newObject();
    Verdict verdict;
    verdict.findings = cutReport(walk(*object, delivery));
    if (rules_.empty()) return verdict;
    const std::string reply = object->runRules(rules_);
    if (holdsContents(reply)) {
        verdict.contents = cutContents(reply);
    } else {
        verdict.ruleFindings = cutReport(reply);
    }
    return verdict;
}

std::vector<LocatedRecord> Checker::locate(const Delivery& delivery) const {
    const Delivery withNumbers = numbered(delivery, grammar_);
    const auto object = newObject();
    walk(*object, withNumbers);
    return cutLoopText(object->loopText(), withNumbers);
}

void Checker::requireLocating() const {
    requireKind2("none can be shown in their loops");
    library_.require("GetLoopText");
}

void Checker::requireRules() const {
    requireKind2("there is nothing for rules to look at");
    library_.require("RunRules");
}

void Checker::requireKind2(const std::string& consequence) const {
    if (grammar_.kind() == 2) return;
    throw Failure(grammarPath_ + ": a grammar of kind 1 locates no segments, so " + consequence +
                  "; that needs a grammar of kind 2, whose text begins with another character than '1'");
}

std::unique_ptr<Object> Checker::newObject() const {
    try {
        return std::make_unique<Object>(library_, grammar_.text());
    } catch (const Refused& refused) {
        const auto& bad = grammar_.badRecord();
        if (!bad) throw Failure(grammarPath_ + ": the grammar is refused: " + refused.what());
        throw Failure(grammarPath_ + ": line " + std::to_string(bad->line) + ": the grammar is refused: record " +
                      std::to_string(bad->number) + " \"" + shown(bad->text) + "\" has " +
                      counted(bad->fields, "field") +
                      " and needs 4: requirement, minimum, maximum, name (an empty field does not count)");
    }
}

}  // namespace edicheck
