// ParseXML: validates an XML document with the SAX2 parser of Xerces-C++.
#include "xml/parsexml.h"

#include <cstring>
#include <memory>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "common/exitparam.h"
#include "xml/localtext.h"
#include "xml/parsexmlhandler.h"

using xercesc::XMLPlatformUtils;
using xercesc::XMLUni;

namespace {

/// How many general entities a document may expand. Few documents expand any; one made to blow up expands billions.
constexpr XMLSize_t entityExpansionLimit = 1000;

/// The parser counts its initialisations and stays initialised for the life of the process, so one does for all calls,
/// on whichever thread.
void initializeParser() {
    static bool const initialized = [] {
        XMLPlatformUtils::Initialize(XMLUni::fgXercescDefaultLocale);
        return true;
    }();
    static_cast<void>(initialized);
}

std::unique_ptr<xercesc::SAX2XMLReaderImpl> makeReader(xercesc::SecurityManager& limits) {
    auto* manager = XMLPlatformUtils::fgMemoryManager;
    std::unique_ptr<xercesc::SAX2XMLReaderImpl> reader(new (manager) xercesc::SAX2XMLReaderImpl(manager));
    reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setFeature(XMLUni::fgXercesSchema, true);
    reader->setFeature(XMLUni::fgXercesSchemaFullChecking, true);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, true);
    limits.setEntityExpansionLimit(entityExpansionLimit);
    reader->setProperty(XMLUni::fgXercesSecurityManager, &limits);
    return reader;
}

char* copyWithTwoZeros(char const* text) {
    std::size_t const length = std::strlen(text);
    auto* copy = static_cast<char*>(mallocOrThrow(length + 2));
    std::memcpy(copy, text, length);
    copy[length] = copy[length + 1] = '\0';
    return copy;
}

}  // namespace

int ParseXML(char* xml, char** result, int reportFatalErrors, int reportErrors, int reportWarnings,
             unsigned long* length) {
    initializeParser();
    try {
        xercesc::SecurityManager limits;
        auto reader = makeReader(limits);
        ParseXMLHandlers handler;
        handler.setReportFatalErrors(reportFatalErrors != 0);
        handler.setReportErrors(reportErrors != 0);
        handler.setReportWarnings(reportWarnings != 0);
        reader->setErrorHandler(&handler);
        xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(xml), std::strlen(xml), "bin");
        reader->parse(source);
        *length = handler.getErrorStringLength();
        *result = handler.takeErrorString();
        return 0;
    } catch (xercesc::XMLException const& exception) {
        *result = copyWithTwoZeros(LocalText(exception.getMessage()).get());
        return -1;
    }
}
