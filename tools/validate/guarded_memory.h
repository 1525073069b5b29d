#pragma once

#include <cstddef>

// Pages of memory between pages that nobody may touch: who reads or writes past an end of what lies
// in them is stopped there by a signal.
class GuardedMemory {
public:
    GuardedMemory();
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;
    ~GuardedMemory();

    // Copies the bytes, which have to fit into a page, to the end or the beginning of a page. Four
    // of them have room; clear() makes it anew.
    char* putAtEnd(const char* bytes, std::size_t count);
    char* putAtBegin(const char* bytes, std::size_t count);
    void clear() { m_used = 0; }
    // From now on what was put can only be read, and nothing more can be put.
    void closeForWriting();

    // An address that nobody may touch.
    char* nothing() const { return m_pages; }

private:
    char* nextPage();
    char* page(int number) const;

    static constexpr int kPlaces = 4;
    std::size_t m_pageSize;
    char* m_pages;
    int m_used = 0;
};
