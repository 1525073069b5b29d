#pragma once

#include <cassert>
#include <climits>
#include <cstddef>
#include <iosfwd>
#include <utility>

#include "foundation/bx_array.h"
#include "foundation/bx_bit_mgr.h"

// A packed array of bits. Bit i is bit i % 8, from the least significant one, of byte i / 8. The
// storage is one allocation of the capacity's bytes between two guard bytes that hold 1; it grows
// to the exact size that is needed and never shrinks. The spare bits of the last byte, and the
// bytes of the capacity behind it, can hold anything.
//
// Counts and indexes are ints; a negative count is taken as 0. Where no check is mentioned, an
// index that is negative or beyond the count is the caller's mistake. Another array given as an
// argument may be this array itself. Nothing throws, except that an allocation that fails passes
// the allocator's exception on, with the array as it was; a = b may fail once more, after the array
// was assigned, at the copy that is its result.
class BXBoolArray {
public:
    BXBoolArray() noexcept : m_data(s_empty + 1), m_dataEnd(s_empty + 1) {}
    BXBoolArray(int n, bool value) : BXBoolArray() { assign(n, value); }
    BXBoolArray(const BXBoolArray& other) : BXBoolArray() { copy(other, false); }
    BXBoolArray(BXBoolArray&& other) noexcept : BXBoolArray() { swap(other); }
    // The result is a fresh copy, not this array, which is required.
    // NOLINTNEXTLINE(misc-unconventional-assign-operator)
    BXBoolArray operator=(const BXBoolArray& other);
    BXBoolArray& operator=(BXBoolArray&& other) noexcept;
    ~BXBoolArray() { freeData(); }

    int count() const noexcept { return m_count; }
    int capacity() const noexcept {
        const std::ptrdiff_t bytes = m_dataEnd - m_data;
        return bytes > INT_MAX / 8 ? INT_MAX : static_cast<int>(bytes) * 8;
    }
    // The bytes that hold the bits, with a guard byte before the first and at dataEnd().
    const unsigned char* data() const noexcept { return m_data; }
    const unsigned char* dataEnd() const noexcept { return m_dataEnd; }
    int getMemoryUsed() const noexcept { return m_count / 8 + 1; }
    int getDynMemoryUsed() const noexcept { return m_count / 8 + 1; }

    // Gives the storage back.
    void freeData() noexcept;
    void clearArray() noexcept { freeData(); }

    // n bits of this value, and the spare ones of the whole storage with them.
    void assign(int n, bool value);
    // n bits from (n + 7) / 8 bytes, taken over as they are.
    void assign(int n, const char* bytes);
    // `size` bits, 0 but for the n listed ones, which are not checked. With a size of -1 the array
    // is not emptied: as set(n, indexes).
    void assign(int n, const int* indexes, int size);
    // The other array's bits; every bit of the storage beyond them becomes `fill`.
    void copy(const BXBoolArray& other, bool fill);
    void swap(BXBoolArray& other) noexcept;
    // Bits that come into use are `fill`.
    void resize(int n, bool fill);

    // False beyond the count.
    bool get(int i) const noexcept { return i >= 0 && i < m_count && getNoSizeTest(i); }
    bool operator[](int i) const noexcept { return get(i); }

    // Unchecked: the index has to be below the capacity.
    bool getNoSizeTest(int i) const noexcept { return getAsMask(i) != 0; }
    unsigned char getAsMask(int i) const noexcept { return byteOf(i) & maskOf(i); }
    void set(int i, bool value) noexcept { value ? set(i) : clear(i); }
    void set(int i) noexcept { byteOf(i) |= maskOf(i); }
    void clear(int i) noexcept { byteOf(i) &= static_cast<unsigned char>(~maskOf(i)); }
    void toggle(int i) noexcept { byteOf(i) ^= maskOf(i); }

    // These first grow to i + 1 bits, with 0, where i is at or beyond the count. A negative index
    // does nothing.
    void setAutoResize(int i);
    void clearAutoResize(int i);
    void toggleAutoResize(int i);

    // The bits [first, first + n), one bit where n < 1. Grows with 0 where they pass the count. A
    // negative `first` does nothing.
    void set(int first, int n);
    void clear(int first, int n);
    // The n listed bits. Grows with 0 to the highest of them; negative indexes are passed over.
    void set(int n, const int* indexes);
    void clear(int n, const int* indexes);
    void set(const BXArray<int>& indexes);
    void clear(const BXArray<int>& indexes);

