// Fuzz target: edicheck's reader of interchange files, and the streams that it makes of them.
#include <string_view>

#include "interchange.h"
#include "stream.h"

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, unsigned long size) {
    auto const file = edicheck::readInterchanges(std::string_view(reinterpret_cast<char const*>(data), size));
    edicheck::IdentifierElements const identifiers("");
    for (auto const& transaction : file.transactions) {
        edicheck::deliverTransaction(transaction, 1, identifiers);
        edicheck::deliverTransaction(transaction, 2, identifiers);
    }
    return 0;
}
