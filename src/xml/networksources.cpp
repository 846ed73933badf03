// NetworkSources: network addresses that a document names.
#include "xml/networksources.h"

#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLURL.hpp>

namespace {

class NetworkSource : public xercesc::URLInputSource {
public:
    using URLInputSource::URLInputSource;

    xercesc::BinInputStream* makeStream() const override {
        xercesc::TranscodeToStr const throwing(urlSrc().getURLText(), "ISO8859-1", getMemoryManager());
        return URLInputSource::makeStream();
    }
};

}  // namespace

xercesc::InputSource* NetworkSources::resolveEntity(xercesc::XMLResourceIdentifier* resource) {
    xercesc::XMLURL address(&memory);
    bool const isAddress = address.setURL(resource->getBaseURI(), resource->getSystemId(), address);
    if (!isAddress || address.isRelative() || address.getProtocol() == xercesc::XMLURL::File) return nullptr;
    return new (&memory) NetworkSource(address, &memory);
}