    void setAll() noexcept;
    void clearAll() noexcept;
    void toggleAll() noexcept;  // the spare bits too
    void inverse() noexcept;    // the bits in use alone
    // A fast reset of an array in which nothing but the listed bits differs from the rest: sets, or
    // clears, the whole byte around each, neighbours included. Indexes outside the storage are
    // passed over.
    void setAllModifiedIndices(const BXArray<int>& indexes) noexcept;
    void clearAllModifiedIndices(const BXArray<int>& indexes) noexcept;

    // Outside 0 <= i < count they do nothing.
    void insert(int i, bool value);
    void erase(int i) noexcept;

    // Union and symmetric difference; the array grows to the longer count, and what lies beyond the
    // shorter of the two comes from the longer one.
    void set(const BXBoolArray& other);
    void merge(const BXBoolArray& other) { set(other); }
    void toggle(const BXBoolArray& other);
    // Intersection. The count becomes the smaller of the two.
    void inter(const BXBoolArray& other) noexcept;
    // Clears what is set in the other array. The count stays.
    void clear(const BXBoolArray& other) noexcept;
    // Whether a bit is set in both.
    bool hasInter(const BXBoolArray& other) const noexcept;
    // Whether every bit that is set in the mask is set here, which it is not beyond the count.
    bool bitTest(const BXBoolArray& mask) const noexcept;
    // False for any two arrays whose count is a multiple of 8 above 0.
    bool operator==(const BXBoolArray& other) const noexcept;
    bool operator!=(const BXBoolArray& other) const noexcept { return !(*this == other); }

    int getNumberOfBitSet() const noexcept { return getNumberOfBitSetWithin(0, m_count); }
    int getNumberOfBitCleared() const noexcept { return m_count - getNumberOfBitSet(); }
    // Over [from, to), as far as it lies inside the array.
    int getNumberOfBitSetWithin(int from, int to) const noexcept;
    int getNumberOfBitClearedWithin(int from, int to) const noexcept;

    // The lowest index at or after `start` with this value, or -1.
    int findFirst(bool value, int start) const noexcept;
    int findFirst(bool value) const noexcept { return findFirst(value, 0); }
    // The highest index at or before `start` with this value, or -1.
    int findLast(bool value, int start) const noexcept;
    int findLast(bool value) const noexcept { return findLast(value, m_count - 1); }
    // All indexes with this value in increasing order, in place of what `indexes` held; whether
    // there is any.
    bool getIndexesSet(BXArray<int>& indexes) const;
    bool getIndexesCleared(BXArray<int>& indexes) const;

    // Of one byte, as BXBitMgr has them.
    static int getNumBitsAt1(unsigned char x) noexcept { return BXBitMgr::getNumBits1(x); }
    static int getNumBitsAt0(unsigned char x) noexcept { return BXBitMgr::getNumBits0(x); }
    static int getFirstBitAt1(unsigned char x) noexcept { return BXBitMgr::getFirstBit1(x); }
    static int getFirstBitAt0(unsigned char x) noexcept { return BXBitMgr::getFirstBit0(x); }
    static int getLastBitAt1(unsigned char x) noexcept { return BXBitMgr::getLastBit1(x); }
    static int getLastBitAt0(unsigned char x) noexcept { return BXBitMgr::getLastBit0(x); }

private:
    static unsigned char s_empty[2];  // the guards of every array without storage

    static unsigned char maskOf(int i) noexcept {
        return static_cast<unsigned char>(1u << (i & 7));
    }
    unsigned char& byteOf(int i) const noexcept {
        assert(i >= 0 && i / 8 < m_dataEnd - m_data);
        return m_data[i >> 3];
    }

    int usedBytes() const noexcept { return bytesFor(m_count); }
    static int bytesFor(int bits) noexcept { return bits / 8 + (bits % 8 != 0); }
    void reserveEmpty(int n);
    void growToHold(const int* indexes, int n);
    void writeRange(int first, int n, bool value);
    void writeByteOfEach(const BXArray<int>& indexes, unsigned char byte) noexcept;
    bool collect(BXArray<int>& indexes, bool value) const;

    unsigned char* m_data;
    unsigned char* m_dataEnd;
    int m_count = 0;
};

// The bits as a row of 0 and 1, bit 0 first.
std::ostream& operator<<(std::ostream& out, const BXBoolArray& bits);
