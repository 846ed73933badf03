// Fuzz target: ValidateXML, option and document.
#include "exits.h"

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, unsigned long size) {
    static fuzz::Object const object("2");
    object.call(ValidateXML, std::string(reinterpret_cast<char const*>(data), size));
    return 0;
}
