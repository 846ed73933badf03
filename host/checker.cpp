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

Checker::Checker(const std::string& library, std::string grammarPath, Grammar grammar)
    : library_(library), grammarPath_(std::move(grammarPath)), grammar_(std::move(grammar)) {
    newObject();  // tells a refused grammar before any message is read
}

std::vector<Finding> Checker::validate(const Delivery& delivery) const {
    return cutReport(walk(*newObject(), delivery));
}

std::vector<LocatedRecord> Checker::locate(const Delivery& delivery) const {
    const Delivery withNumbers = numbered(delivery, grammar_);
    const auto object = newObject();
    walk(*object, withNumbers);
    return cutLoopText(object->loopText(), withNumbers);
}

void Checker::requireLocating() const {
    if (grammar_.kind() != 2) {
        throw Failure(grammarPath_ +
                      ": a grammar of kind 1 locates no segments, so none can be shown in their loops; that needs a "
                      "grammar of kind 2, whose text begins with another character than '1'");
    }
    library_.require("GetLoopText");
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
