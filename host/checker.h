// A grammar in the hands of the library: what they say of a message. Each message is walked by an object of its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "grammar.h"
#include "library.h"
#include "report.h"
#include "stream.h"

namespace edicheck {

class Checker {
public:
    // `library` as dlopen takes it; `grammarPath` only serves messages. Throws Failure when the library cannot be
    // loaded, or refuses the grammar.
    Checker(const std::string& library, std::string grammarPath, Grammar grammar);

    const Grammar& grammar() const { return grammar_; }

    // Walks the message and returns the library's report.
    std::vector<Finding> validate(const Delivery& delivery) const;

    // Walks the message and returns the records that the library located, in its order.
    std::vector<LocatedRecord> locate(const Delivery& delivery) const;

    // Throws Failure when nothing can be located: under a grammar of kind 1, or when the library lacks the export.
    void requireLocating() const;

private:
    std::unique_ptr<Object> newObject() const;

    Library library_;
    std::string grammarPath_;
    Grammar grammar_;
};

}  // namespace edicheck
