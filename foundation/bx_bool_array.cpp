#include "foundation/bx_bool_array.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <ostream>

#include "foundation/bit_words.h"

namespace {

constexpr unsigned char kGuard = 1;

unsigned char byteOfAll(bool value) {
    return value ? 0xFF : 0x00;
}

// Takes the bits of `mask` from `bits`, and the others from `byte`.
unsigned char mixed(unsigned char byte, unsigned char bits, unsigned char mask) {
    return static_cast<unsigned char>((byte & ~mask) | (bits & mask));
}

// One allocation: guard, bytes, guard. Returns the first byte between.
unsigned char* allocate(int bytes) {
    unsigned char* const storage = new unsigned char[static_cast<std::size_t>(bytes) + 2];
    storage[0] = storage[bytes + 1] = kGuard;
    return storage + 1;
}

}  // namespace

unsigned char BXBoolArray::s_empty[2] = {kGuard, kGuard};

// Required(R40): by value. Whoever goes on with the result does so with an array of its own.
// NOLINTNEXTLINE(misc-unconventional-assign-operator)
BXBoolArray BXBoolArray::operator=(const BXBoolArray& other) {
    copy(other, false);
    return *this;
}

BXBoolArray& BXBoolArray::operator=(BXBoolArray&& other) noexcept {
    swap(other);
    return *this;
}

void BXBoolArray::freeData() noexcept {
    if (m_data != s_empty + 1) delete[](m_data - 1);
    m_data = m_dataEnd = s_empty + 1;
    m_count = 0;
}

// Storage for n bits whose contents do not matter.
void BXBoolArray::reserveEmpty(int n) {
    if (n <= capacity()) return;
    unsigned char* const data = allocate(bytesFor(n));
    freeData();
    m_data = data;
    m_dataEnd = data + bytesFor(n);
}

void BXBoolArray::assign(int n, bool value) {
    n = std::max(n, 0);
    reserveEmpty(n);
    m_count = n;
    value ? setAll() : clearAll();
}

void BXBoolArray::assign(int n, const char* bytes) {
    n = std::max(n, 0);
    reserveEmpty(n);
    m_count = n;
    if (n > 0) std::memcpy(m_data, bytes, static_cast<std::size_t>(usedBytes()));
}

void BXBoolArray::assign(int n, const int* indexes, int size) {
    if (size == -1) return set(n, indexes);
    assign(size, false);
    for (int i = 0; i < n; ++i) set(indexes[i]);
}

void BXBoolArray::copy(const BXBoolArray& other, bool fill) {
    const int n = other.m_count;
    const int bytes = bytesFor(n);
    if (&other != this) {
        reserveEmpty(n);
        if (n > 0) std::memcpy(m_data, other.m_data, static_cast<std::size_t>(bytes));
        m_count = n;
    }
    std::fill(m_data + bytes, m_dataEnd, byteOfAll(fill));
    if (n % 8) m_data[n / 8] = mixed(byteOfAll(fill), m_data[n / 8], bitsBelow(n % 8));
}

void BXBoolArray::swap(BXBoolArray& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_dataEnd, other.m_dataEnd);
    std::swap(m_count, other.m_count);
}

void BXBoolArray::resize(int n, bool fill) {
    n = std::max(n, 0);
    const int oldCount = m_count;
    const int oldBytes = usedBytes();
    if (n > capacity()) {
        unsigned char* const data = allocate(bytesFor(n));
        if (oldBytes > 0) std::memcpy(data, m_data, static_cast<std::size_t>(oldBytes));
        freeData();
        m_data = data;
        m_dataEnd = data + bytesFor(n);
    }
    m_count = n;
    if (n <= oldCount) return;
    if (oldCount % 8) {
        unsigned char& last = m_data[oldCount / 8];
        last = mixed(byteOfAll(fill), last, bitsBelow(oldCount % 8));
    }
    std::fill(m_data + oldBytes, m_data + usedBytes(), byteOfAll(fill));
}

void BXBoolArray::setAutoResize(int i) {
    // No count can hold the last int as an index.
    if (i < 0 || i == INT_MAX) return;
    if (i >= m_count) resize(i + 1, false);
    set(i);
}

void BXBoolArray::clearAutoResize(int i) {
    if (i < 0 || i == INT_MAX) return;
    if (i >= m_count) resize(i + 1, false);
    clear(i);
}

void BXBoolArray::toggleAutoResize(int i) {
    if (i < 0 || i == INT_MAX) return;
    if (i >= m_count) resize(i + 1, false);
    toggle(i);
}

void BXBoolArray::set(int first, int n) {
    writeRange(first, n, true);
}

void BXBoolArray::clear(int first, int n) {
    writeRange(first, n, false);
}

