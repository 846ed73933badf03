/*
 * The call record is filled with patterns before each call, so that every byte that the library must leave alone shows
 * whether it did.
 */
#include "host.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>
#include <vector>

namespace cases {
namespace {

using Exit = void (*)(tagExitParamStruct*);
using Free = void (*)(void*);

constexpr int hostPattern = 0xA5;
constexpr uint64_t presetLength = 0x5EED5EED5EED5EED;
char presetText[] = "the host's own text";

tagExitParamStruct presetRecord(char* input, uint64_t inputLength) {
    tagExitParamStruct record;
    std::memset(&record, hostPattern, sizeof record);
    record.inputText = input;
    record.inputLength = inputLength;
    record.outputText = presetText;
    record.outputLength = presetLength;
    record.returnCode = Host::presetReturnCode;
    return record;
}

/* The record with its three output fields put back: whatever differs from the preset record then was not the library's
 * to change. */
bool changedBeyondOutput(tagExitParamStruct record, const tagExitParamStruct& preset) {
    record.outputText = preset.outputText;
    record.outputLength = preset.outputLength;
    record.returnCode = preset.returnCode;
    return std::memcmp(&record, &preset, sizeof record) != 0;
}

std::string describeBreach(const tagExitParamStruct& record, const tagExitParamStruct& preset) {
    const bool textUntouched = record.outputText == presetText;
    const bool lengthUntouched = record.outputLength == presetLength;
    if (changedBeyondOutput(record, preset)) return "the call changed a field of the record that is the host's";
    if (textUntouched != lengthUntouched) return "the call wrote only one of outputText and outputLength";
    if (record.outputText == nullptr && record.outputLength != 0) return "the reply is null, but its length is not 0";
    return "";
}

}  // namespace

SymbolLookup openLibrary() {
    const char* fromEnvironment = std::getenv("EDIEXIT_LIBRARY");
    const char* path = fromEnvironment ? fromEnvironment : EDIEXIT_BUILT_LIBRARY;
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!library) throw std::runtime_error(dlerror());
    return [library](const std::string& name) { return dlsym(library, name.c_str()); };
}

Host::Host(SymbolLookup symbols) : find(std::move(symbols)) {}

bool Host::has(const std::string& exportName) const {
    return find(exportName) != nullptr;
}

Answer Host::call(const std::string& exportName, const std::string& input) const {
    return callWithLength(exportName, input, input.size());
}

Answer Host::callWithLength(const std::string& exportName, const std::string& input, uint64_t inputLength) const {
    const auto exit = reinterpret_cast<Exit>(find(exportName));
    const auto free = reinterpret_cast<Free>(find("voptMemFree"));
    if (!exit || !free) throw std::runtime_error("the library does not export " + exportName + " and voptMemFree");

    std::vector<char> buffer(input.c_str(), input.c_str() + input.size() + 1);
    const tagExitParamStruct preset = presetRecord(buffer.data(), inputLength);
    tagExitParamStruct record = preset;
    exit(&record);

    Answer answer;
    answer.returnCode = record.returnCode;
    answer.input.assign(buffer.begin(), buffer.end());
    answer.breach = describeBreach(record, preset);
    if (record.outputText == presetText) {
        answer.output = Answer::Output::untouched;
    } else if (record.outputText == nullptr) {
        answer.output = Answer::Output::none;
    } else {
        answer.output = Answer::Output::reply;
        if (answer.breach.empty()) answer.reply.assign(record.outputText, record.outputLength);
        free(record.outputText);
    }
    return answer;
}

}  // namespace cases
