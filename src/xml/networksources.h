// NetworkSources: how the parser comes by what a document names by a network address.
//
// The parser's own source loses what it has opened where an address has a character beyond Latin-1, in which it hands
// addresses on. This one looks before anything is opened. Whatever the address, the document's findings are the same.
#pragma once

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>

class NetworkSources : public xercesc::XMLEntityResolver {
public:
    explicit NetworkSources(xercesc::MemoryManager& documentMemory) : memory(documentMemory) {}

    /// A source, which the parser owns, for an address in the network. Null for anything else: the parser then makes its
    /// own.
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;

private:
    xercesc::MemoryManager& memory;
};
