// Reading files, and speaking of them.
#include "files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "failure.h"

namespace edicheck {

std::string readFile(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) throw Failure("is a directory; name a file in it");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(std::string("cannot be opened: ") + std::strerror(errno));
    std::ostringstream text;
    text << file.rdbuf();
    if (file.bad()) throw Failure(std::string("cannot be read: ") + std::strerror(errno));
    std::string contents = text.str();
    if (contents.empty()) throw Failure("is empty");
    return contents;
}

void tell(const std::string& path, const std::string& what) {
    std::cout.flush();
    std::cerr << "edicheck: " << path << ": " << what << '\n';
}

}  // namespace edicheck
