// ParseXMLHandlers: collects the messages of the XML parser as text.
//
// A message has the form "LEVEL. MESSAGE found on line N, column N.$", with the levels "Fatal Error", "Error" and
// "Warning". Messages stand one behind the other.
#pragma once

#include <cstddef>
#include <xercesc/sax2/DefaultHandler.hpp>

class ParseXMLHandlers : public xercesc::DefaultHandler {
public:
    /// Throws szFailure where there is no memory, as do the operations that write.
    ParseXMLHandlers();
    /// Releases the text, unless it has been taken.
    ~ParseXMLHandlers() override;
    ParseXMLHandlers(ParseXMLHandlers const&) = delete;
    ParseXMLHandlers& operator=(ParseXMLHandlers const&) = delete;

    void setReportFatalErrors(bool report) { reportFatalErrors = report; }
    void setReportErrors(bool report) { reportErrors = report; }
    void setReportWarnings(bool report) { reportWarnings = report; }

    void error(xercesc::SAXParseException const& exception) override;
    void fatalError(xercesc::SAXParseException const& exception) override;
    void warning(xercesc::SAXParseException const& exception) override;
    /// Does nothing: messages are never discarded.
    void resetErrors() override;

    /// The text, with at least two NULs behind it.
    char* getErrorString() { return errorString; }
    /// The size of the buffer, not the length of the text.
    std::size_t getErrorStringLength() const { return errorStringSize; }
    /// Gives the text up: it belongs to the caller, who releases it with free.
    char* takeErrorString();

    void growErrorString();
    void FormatString(xercesc::SAXParseException const& exception, char const* level);

private:
    std::size_t errorStringSize = 0;  // bytes of the buffer, a multiple of 1024
    char* errorString = nullptr;      // owned, from malloc; zeros behind what has been written
    char* writePosition = nullptr;    // where the next message goes
    std::size_t spaceLeft = 0;        // bytes free behind `writePosition`
    bool reportFatalErrors = false;
    bool reportErrors = false;
    bool reportWarnings = false;
};
