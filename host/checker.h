// A grammar, and rules, in the hands of the library: what they say of a message. Each message is walked by an object of
// its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "grammar.h"
#include "library.h"
#include "reply.h"
#include "stream.h"

namespace edicheck {

// What the library says of one message.
struct Verdict {
    std::vector<Finding> findings;
    std::vector<Finding> ruleFindings;
    std::vector<Content> contents;  // only where no rule found anything

    bool hasRuleResults() const { return !ruleFindings.empty() || !contents.empty(); }
};

class Checker {
public:
    // `library` as dlopen takes it; `grammarPath` only serves messages; without `rules` none are run. Throws Failure
    // when the library cannot be loaded, or refuses the grammar.
    Checker(const std::string& library, std::string grammarPath, Grammar grammar, std::string rules);

    const Grammar& grammar() const { return grammar_; }

    // Walks the message, and runs the rules over what the walk located.
    Verdict check(const Delivery& delivery) const;

    // Walks the message and returns the records that the library located, in its order.
    std::vector<LocatedRecord> locate(const Delivery& delivery) const;

    // Throw Failure when nothing can be located: under a grammar of kind 1, or when the library lacks the export.
    void requireLocating() const;
    void requireRules() const;

private:
    std::unique_ptr<Object> newObject() const;
    void requireKind2(const std::string& consequence) const;

    Library library_;
    std::string grammarPath_;
    Grammar grammar_;
    std::string rules_;
};

}  // namespace edicheck
