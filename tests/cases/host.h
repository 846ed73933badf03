/*
 * A host in miniature, for tests: it loads the built library as a host does, makes one call with one call record, and
 * watches over what the library may touch in that record.
 */
#pragma once

#include <ediexit.h>

#include <cstdint>
#include <functional>
#include <string>

namespace cases {

/* Finds an exported symbol by its name; null if there is none. */
using SymbolLookup = std::function<void*(const std::string&)>;

/* Loads the library that EDIEXIT_LIBRARY names in the environment, or else the one of this build. It stays loaded until
 * the program ends, so that a leak found at the end still has names. Throws std::runtime_error if it can't be loaded.
 */
SymbolLookup openLibrary();

/* What a call left behind. */
struct Answer {
    enum class Output {
        untouched,  // both output fields hold what the host had put there
        none,       // no reply: a null text of length 0
        reply,      // a text, which may be of length 0
    };

    int32_t returnCode = 0;
    Output output = Output::untouched;
    std::string reply;   // the bytes of the reply
    std::string input;   // the host's input buffer after the call, the byte behind its end included
    std::string breach;  // what the library did that it must never do; empty if all is well
};

class Host {
public:
    /* What stands in `returnCode` before each call. */
    static constexpr int32_t presetReturnCode = 7777;

    explicit Host(SymbolLookup symbols);

    bool has(const std::string& exportName) const;

    /* Calls an export with a copy of the input, which has one NUL behind it and not a byte more. The reply is given
     * back. */
    Answer call(const std::string& exportName, const std::string& input) const;

    /* The same with a length of the caller's own, for a call that must not get as far as reading the input. */
    Answer callWithLength(const std::string& exportName, const std::string& input, uint64_t inputLength) const;

private:
    SymbolLookup find;
};

}  // namespace cases
