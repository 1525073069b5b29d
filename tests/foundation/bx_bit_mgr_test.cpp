#include "foundation/bx_bit_mgr.h"

#include <gtest/gtest.h>

#include <random>

#include "foundation/bx_bool_array.h"

namespace {

// Positions of the lowest and highest bit of a kind, looked for one by one.
template <class Word>
int lowest(Word x, bool value) {
    const int width = static_cast<int>(sizeof(Word)) * 8;
    for (int i = 0; i < width; ++i) {
        if ((x >> i & 1u) == value) return i;
    }
    return width;
}

template <class Word>
int highest(Word x, bool value) {
    for (int i = static_cast<int>(sizeof(Word)) * 8 - 1; i >= 0; --i) {
        if ((x >> i & 1u) == value) return i;
    }
    return -1;
}

template <class Word>
int number(Word x, bool value) {
    int count = 0;
    for (int i = 0; i < static_cast<int>(sizeof(Word)) * 8; ++i) count += (x >> i & 1u) == value;
    return count;
}

template <class Word>
bool answersFor(Word x) {
    return BXBitMgr::getNumBits1(x) == number(x, true) &&
           BXBitMgr::getNumBits0(x) == number(x, false) &&
           BXBitMgr::getFirstBit1(x) == lowest(x, true) &&
           BXBitMgr::getFirstBit0(x) == lowest(x, false) &&
           BXBitMgr::getLastBit1(x) == highest(x, true) &&
           BXBitMgr::getLastBit0(x) == highest(x, false);
}

}  // namespace

TEST(BitMgr, AnswersForEveryByte) {
    for (int x = 0; x < 256; ++x) EXPECT_TRUE(answersFor(static_cast<unsigned char>(x))) << x;
}

TEST(BitMgr, AnswersForEveryShortWord) {
    for (int x = 0; x < 65536; ++x) ASSERT_TRUE(answersFor(static_cast<unsigned short>(x))) << x;
}

TEST(BitMgr, AnswersForLongWordsOfOneBitAndOfAllButOne) {
    for (int i = 0; i < 32; ++i) {
        EXPECT_TRUE(answersFor(1u << i)) << i;
        EXPECT_TRUE(answersFor(~(1u << i))) << i;
    }
}

TEST(BitMgr, AnswersForRandomLongWords) {
    std::mt19937 random(7);
    for (int i = 0; i < 100000; ++i) {
        const unsigned int x = static_cast<unsigned int>(random() & random());
        ASSERT_TRUE(answersFor(x)) << x;
        ASSERT_TRUE(answersFor(~x)) << x;
    }
}

TEST(BitMgr, GivesTheWidthOrMinusOneForABitThatIsNotThere) {
    EXPECT_EQ(BXBitMgr::getFirstBit1(static_cast<unsigned char>(0)), 8);
    EXPECT_EQ(BXBitMgr::getFirstBit1(static_cast<unsigned short>(0)), 16);
    EXPECT_EQ(BXBitMgr::getFirstBit1(0u), 32);
    EXPECT_EQ(BXBitMgr::getFirstBit0(~0u), 32);
    EXPECT_EQ(BXBitMgr::getLastBit1(static_cast<unsigned char>(0)), -1);
    EXPECT_EQ(BXBitMgr::getLastBit1(static_cast<unsigned short>(0)), -1);
    EXPECT_EQ(BXBitMgr::getLastBit1(0u), -1);
    EXPECT_EQ(BXBitMgr::getLastBit0(~0u), -1);
}

TEST(BitMgr, BeginsWithTheLeastSignificantBit) {
    EXPECT_EQ(BXBitMgr::getBitOrdering(), 1);
    BXBoolArray bits(16, false);
    bits.set(0);
    bits.set(9);
    EXPECT_EQ(bits.data()[0], 1);
    EXPECT_EQ(bits.data()[1], 2);
}

TEST(BitMgr, HasTablesThatAreMadeWhenTheLibraryIsCompiled) {
    static_assert(BXBitMgr::numberOfBitSet[0xFF] == 8 && BXBitMgr::numberOfBitSet[0x81] == 2);
    static_assert(BXBitMgr::first1[0x50] == 4 && BXBitMgr::first0[0x0F] == 4);
    static_assert(BXBitMgr::last1[0x50] == 6 && BXBitMgr::last0[0xF7] == 3);
    for (int x = 0; x < 256; ++x) {
        const auto byte = static_cast<unsigned char>(x);
        EXPECT_EQ(BXBoolArray::getNumBitsAt1(byte), BXBitMgr::numberOfBitSet[byte]);
        EXPECT_EQ(BXBoolArray::getNumBitsAt0(byte), 8 - BXBitMgr::numberOfBitSet[byte]);
        EXPECT_EQ(BXBoolArray::getFirstBitAt1(byte), BXBitMgr::first1[byte]);
        EXPECT_EQ(BXBoolArray::getFirstBitAt0(byte), BXBitMgr::first0[byte]);
        EXPECT_EQ(BXBoolArray::getLastBitAt1(byte), BXBitMgr::last1[byte]);
        EXPECT_EQ(BXBoolArray::getLastBitAt0(byte), BXBitMgr::last0[byte]);
    }
}
