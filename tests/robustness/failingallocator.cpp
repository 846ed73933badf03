#include "failingallocator.h"

#include <cstdlib>
#include <new>

// The linker's names: a call of malloc in the objects of this program arrives at __wrap_malloc.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t number, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void __real_free(void* memory);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t number, std::size_t size);
void* __wrap_realloc(void* memory, std::size_t size);
void __wrap_free(void* memory);
}

namespace robustness {
namespace {

Watch* watch = nullptr;  // over the call that runs now, if any
Held heldNow = {};

bool fails(Kind kind) {
    return watch && watch->fails(kind);
}

void count(long Held::*kind, long change) {
    if (watch) heldNow.*kind += change;
}

}  // namespace

Held held() {
    return heldNow;
}

Watch::Watch(Plan plan) : plan_(plan) {
    watch = this;
}

Watch::~Watch() {
    watch = nullptr;
}

bool Watch::fails(Kind kind) {
    ++allocations_;
    const bool isPlanned = allocations_ == plan_.number || (plan_.isFirstToo && allocations_ == 1) ||
                           (plan_.areLaterOnesToo && allocations_ > plan_.number);
    if (isPlanned && firstFailed_ == Kind::none)
        firstFailed_ = kind;
    else if (isPlanned && secondFailed_ == Kind::none)
        secondFailed_ = kind;
    return isPlanned;
}

}  // namespace robustness

using robustness::Held;
using robustness::Kind;

void* __wrap_malloc(std::size_t size) {
    void* memory = robustness::fails(Kind::memory) ? nullptr : __real_malloc(size);
    if (memory) robustness::count(&Held::memory, 1);
    return memory;
}

void* __wrap_calloc(std::size_t number, std::size_t size) {
    void* memory = robustness::fails(Kind::memory) ? nullptr : __real_calloc(number, size);
    if (memory) robustness::count(&Held::memory, 1);
    return memory;
}

void* __wrap_realloc(void* memory, std::size_t size) {
    void* moved = robustness::fails(Kind::memory) ? nullptr : __real_realloc(memory, size);
    if (moved && !memory) robustness::count(&Held::memory, 1);
    return moved;
}

void __wrap_free(void* memory) {
    if (memory) robustness::count(&Held::memory, -1);
    __real_free(memory);
}

// The other forms of operator new and delete come down to these.
void* operator new(std::size_t size) {
    void* object = robustness::fails(Kind::object) ? nullptr : __real_malloc(size > 0 ? size : 1);
    if (!object) throw std::bad_alloc();
    robustness::count(&Held::objects, 1);
    return object;
}

void operator delete(void* object) noexcept {
    if (object) robustness::count(&Held::objects, -1);
    __real_free(object);
}

void operator delete(void* object, std::size_t) noexcept {
    operator delete(object);
}
