// DocumentMemory: what the parser takes, counted and kept in a list.
#include "xml/documentmemory.h"

#include <new>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

namespace {

// Documents that mean no harm were seen to take up to 70 bytes and two allocations for each of their bytes. What stands
// in front is for the document types and schemas that they name.
constexpr std::size_t heldByAny = 64'000'000;
constexpr std::size_t heldForEachByte = 100;
constexpr std::size_t allocationsOfAny = 1'000'000;
constexpr std::size_t allocationsForEachByte = 4;

/// How many pieces one declaration may take: some eight for each name of its content model.
constexpr std::size_t allocationsOfDeclaration = 40'000;

/// Less than this is never refused: the parser takes small pieces in destructors, where a refusal would end the process.
/// Each expansion takes a larger piece, and every table that grows comes to take one.
constexpr std::size_t smallestRefused = 65'536;

void* takeMemory(std::size_t size) {
    try {
        return ::operator new(size);
    } catch (std::bad_alloc const&) {
        throw xercesc::OutOfMemoryException();
    }
}

class Refusal : public xercesc::XMLException {
public:
    Refusal() : XMLException(__FILE__, __LINE__, xercesc::XMLPlatformUtils::fgMemoryManager) {
        loadExceptText(xercesc::XMLExcepts::Out_Of_Memory);
    }
    XMLCh const* getType() const override { return u"Refusal"; }
};

}  // namespace

DocumentMemory::~DocumentMemory() {
    while (newest) {
        Block* const next = newest->next;
        ::operator delete(newest);
        newest = next;
    }
}

void DocumentMemory::limit(std::size_t length) {
    isLimited = true;
    heldAtMost = heldByAny + length * heldForEachByte;
    allocationsAtMost = allocationsOfAny + length * allocationsForEachByte;
}

void DocumentMemory::beginDeclaration() {
    declarationAtMost = allocations + allocationsOfDeclaration;
}

void DocumentMemory::endDeclarations() {
    declarationAtMost = SIZE_MAX;
}

void DocumentMemory::refuse() {
    isLimited = false;
    refused = true;
    throw Refusal();
}

xercesc::MemoryManager* DocumentMemory::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

void* DocumentMemory::allocate(XMLSize_t size) {
    bool const isBeyond =
        held + size > heldAtMost || allocations >= allocationsAtMost || allocations >= declarationAtMost;
    if (isLimited && size >= smallestRefused && isBeyond) refuse();
    newest = new (takeMemory(sizeof(Block) + size)) Block{nullptr, newest, size};
    if (newest->next) newest->next->previous = newest;
    held += size;
    ++allocations;
    return newest + 1;
}

void DocumentMemory::deallocate(void* memory) {
    if (!memory) return;
    Block* const block = static_cast<Block*>(memory) - 1;
    (block->previous ? block->previous->next : newest) = block->next;
    if (block->next) block->next->previous = block->previous;
    held -= block->size;
    ::operator delete(block);
}
