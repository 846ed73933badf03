// DocumentMemory: where the parser takes its memory for one document, and the fence around what a document type may
// cost. A few declarations can ask for billions of expansions, or for tables that double with each name; what the parser
// allocates tells both.
//
// All that it gave out goes with it, also what the parser loses where a parse ends early.
#pragma once

#include <cstddef>
#include <cstdint>
#include <xercesc/framework/MemoryManager.hpp>

class DocumentMemory : public xercesc::MemoryManager {
public:
    DocumentMemory() = default;
    DocumentMemory(DocumentMemory const&) = delete;
    DocumentMemory& operator=(DocumentMemory const&) = delete;
    /// Releases what has not been given back.
    ~DocumentMemory() override;

    /// From here on, memory is refused where a document of `length` bytes has taken more than its like ever needs.
    void limit(std::size_t length);

    /// From here on, up to the next call of either, memory is refused also where one declaration has taken more pieces
    /// than its like ever needs.
    void beginDeclaration();
    void endDeclarations();

    /// Ends the parse with an exception that the parser reports as a fatal error. Nothing is refused behind it.
    [[noreturn]] void refuse();
    bool hasRefused() const { return refused; }

    xercesc::MemoryManager* getExceptionMemoryManager() override;
    /// Throws the parser's OutOfMemoryException where there is no memory, and what refuse() throws beyond the limit.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;

private:
    /// Stands in front of each piece of memory.
    struct alignas(std::max_align_t) Block {
        Block* previous;
        Block* next;
        std::size_t size;
    };

    Block* newest = nullptr;  // owned, with all behind it
    std::size_t held = 0;     // bytes
    std::size_t allocations = 0;
    bool isLimited = false;
    bool refused = false;
    std::size_t heldAtMost = 0;
    std::size_t allocationsAtMost = 0;
    std::size_t declarationAtMost = SIZE_MAX;  // what `allocations` may come to in the declaration at hand
};
