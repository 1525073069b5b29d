#pragma once

// A number for each value of a byte, worked out when the library is compiled.
class BXByteTable {
public:
    constexpr explicit BXByteTable(int (*entry)(int byte)) : m_entries() {
        for (int byte = 0; byte < 256; ++byte) {
            m_entries[byte] = static_cast<signed char>(entry(byte));
        }
    }
    constexpr int operator[](unsigned char byte) const { return m_entries[byte]; }

private:
    signed char m_entries[256];
};

// What the tables below hold.
constexpr int bxByteBitCount(int byte) {
    return byte == 0 ? 0 : (byte & 1) + bxByteBitCount(byte >> 1);
}
constexpr int bxByteLowestBit1(int byte) {
    int position = 0;
    while (position < 8 && !(byte >> position & 1)) ++position;
    return position;
}
constexpr int bxByteLowestBit0(int byte) {
    return bxByteLowestBit1(byte ^ 0xFF);
}
constexpr int bxByteHighestBit1(int byte) {
    int position = 7;
    while (position >= 0 && !(byte >> position & 1)) --position;
    return position;
}
constexpr int bxByteHighestBit0(int byte) {
    return bxByteHighestBit1(byte ^ 0xFF);
}

// Bit tricks on words of 8, 16 and 32 bits. Positions count from the least significant bit. A word
// that has no bit of the kind asked for gives its width as the lowest position and -1 as the
// highest.
class BXBitMgr {
public:
    static constexpr BXByteTable numberOfBitSet{bxByteBitCount};  // how many bits are 1
    static constexpr BXByteTable first1{bxByteLowestBit1};        // position of the lowest 1 bit
    static constexpr BXByteTable first0{bxByteLowestBit0};        // position of the lowest 0 bit
    static constexpr BXByteTable last1{bxByteHighestBit1};        // position of the highest 1 bit
    static constexpr BXByteTable last0{bxByteHighestBit0};        // position of the highest 0 bit

    static int getNumBits1(unsigned char x) noexcept { return numberOfBitSet[x]; }
    static int getNumBits1(unsigned short x) noexcept { return __builtin_popcount(x); }
    static int getNumBits1(unsigned int x) noexcept { return __builtin_popcount(x); }
    static int getNumBits0(unsigned char x) noexcept { return 8 - getNumBits1(x); }
    static int getNumBits0(unsigned short x) noexcept { return 16 - getNumBits1(x); }
    static int getNumBits0(unsigned int x) noexcept { return 32 - getNumBits1(x); }

    static int getFirstBit1(unsigned char x) noexcept { return first1[x]; }
    static int getFirstBit1(unsigned short x) noexcept { return __builtin_ctz(x | 0x10000u); }
    static int getFirstBit1(unsigned int x) noexcept { return x ? __builtin_ctz(x) : 32; }
    static int getFirstBit0(unsigned char x) noexcept { return first0[x]; }
    static int getFirstBit0(unsigned short x) noexcept { return getFirstBit1(inverted(x)); }
    static int getFirstBit0(unsigned int x) noexcept { return getFirstBit1(~x); }

    static int getLastBit1(unsigned char x) noexcept { return last1[x]; }
    static int getLastBit1(unsigned short x) noexcept { return getLastBit1(unsigned{x}); }
    static int getLastBit1(unsigned int x) noexcept { return x ? 31 - __builtin_clz(x) : -1; }
    static int getLastBit0(unsigned char x) noexcept { return last0[x]; }
    static int getLastBit0(unsigned short x) noexcept { return getLastBit1(inverted(x)); }
    static int getLastBit0(unsigned int x) noexcept { return getLastBit1(~x); }

    // 1: bit arrays and words begin with their least significant bit.
    static int getBitOrdering() noexcept { return 1; }

private:
    static unsigned short inverted(unsigned short x) noexcept {
        return static_cast<unsigned short>(~x);
    }
};
