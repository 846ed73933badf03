// A host in miniature.
#include "exits.h"

#include <cstdlib>
#include <cstring>
#include <memory>

std::string fuzz::call(void (*exit)(tagExitParamStruct*), std::string const& input) {
    auto const buffer = std::make_unique<char[]>(input.size() + 1);
    std::memcpy(buffer.get(), input.data(), input.size());
    tagExitParamStruct param = {};
    param.inputText = buffer.get();
    param.inputLength = input.size();
    exit(&param);
    if (param.returnCode != 0 && param.returnCode != -1) std::abort();
    if (!param.outputText) return {};
    std::string reply(param.outputText, param.outputLength);
    voptMemFree(param.outputText);
    return reply;
}
