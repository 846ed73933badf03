// An allocator that lets chosen allocations of a call fail: malloc, calloc and realloc of the library's objects, and
// operator new of the whole program. It watches nothing outside a call.
//
// The program is linked with the option --wrap for the four C functions, see CMakeLists.txt. The watch is not for
// threads.
#pragma once

#include <cstddef>

namespace robustness {

// What an allocation was: memory by malloc, calloc or realloc, or an object by operator new.
enum class Kind { none, memory, object };

// Which allocations of a call fail, counted from 1; 0 for none.
struct Plan {
    std::size_t number = 0;
    bool isFirstToo = false;       // the first one fails as well
    bool areLaterOnesToo = false;  // all behind `number` fail as well
};

// What is held by the library now: what was taken in calls, less what was given back in calls.
struct Held {
    long memory;
    long objects;
};

Held held();

// The watch over one call, from its construction to its end.
class Watch {
public:
    explicit Watch(Plan plan);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

    // Allocations that were asked for so far.
    std::size_t allocations() const { return allocations_; }
    // What the first and the second failing allocation were.
    Kind firstFailed() const { return firstFailed_; }
    Kind secondFailed() const { return secondFailed_; }

    // Counts an allocation. Answers whether it fails.
    bool fails(Kind kind);

private:
    Plan plan_;
    std::size_t allocations_ = 0;
    Kind firstFailed_ = Kind::none;
    Kind secondFailed_ = Kind::none;
};

}  // namespace robustness
