// The command xml: from documents to printed findings.
#include <filesystem>
#include <iostream>

#include "commands.h"
#include "failure.h"
#include "files.h"
#include "library.h"
#include "print.h"
#include "text.h"
#include "xmlreply.h"

namespace edicheck {

namespace {

// An object serves as the place of the result, so the least of grammars does.
constexpr const char* kLeastGrammar = "2";
constexpr const char* kAllLevels = "000";
constexpr const char* kWithoutErrors = "101";

// While it lives, the process works in the folder of a file, from which the paths count that the file names.
class InFolderOf {
public:
    explicit InFolderOf(const std::string& path) : before_(std::filesystem::current_path()) {
        const auto folder = std::filesystem::path(path).parent_path();
        if (!folder.empty()) std::filesystem::current_path(folder);
    }
    InFolderOf(const InFolderOf&) = delete;
    InFolderOf& operator=(const InFolderOf&) = delete;
    ~InFolderOf() {
        std::error_code ignored;  // where the folder is gone, the next file is looked for in vain, and that is told
        std::filesystem::current_path(before_, ignored);
    }

private:
    std::filesystem::path before_;
};

std::string readDocument(const std::string& path) {
    std::string document = readFile(path);
    const std::size_t end = document.find('\0');
    if (end != document.npos) {
        throw Failure("line " + std::to_string(lineAt(document, end, 0, 1)) +
                      " holds a NUL, at which the library takes a document to end; "
                      "one in UTF-16 or UTF-32 is to be "
                      "converted to UTF-8, its declaration included");
    }
    return document;
}

void print(const std::string& path, const XmlFinding& finding) {
    std::cout << path;
    if (finding.line != "0") std::cout << ':' << finding.line << ':' << finding.column;
    std::cout << ": " << finding.level << ": " << shown(finding.message) << '\n';
}

}  // namespace

ExitCode xml(const Options& options) {
    const Library library(options.library);
    library.require("ValidateXML");
    Object object(library, kLeastGrammar);
    std::size_t findings = 0;
    std::size_t failedFiles = 0;
    for (const std::string& path : options.files) {
        try {
            const std::string document = readDocument(path);
            const InFolderOf folder(path);
            const auto found =
                cutXmlReply(object.validateXml(options.wellFormed ? kWithoutErrors : kAllLevels, document));
            for (const XmlFinding& finding : found)
                print(path, finding);
            findings += found.size();
        } catch (const std::exception& error) {  // from the file system, too
            tell(path, error.what());
            ++failedFiles;
        }
    }
    std::cout << '\n' << counted(options.files.size(), "file") << ", " << counted(findings, "finding");
    if (failedFiles > 0) std::cout << ", " << counted(failedFiles, "file") << " not checked";
    std::cout << '\n';
    if (failedFiles > 0) return kFailed;
    return findings > 0 ? kFindings : kClean;
}

}  // namespace edicheck
