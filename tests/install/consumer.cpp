/*
 * consumer.cpp: a host in C++17, built against an installed ediexit. Exits with 0 when the library gives the right
 * answers to a clean and to a faulty message, and says otherwise what came.
 */
#include "exits.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace {

// Makes one call and takes over its reply.
std::string reply(void (*exit)(tagExitParamStruct*), std::string input) {
    tagExitParamStruct call{};
    call.inputText = input.data();
    call.inputLength = input.size();
    call.returnCode = -7;
    exit(&call);
    if (call.returnCode != 0) throw std::runtime_error("a call was refused: " + input);
    if (!call.outputText) return {};
    const std::string text(call.outputText, call.outputLength);
    voptMemFree(call.outputText);
    return text;
}

bool answers(const std::string& message, const std::string& expected) {
    const std::string handle = reply(CreateStruct, GRAMMAR);
    const std::string found = reply(ValidateStruct, handle + message);
    reply(DestroyStruct, handle);
    if (found != expected) std::cerr << message << "\n  expected [" << expected << "]\n  came     [" << found << "]\n";
    return found == expected;
}

}  // namespace

int main() try {
    if (!OPEN_EXITS()) throw std::runtime_error("libediexit.so.1 or one of its exports cannot be found");
    const bool clean = answers(CLEAN_MESSAGE, "");
    const bool faulty = answers(FAULTY_MESSAGE, FAULTY_REPLY);
    return clean && faulty ? 0 : 1;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 2;
}
