// Fuzz target: the whole road. Grammar, delimiters, stream and rule records, and each export in an order that hosts
// use.
#include "exits.h"
#include "parts.h"

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, unsigned long size) {
    auto const parts = fuzz::partsOf(data, size, 4);
    fuzz::Object const object(parts[0]);
    if (!object.exists()) return 0;
    object.call(SetDelimiters, parts[1]);
    object.call(ValidateStruct, parts[2]);
    object.call(DestroyGrammar);
    object.call(RunRules, parts[3]);
    object.call(GetLoopText);
    object.call(RunRules, parts[3]);
    return 0;
}
