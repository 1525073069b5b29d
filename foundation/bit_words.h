#pragma once

#include <cstdint>
#include <cstring>

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "bits are read eight bytes at a time: a big-endian build has to swap them"
#endif

// Eight bytes of a bit array at once, wherever they begin: bit i of the word is bit i of the array
// from there.
using BitWord = std::uint64_t;

constexpr int kBitWordBytes = sizeof(BitWord);

inline BitWord loadBits(const unsigned char* bytes) noexcept {
    BitWord word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline int lowestBit(BitWord word) noexcept {
    return __builtin_ctzll(word);
}

inline int highestBit(BitWord word) noexcept {
    return 63 - __builtin_clzll(word);
}

// The bits of a byte below `position`, 0 to 7.
inline unsigned char bitsBelow(int position) noexcept {
    return static_cast<unsigned char>((1u << position) - 1u);
}
