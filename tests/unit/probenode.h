// ProbeNode: a node that takes nothing, and remembers what it was offered. It also tells of its own end.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "grammar/validators.h"

class ProbeNode : public Validator {
public:
    struct Call {
        DataSegment* data;
        char const* segment;
        char const* identifier;
        char const* loopContext;
        int kind;
        IdentifierBuffer* identifiers;
        int matchedOnEntry;  // of the parent
        ValidationContext* parent;
    };
    std::vector<Call> calls;
    std::vector<std::string> contexts;  // the loopContext of each call, which need not outlive it; "null" for none

    ProbeNode() = default;
    ProbeNode(std::vector<std::string>& endings, std::string endingName) : log(&endings), name(std::move(endingName)) {}
    ~ProbeNode() override {
        if (log) log->push_back(name);
    }

    void validateStructure(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                           int kind, IdentifierBuffer* identifiers) override {
        int const matched = context ? context->matched : 0;
        calls.push_back({data, segment, identifier, loopContext, kind, identifiers, matched, context});
        contexts.emplace_back(loopContext ? loopContext : "null");
    }

private:
    std::vector<std::string>* log = nullptr;
    std::string name;
};
