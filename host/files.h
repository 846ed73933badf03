// Files as the commands take them, and what they say of one.
#pragma once

#include <string>

namespace edicheck {

// The bytes of a file. Throws Failure when it cannot be read, and when there are none; the failure does not name the file.
std::string readFile(const std::string& path);

// Says on standard error what there is to say of a file.
void tell(const std::string& path, const std::string& what);

}  // namespace edicheck
