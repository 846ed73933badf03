// The library's reply to an XML document, cut into findings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace edicheck {

struct XmlFinding {
    std::string level;    // "fatal error", "error" or "warning"
    std::string message;  // the parser's words
    std::string line;     // 0 where there is no place, as for a file that could not be opened
    std::string column;
};

// Takes any reply. Throws Failure when it is not made of findings, as where the parser gave up.
std::vector<XmlFinding> cutXmlReply(std::string_view reply);

}  // namespace edicheck
