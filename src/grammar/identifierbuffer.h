// IdentifierBuffer: the pool of the identifier texts of a grammar and of its message. A text is named by its offset,
// which stays valid while the storage moves; offset 0 is never given out and means none.
#pragma once

class IdentifierBuffer {
public:
    int used = 8;         // next free offset
    int capacity = 4096;  // bytes of storage
    int growBy = 4096;
    char* bytes;  // owned, from malloc; zero behind the texts, which is what ends them

    /// Throws szFailure where there is no memory.
    IdentifierBuffer();
    IdentifierBuffer(IdentifierBuffer const&) = delete;
    IdentifierBuffer& operator=(IdentifierBuffer const&) = delete;
    ~IdentifierBuffer();

    /// Stores a copy of `text` and answers its offset, a multiple of 8. Throws szFailure where there is no memory.
    int add(char const* text);

    /// Sizes the pool for a message ahead of its texts. Throws szFailure where there is no memory.
    void reserve(int poolSize);

    char const* at(int offset) const { return bytes + offset; }

private:
    void growTo(int newCapacity);
};
