// LocalText: a text of the parser's in the local code page, for as long as it is looked at.
#pragma once

#include <xercesc/util/XMLString.hpp>

class LocalText {
public:
    explicit LocalText(XMLCh const* text) : transcoded(xercesc::XMLString::transcode(text)) {}
    LocalText(LocalText const&) = delete;
    LocalText& operator=(LocalText const&) = delete;
    ~LocalText() { xercesc::XMLString::release(&transcoded); }

    char const* get() const { return transcoded ? transcoded : ""; }

private:
    char* transcoded;  // owned, released through the parser
};
