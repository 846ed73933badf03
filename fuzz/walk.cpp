// Fuzz target: grammar, delimiters and stream, of either kind.
#include "exits.h"
#include "parts.h"

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, unsigned long size) {
    auto const parts = fuzz::partsOf(data, size, 3);
    fuzz::Object const object(parts[0]);
    if (!object.exists()) return 0;
    object.call(SetDelimiters, parts[1]);
    object.call(ValidateStruct, parts[2]);
    object.call(GetLoopText);
    return 0;
}
