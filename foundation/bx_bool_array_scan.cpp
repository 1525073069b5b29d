// Counting and searching in bit arrays. Eight bytes at a time where there are as many, then byte by
// byte through the tables.

#include <algorithm>
#include <cstdint>

#include "foundation/bit_words.h"
#include "foundation/bx_bool_array.h"

namespace {

// Turns the bits searched for into 1.
template <bool value, class Word>
Word wanted(Word word) noexcept {
    return value ? word : static_cast<Word>(~word);
}

// Adds up neighbours: the two-bit, the four-bit, then the eight-bit fields of a word.
BitWord countsOfBytes(BitWord word) noexcept {
    word -= word >> 1 & 0x5555555555555555u;
    word = (word & 0x3333333333333333u) + (word >> 2 & 0x3333333333333333u);
    return (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0Fu;
}

std::int64_t countIn(const unsigned char* data, int bytes) noexcept {
    // A byte of the sum of 31 words is at most 248.
    constexpr int kWordsAtOnce = 31;
    std::int64_t count = 0;
    int byte = 0;
    while (byte + kBitWordBytes <= bytes) {
        const int words = std::min((bytes - byte) / kBitWordBytes, kWordsAtOnce);
        BitWord sums = 0;
        for (int i = 0; i < words; ++i, byte += kBitWordBytes) {
            sums += countsOfBytes(loadBits(data + byte));
        }
        // The eight sums, added up in pairs of 16 bits each so that none runs over.
        sums = (sums & 0x00FF00FF00FF00FFu) + (sums >> 8 & 0x00FF00FF00FF00FFu);
        count += static_cast<std::int64_t>(sums * 0x0001000100010001u >> 48);
    }
    for (; byte < bytes; ++byte) count += BXBitMgr::getNumBits1(data[byte]);
    return count;
}

constexpr int kBlockWords = 8;
constexpr int kBlockBytes = kBlockWords * kBitWordBytes;

template <bool value>
bool blockHasAny(const unsigned char* data) noexcept {
    BitWord any = 0;
    for (int i = 0; i < kBlockWords; ++i) {
        any |= wanted<value>(loadBits(data + std::ptrdiff_t{kBitWordBytes} * i));
    }
    return any != 0;
}

// The lowest index >= start, 0 <= start < 8 * bytes, or -1.
template <bool value>
int lowestFrom(const unsigned char* data, int bytes, int start) noexcept {
    int byte = start / 8;
    const int skipped = start % 8;
    if (byte + kBitWordBytes <= bytes) {
        BitWord word = wanted<value>(loadBits(data + byte)) >> skipped;
        if (word) return start + lowestBit(word);
        byte += kBitWordBytes;
        // A few words alone first: most searches end there, and a block's test costs eight of them.
        for (int i = 0; i < kBlockWords && byte + kBitWordBytes <= bytes; ++i) {
            word = wanted<value>(loadBits(data + byte));
            if (word) return byte * 8 + lowestBit(word);
            byte += kBitWordBytes;
        }
        while (byte + kBlockBytes <= bytes && !blockHasAny<value>(data + byte)) byte += kBlockBytes;
        for (; byte + kBitWordBytes <= bytes; byte += kBitWordBytes) {
            word = wanted<value>(loadBits(data + byte));
            if (word) return byte * 8 + lowestBit(word);
        }
    } else {
        const auto rest = static_cast<unsigned char>(wanted<value>(data[byte]) >> skipped);
        if (rest) return start + BXBitMgr::getFirstBit1(rest);
        ++byte;
    }
    for (; byte < bytes; ++byte) {
        const unsigned char bits = wanted<value>(data[byte]);
        if (bits) return byte * 8 + BXBitMgr::getFirstBit1(bits);
    }
    return -1;
}

// The highest index <= start, start >= 0, or -1.
template <bool value>
int highestFrom(const unsigned char* data, int start) noexcept {
    int byte = start / 8;
    const auto first =
        static_cast<unsigned char>(wanted<value>(data[byte]) & (0xFF >> (7 - start % 8)));
    if (first) return byte * 8 + BXBitMgr::getLastBit1(first);
    for (; byte >= kBitWordBytes; byte -= kBitWordBytes) {
        const BitWord word = wanted<value>(loadBits(data + byte - kBitWordBytes));
        if (word) return (byte - kBitWordBytes) * 8 + highestBit(word);
    }
    while (--byte >= 0) {
        const unsigned char bits = wanted<value>(data[byte]);
        if (bits) return byte * 8 + BXBitMgr::getLastBit1(bits);
    }
    return -1;
}

// Writes the position of every wanted bit of [0, bits) to `to`.
template <bool value>
void listInto(int* to, const unsigned char* data, int bits) noexcept {
    int byte = 0;
    for (; byte + kBitWordBytes <= bits / 8; byte += kBitWordBytes) {
        for (BitWord word = wanted<value>(loadBits(data + byte)); word; word &= word - 1) {
            *to++ = byte * 8 + lowestBit(word);
        }
    }
    for (int i = byte * 8; i < bits; ++i) {
        if ((data[i / 8] >> i % 8 & 1) == value) *to++ = i;
    }
}

}  // namespace

int BXBoolArray::getNumberOfBitSetWithin(int from, int to) const noexcept {
    from = std::max(from, 0);
    to = std::min(to, m_count);
    if (to <= from) return 0;
    const int firstByte = from / 8, lastByte = (to - 1) / 8;
    const auto before = static_cast<unsigned char>(m_data[firstByte] & bitsBelow(from % 8));
    const auto behind = static_cast<unsigned char>(m_data[lastByte] & 0xFE << (to - 1) % 8);
    const std::int64_t count = countIn(m_data + firstByte, lastByte - firstByte + 1) -
                               getNumBitsAt1(before) - getNumBitsAt1(behind);
    return static_cast<int>(count);
}

int BXBoolArray::getNumberOfBitClearedWithin(int from, int to) const noexcept {
    from = std::max(from, 0);
    to = std::min(to, m_count);
    return to <= from ? 0 : to - from - getNumberOfBitSetWithin(from, to);
}

int BXBoolArray::findFirst(bool value, int start) const noexcept {
    if (start >= m_count) return -1;
    start = std::max(start, 0);
    const int found = value ? lowestFrom<true>(m_data, usedBytes(), start)
                            : lowestFrom<false>(m_data, usedBytes(), start);
    return found < m_count ? found : -1;
}

int BXBoolArray::findLast(bool value, int start) const noexcept {
    start = std::min(start, m_count - 1);
    if (start < 0) return -1;
    return value ? highestFrom<true>(m_data, start) : highestFrom<false>(m_data, start);
}

bool BXBoolArray::collect(BXArray<int>& indexes, bool value) const {
    const int found = value ? getNumberOfBitSet() : getNumberOfBitCleared();
    indexes.resize(static_cast<std::size_t>(found));
    if (value) {
        listInto<true>(indexes.data(), m_data, m_count);
    } else {
        listInto<false>(indexes.data(), m_data, m_count);
    }
    return found > 0;
}

bool BXBoolArray::getIndexesSet(BXArray<int>& indexes) const {
    return collect(indexes, true);
}

bool BXBoolArray::getIndexesCleared(BXArray<int>& indexes) const {
    return collect(indexes, false);
}
