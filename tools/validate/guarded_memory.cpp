#include "tools/validate/guarded_memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

GuardedMemory::GuardedMemory() : m_pageSize(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    const std::size_t size = (2 * kPlaces + 1) * m_pageSize;
    void* const pages = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANON, -1, 0);
    if (pages == MAP_FAILED) throw std::runtime_error("there is no memory for guard pages");
    m_pages = static_cast<char*>(pages);
    for (int i = 0; i < kPlaces; ++i) mprotect(page(i), m_pageSize, PROT_READ | PROT_WRITE);
}

void GuardedMemory::closeForWriting() {
    for (int i = 0; i < kPlaces; ++i) mprotect(page(i), m_pageSize, PROT_READ);
    m_used = kPlaces;
}

GuardedMemory::~GuardedMemory() {
    munmap(m_pages, (2 * kPlaces + 1) * m_pageSize);
}

char* GuardedMemory::putAtEnd(const char* bytes, std::size_t count) {
    char* const place = nextPage() + (m_pageSize - count);
    std::memcpy(place, bytes, count);
    return place;
}

char* GuardedMemory::putAtBegin(const char* bytes, std::size_t count) {
    char* const place = nextPage();
    std::memcpy(place, bytes, count);
    return place;
}

char* GuardedMemory::nextPage() {
    if (m_used == kPlaces) throw std::logic_error("a call has more inputs than there is room for");
    return page(m_used++);
}

char* GuardedMemory::page(int number) const {
    return m_pages + (2 * number + 1) * static_cast<long>(m_pageSize);
}
