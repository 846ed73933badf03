// ParseXML: validates an XML document with the SAX2 parser of Xerces-C++.
#include "xml/parsexml.h"

#include <cstring>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "common/exitparam.h"
#include "xml/documentmemory.h"
#include "xml/localtext.h"
#include "xml/networksources.h"
#include "xml/parsexmlhandler.h"

using xercesc::XMLPlatformUtils;
using xercesc::XMLUni;

namespace {

/// How many general entities a document may expand. Each may stand for a text nearly as long as the document.
constexpr XMLSize_t entityExpansionLimit = 10'000;

/// How many names and operators a content model of a document type may have. The parser's time grows with their square.
constexpr std::size_t contentModelLimit = 4'000;

/// How many characters the values of an enumeration in a document type may have. Likewise.
constexpr XMLSize_t enumerationLimit = 20'000;

/// How many attributes a document type may declare for an element. Wherever it stands, it takes all that have a default
/// value.
constexpr XMLSize_t attributesLimit = 500;

/// What the parser turns to where it sees no way on. Its own handler ends the process.
class GiveUp : public xercesc::PanicHandler {
public:
    void panic(PanicReasons) override { throwFailure(); }
};

/// The parser counts its initialisations and stays initialised for the life of the process, so one does for all calls,
/// on whichever thread. One that fails leaves the parser in a state that it can't be brought out of: it is not used
/// then.
void initializeParser() {
    static bool const isUsable = [] {
        static GiveUp giveUp;
        try {
            XMLPlatformUtils::Initialize(XMLUni::fgXercescDefaultLocale, nullptr, &giveUp);
            return true;
        } catch (...) {
            return false;
        }
    }();
    if (!isUsable) throwFailure();
}

std::size_t nodesOf(xercesc::ContentSpecNode const* model) {
    std::size_t count = 0;
    std::vector<xercesc::ContentSpecNode const*> open{model};
    while (!open.empty()) {
        xercesc::ContentSpecNode const* node = open.back();
        open.pop_back();
        if (!node) continue;
        ++count;
        open.push_back(node->getFirst());
        open.push_back(node->getSecond());
    }
    return count;
}

/// The parser's reader, with a fence around what a document type may cost. Other documents cost as much as they are
/// long, and their schemas are the host's.
class Reader : public xercesc::SAX2XMLReaderImpl {
public:
    Reader(DocumentMemory& documentMemory, std::size_t length)
        : SAX2XMLReaderImpl(&documentMemory), memory(documentMemory), documentLength(length), sources(documentMemory) {
        setFeature(XMLUni::fgSAX2CoreValidation, true);
        setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
        setFeature(XMLUni::fgXercesSchema, true);
        setFeature(XMLUni::fgXercesSchemaFullChecking, true);
        setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, true);
        expansions.setEntityExpansionLimit(entityExpansionLimit);
        setProperty(XMLUni::fgXercesSecurityManager, &expansions);
        setDeclarationHandler(&unmoved);
        setXMLEntityResolver(&sources);
    }

    void doctypeDecl(xercesc::DTDElementDecl const& root, XMLCh const* publicId, XMLCh const* systemId,
                     bool hasInternalSubset, bool hasExternalSubset) override {
        memory.limit(documentLength);
        SAX2XMLReaderImpl::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
    }

    void startIntSubset() override { memory.beginDeclaration(); }
    void endIntSubset() override { memory.endDeclarations(); }
    void startExtSubset() override { memory.beginDeclaration(); }
    void endExtSubset() override { memory.endDeclarations(); }

    void elementDecl(xercesc::DTDElementDecl const& element, bool isIgnored) override {
        if (nodesOf(element.getContentSpec()) > contentModelLimit) memory.refuse();
        memory.beginDeclaration();
        SAX2XMLReaderImpl::elementDecl(element, isIgnored);
    }

    void attDef(xercesc::DTDElementDecl const& element, xercesc::DTDAttDef const& attribute, bool isIgnored) override {
        if (xercesc::XMLString::stringLen(attribute.getEnumeration()) > enumerationLimit) memory.refuse();
        if (element.getAttDefList().getAttDefCount() > attributesLimit) memory.refuse();
        memory.beginDeclaration();
        SAX2XMLReaderImpl::attDef(element, attribute, isIgnored);
    }

    void entityDecl(xercesc::DTDEntityDecl const& entity, bool isParameter, bool isIgnored) override {
        memory.beginDeclaration();
        SAX2XMLReaderImpl::entityDecl(entity, isParameter, isIgnored);
    }

    void error(unsigned int code, XMLCh const* domain, ErrTypes type, XMLCh const* text, XMLCh const* systemId,
               XMLCh const* publicId, XMLFileLoc line, XMLFileLoc column) override {
        if (memory.hasRefused()) text = u"the document type asks for more work than its document may cause";
        SAX2XMLReaderImpl::error(code, domain, type, text, systemId, publicId, line, column);
    }

private:
    DocumentMemory& memory;
    std::size_t const documentLength;
    NetworkSources sources;
    xercesc::SecurityManager expansions;
    xercesc::DefaultHandler unmoved;  // without a handler for them, the reader is not told of declarations
};

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
        std::size_t const documentLength = std::strlen(xml);
        DocumentMemory memory;
        Reader reader(memory, documentLength);
        ParseXMLHandlers handler;
        handler.setReportFatalErrors(reportFatalErrors != 0);
        handler.setReportErrors(reportErrors != 0);
        handler.setReportWarnings(reportWarnings != 0);
        reader.setErrorHandler(&handler);
        xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(xml), documentLength, "bin");
        reader.parse(source);
        *length = handler.getErrorStringLength();
        *result = handler.takeErrorString();
        return 0;
    } catch (xercesc::XMLException const& exception) {
        *result = copyWithTwoZeros(LocalText(exception.getMessage()).get());
        return -1;
    }
}
