// ParseXMLHandlers: collects the messages of the XML parser.
#include "xml/parsexmlhandler.h"

#include <cstdio>
#include <cstring>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "common/exitparam.h"
#include "xml/localtext.h"

namespace {

constexpr std::size_t growthUnit = 1024;

/// The reply copies the terminator of the text and one byte behind it.
constexpr std::size_t zerosBehindText = 2;

}  // namespace

ParseXMLHandlers::ParseXMLHandlers() {
    growErrorString();
}

ParseXMLHandlers::~ParseXMLHandlers() {
    std::free(errorString);
}

void ParseXMLHandlers::error(xercesc::SAXParseException const& exception) {
    if (reportErrors) FormatString(exception, "Error");
}

void ParseXMLHandlers::fatalError(xercesc::SAXParseException const& exception) {
    if (reportFatalErrors) FormatString(exception, "Fatal Error");
}

void ParseXMLHandlers::warning(xercesc::SAXParseException const& exception) {
    if (reportWarnings) FormatString(exception, "Warning");
}

void ParseXMLHandlers::resetErrors() {}

char* ParseXMLHandlers::takeErrorString() {
    char* taken = errorString;
    errorString = writePosition = nullptr;
    errorStringSize = spaceLeft = 0;
    return taken;
}

// The step grows with the buffer, so that a document with a million findings takes no longer a message than one with
// ten.
void ParseXMLHandlers::growErrorString() {
    std::size_t const added = growthUnit * (1 + errorStringSize / growthUnit / 2);
    std::size_t const written = errorStringSize - spaceLeft;
    errorString = static_cast<char*>(reallocOrThrow(errorString, errorStringSize + added));
    std::memset(errorString + errorStringSize, 0, added);
    writePosition = errorString + written;
    errorStringSize += added;
    spaceLeft += added;
}

void ParseXMLHandlers::FormatString(xercesc::SAXParseException const& exception, char const* level) {
    LocalText const message(exception.getMessage());
    auto const print = [&](char* target, std::size_t room) {
        int const length =
            std::snprintf(target, room, "%s. %s found on line %ld, column %ld.$", level, message.get(),
                          static_cast<long>(exception.getLineNumber()), static_cast<long>(exception.getColumnNumber()));
        return static_cast<std::size_t>(length);
    };
    std::size_t const length = print(nullptr, 0);
    while (length + zerosBehindText > spaceLeft)
        growErrorString();
    print(writePosition, spaceLeft);
    writePosition += length;
    spaceLeft -= length;
}