void BXBoolArray::writeRange(int first, int n, bool value) {
    if (first < 0 || first == INT_MAX) return;
    // Required(R41): no length is a length of one.
    const int end = first + std::min(std::max(n, 1), INT_MAX - first);
    if (end > m_count) resize(end, false);
    const int firstByte = first / 8, lastByte = (end - 1) / 8;
    const unsigned char byte = byteOfAll(value);
    const auto fromFirst = static_cast<unsigned char>(~bitsBelow(first % 8));
    const auto upToLast = static_cast<unsigned char>(0xFF >> (7 - (end - 1) % 8));
    if (firstByte == lastByte) {
        m_data[firstByte] = mixed(m_data[firstByte], byte, fromFirst & upToLast);
        return;
    }
    m_data[firstByte] = mixed(m_data[firstByte], byte, fromFirst);
    std::fill(m_data + firstByte + 1, m_data + lastByte, byte);
    m_data[lastByte] = mixed(m_data[lastByte], byte, upToLast);
}

void BXBoolArray::growToHold(const int* indexes, int n) {
    int end = m_count;
    for (int i = 0; i < n; ++i) {
        // No count can hold the last int as an index.
        if (indexes[i] >= end && indexes[i] < INT_MAX) end = indexes[i] + 1;
    }
    if (end > m_count) resize(end, false);
}

void BXBoolArray::set(int n, const int* indexes) {
    growToHold(indexes, n);
    for (int i = 0; i < n; ++i) {
        if (indexes[i] >= 0 && indexes[i] < m_count) set(indexes[i]);
    }
}

void BXBoolArray::clear(int n, const int* indexes) {
    growToHold(indexes, n);
    for (int i = 0; i < n; ++i) {
        if (indexes[i] >= 0 && indexes[i] < m_count) clear(indexes[i]);
    }
}

void BXBoolArray::set(const BXArray<int>& indexes) {
    set(static_cast<int>(indexes.size()), indexes.data());
}

void BXBoolArray::clear(const BXArray<int>& indexes) {
    clear(static_cast<int>(indexes.size()), indexes.data());
}

void BXBoolArray::setAll() noexcept {
    std::fill(m_data, m_dataEnd, byteOfAll(true));
}

void BXBoolArray::clearAll() noexcept {
    std::fill(m_data, m_dataEnd, byteOfAll(false));
}

void BXBoolArray::toggleAll() noexcept {
    for (unsigned char* byte = m_data; byte < m_dataEnd; ++byte) {
        *byte = static_cast<unsigned char>(~*byte);
    }
}

void BXBoolArray::inverse() noexcept {
    for (int byte = 0; byte < m_count / 8; ++byte) {
        m_data[byte] = static_cast<unsigned char>(~m_data[byte]);
    }
    if (m_count % 8) m_data[m_count / 8] ^= bitsBelow(m_count % 8);
}

void BXBoolArray::setAllModifiedIndices(const BXArray<int>& indexes) noexcept {
    writeByteOfEach(indexes, byteOfAll(true));
}

void BXBoolArray::clearAllModifiedIndices(const BXArray<int>& indexes) noexcept {
    writeByteOfEach(indexes, byteOfAll(false));
}

// Required(R42): whole bytes are written, so bits beside the listed ones change with them.
void BXBoolArray::writeByteOfEach(const BXArray<int>& indexes, unsigned char byte) noexcept {
    const bool isLastShared = m_count % 8 != 0;
    const int last = m_count / 8;
    const unsigned char before = isLastShared ? m_data[last] : 0;
    for (const int index : indexes) {
        if (index >= 0 && index / 8 < m_dataEnd - m_data) m_data[index / 8] = byte;
    }
    if (isLastShared) m_data[last] = mixed(before, m_data[last], bitsBelow(m_count % 8));
}

void BXBoolArray::insert(int i, bool value) {
    if (i < 0 || i >= m_count || m_count == INT_MAX) return;
    resize(m_count + 1, false);
    const int home = i / 8;
    for (int byte = usedBytes() - 1; byte > home; --byte) {
        m_data[byte] = static_cast<unsigned char>(m_data[byte] << 1 | m_data[byte - 1] >> 7);
    }
    const auto shifted = static_cast<unsigned char>(m_data[home] << 1);
    m_data[home] = mixed(shifted, m_data[home], bitsBelow(i % 8));
    set(i, value);
}

void BXBoolArray::erase(int i) noexcept {
    if (i < 0 || i >= m_count) return;
    const int home = i / 8, last = usedBytes() - 1;
    const unsigned char below = m_data[home];
    for (int byte = home; byte < last; ++byte) {
        m_data[byte] = static_cast<unsigned char>(m_data[byte] >> 1 | m_data[byte + 1] << 7);
    }
    m_data[last] = static_cast<unsigned char>(m_data[last] >> 1);
    m_data[home] = mixed(m_data[home], below, bitsBelow(i % 8));
    --m_count;
}

std::ostream& operator<<(std::ostream& out, const BXBoolArray& bits) {
    for (int i = 0; i < bits.count(); ++i) out << (bits.getNoSizeTest(i) ? '1' : '0');
    return out;
}
