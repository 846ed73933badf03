// What the process holds, for tests of what calls leave behind.
#pragma once

#include <unistd.h>

#include <fstream>

namespace cases {

// In bytes.
inline long residentSize() {
    std::ifstream file("/proc/self/statm");
    long size = 0;
    long resident = 0;
    file >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

}  // namespace cases
