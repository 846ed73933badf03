// Fuzz target: a grammar text, built, walked by an empty message and taken down.
#include "exits.h"

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, unsigned long size) {
    fuzz::Object const object(std::string(reinterpret_cast<char const*>(data), size));
    if (object.exists()) object.call(ValidateStruct);
    return 0;
}
