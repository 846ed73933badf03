// Stand-ins for the library that misbehave: one without a single export, one that is out of memory, and one that
// answers with a report that is none.
#include <cstdlib>
#include <cstring>

#include "ediexit.h"

namespace {

[[maybe_unused]] void reply(tagExitParamStruct* param, const char* text) {
    param->outputLength = std::strlen(text);
    param->outputText = static_cast<char*>(std::malloc(param->outputLength + 1));
    std::memcpy(param->outputText, text, param->outputLength + 1);
    param->returnCode = 0;
}

}  // namespace

#if defined(FAKE_OUTOFMEMORY) || defined(FAKE_BADREPORT)

void voptMemFree(void* pointer) {
    std::free(pointer);
}
void DestroyStruct(tagExitParamStruct* param) {
    param->returnCode = 0;
}

#ifdef FAKE_OUTOFMEMORY
void CreateStruct(tagExitParamStruct* param) {
    reply(param, "-99");
}
#else
void CreateStruct(tagExitParamStruct* param) {
    reply(param, "01001");
}
void SetDelimiters(tagExitParamStruct* param) {
    param->returnCode = 0;
}
void ValidateStruct(tagExitParamStruct* param) {
    reply(param, "no report at all");
}
#endif

#endif
