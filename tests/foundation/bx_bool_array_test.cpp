#include "foundation/bx_bool_array.h"

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

// The bits as a row of 0 and 1, bit 0 first.
std::string row(const BXBoolArray& bits) {
    std::ostringstream out;
    out << bits;
    return out.str();
}

BXBoolArray of(const std::string& row) {
    BXBoolArray bits(static_cast<int>(row.size()), false);
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i] == '1') bits.set(static_cast<int>(i));
    }
    return bits;
}

BXArray<int> list(std::initializer_list<int> indexes) {
    return BXArray<int>(indexes);
}

bool guarded(const BXBoolArray& bits) {
    return bits.data()[-1] == 1 && *bits.dataEnd() == 1;
}

}  // namespace

TEST(BoolArray, BeginsEmptyOnASharedStorage) {
    const BXBoolArray a, b;
    EXPECT_EQ(a.count(), 0);
    EXPECT_EQ(a.capacity(), 0);
    EXPECT_EQ(a.data(), a.dataEnd());
    EXPECT_EQ(a.data(), b.data());
    EXPECT_TRUE(guarded(a));
}

TEST(BoolArray, IsTwoPointersAndACount) {
    EXPECT_EQ(sizeof(BXBoolArray),
              (2 * sizeof(void*) + 4 + sizeof(void*) - 1) / sizeof(void*) * sizeof(void*));
}

TEST(BoolArray, TakesExactlyTheBytesItNeeds) {
    for (const int n : {1, 7, 8, 9, 64, 65, 1000}) {
        const BXBoolArray bits(n, true);
        EXPECT_EQ(bits.dataEnd() - bits.data(), (n + 7) / 8) << n;
        EXPECT_TRUE(guarded(bits)) << n;
    }
}

TEST(BoolArray, FillsTheSpareBitsOfItsStorageWhenAssigned) {
    BXBoolArray bits(10, true);
    EXPECT_EQ(bits.data()[1], 0xFF);
    bits.assign(3, false);
    EXPECT_EQ(bits.count(), 3);
    EXPECT_EQ(bits.data()[0], 0);
    EXPECT_EQ(bits.data()[1], 0);
    bits.assign(0, true);
    EXPECT_EQ(bits.count(), 0);
    EXPECT_EQ(bits.data()[1], 0xFF);
}

TEST(BoolArray, TakesBytesOverAsTheyAre) {
    BXBoolArray bits;
    bits.assign(12, "\x05\xF8");
    EXPECT_EQ(bits.count(), 12);
    EXPECT_EQ(bits.data()[0], 0x05);
    EXPECT_EQ(bits.data()[1], 0xF8);
    EXPECT_EQ(row(bits), "101000000001");
}

TEST(BoolArray, AssignsAListOfIndexes) {
    BXBoolArray bits(20, true);
    const int indexes[] = {0, 3, 9};
    bits.assign(3, indexes, 10);
    EXPECT_EQ(row(bits), "1001000001");
}

TEST(BoolArray, KeepsItsBitsWhenAListIsAssignedWithoutASize) {
    BXBoolArray bits = of("0100");
    const int indexes[] = {2, 6};
    bits.assign(2, indexes, -1);
    EXPECT_EQ(row(bits), "0110001");
}

TEST(BoolArray, TakesANegativeCountForZero) {
    BXBoolArray bits(-3, true);
    EXPECT_EQ(bits.count(), 0);
    bits.assign(9, true);
    bits.resize(-1, true);
    EXPECT_EQ(bits.count(), 0);
}

TEST(BoolArray, CopiesWithTheBitsBeyondFilled) {
    const BXBoolArray from = of("10100");
    BXBoolArray to(30, false);
    to.copy(from, true);
    EXPECT_EQ(row(to), "10100");
    EXPECT_EQ(to.data()[0], 0xE5);
    EXPECT_EQ(to.data()[1], 0xFF);
    EXPECT_EQ(to.data()[3], 0xFF);
    to.copy(from, false);
    EXPECT_EQ(to.data()[0], 0x05);
    EXPECT_EQ(to.data()[3], 0x00);
    to.copy(to, true);
    EXPECT_EQ(row(to), "10100");
    EXPECT_EQ(to.data()[0], 0xE5);
    EXPECT_TRUE(guarded(to));
}

// Required(R40)
TEST(BoolArray, GivesAFreshCopyAsTheResultOfAnAssignment) {
    static_assert(
        std::is_same_v<decltype(std::declval<BXBoolArray&>() = std::declval<const BXBoolArray&>()),
                       BXBoolArray>);
    const BXBoolArray from = of("101");
    BXBoolArray to;
    (to = from).toggleAll();
    EXPECT_EQ(row(to), "101");
    EXPECT_EQ(row(to = from), "101");
}

TEST(BoolArray, MovesItsStorage) {
    BXBoolArray from = of("1011");
    const unsigned char* const storage = from.data();
    BXBoolArray moved(std::move(from));
    EXPECT_EQ(moved.data(), storage);
    BXBoolArray assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.data(), storage);
    EXPECT_EQ(row(assigned), "1011");
}

TEST(BoolArray, SwapsAllItHas) {
    BXBoolArray a = of("101"), b = of("0000000011");
    a.swap(b);
    EXPECT_EQ(row(a), "0000000011");
    EXPECT_EQ(row(b), "101");
    BXBoolArray empty;
    a.swap(empty);
    EXPECT_EQ(a.count(), 0);
    EXPECT_EQ(row(empty), "0000000011");
}

TEST(BoolArray, GivesItsStorageBack) {
    BXBoolArray a = of("101"), b = of("111");
    a.freeData();
    b.clearArray();
    EXPECT_EQ(a.data(), BXBoolArray().data());
    EXPECT_EQ(a.count(), 0);
    EXPECT_EQ(b.capacity(), 0);
    a.freeData();
    EXPECT_EQ(a.count(), 0);
}

TEST(BoolArray, FillsTheBitsThatComeIntoUse) {
    BXBoolArray bits = of("101");
    bits.resize(20, true);
    EXPECT_EQ(row(bits), "10111111111111111111");
    bits.resize(4, false);
    bits.resize(12, false);
    EXPECT_EQ(row(bits), "101100000000");
    EXPECT_EQ(bits.capacity(), 24);
    bits.resize(16, true);
    EXPECT_EQ(row(bits), "1011000000001111");
}

TEST(BoolArray, NeverShrinksItsStorageAndGrowsToTheExactSize) {
    BXBoolArray bits(100, false);
    const unsigned char* const storage = bits.data();
    bits.resize(3, true);
    bits.resize(104, true);
    EXPECT_EQ(bits.data(), storage);
    bits.resize(105, true);
    EXPECT_EQ(bits.capacity(), 112);
    EXPECT_TRUE(guarded(bits));
}

TEST(BoolArray, ReportsItsMemoryAsACountOfBytesAndOne) {
    for (const int n : {0, 7, 8, 100}) {
        EXPECT_EQ(BXBoolArray(n, true).getMemoryUsed(), n / 8 + 1);
        EXPECT_EQ(BXBoolArray(n, true).getDynMemoryUsed(), n / 8 + 1);
    }
}

TEST(BoolArray, IsFalseBeyondItsCount) {
    const BXBoolArray bits(11, true);
    EXPECT_TRUE(bits.get(10));
    EXPECT_FALSE(bits.get(11));
    EXPECT_FALSE(bits[11]);
    EXPECT_FALSE(bits.get(-1));
    EXPECT_FALSE(bits.get(INT_MAX));
    EXPECT_TRUE(bits.getNoSizeTest(11)) << "unchecked, in the spare bits";
}

TEST(BoolArray, GivesABitAsItsMask) {
    const BXBoolArray bits = of("0000000000010");
    EXPECT_EQ(bits.getAsMask(11), 8);
    EXPECT_EQ(bits.getAsMask(12), 0);
}

TEST(BoolArray, WritesSingleBits) {
    BXBoolArray bits(10, false);
    bits.set(3);
    bits.set(9, true);
    bits.set(4, true);
    bits.set(4, false);
    bits.toggle(0);
    bits.toggle(9);
    EXPECT_EQ(row(bits), "1001000000");
    bits.clear(0);
    EXPECT_EQ(row(bits), "0001000000");
}

#ifndef NDEBUG
TEST(BoolArrayDeathTest, AssertsTheIndexOfASingleBit) {
    BXBoolArray bits(8, false);
    EXPECT_DEATH(bits.set(8), "");
    EXPECT_DEATH(bits.clear(-1), "");
    EXPECT_DEATH(bits.toggle(8), "");
}
#endif

TEST(BoolArray, GrowsToOneMoreThanTheIndex) {
    BXBoolArray bits(5, true);
    bits.setAutoResize(bits.count() + 5);
    EXPECT_EQ(bits.count(), 11);
    EXPECT_EQ(row(bits), "11111000001");
    bits.clearAutoResize(12);
    EXPECT_EQ(row(bits), "1111100000100");
    bits.toggleAutoResize(13);
    bits.toggleAutoResize(0);
    EXPECT_EQ(row(bits), "01111000001001");
}

TEST(BoolArray, IgnoresAnIndexThatNoCountHolds) {
    BXBoolArray bits(5, true);
    for (const int index : {-1, INT_MIN, INT_MAX}) {
        bits.setAutoResize(index);
        bits.clearAutoResize(index);
        bits.toggleAutoResize(index);
    }
    EXPECT_EQ(row(bits), "11111");
}

// Required(R41)
TEST(BoolArray, WritesOneBitForALengthBelowOne) {
    BXBoolArray bits(8, false);
    bits.set(3, 0);
    EXPECT_EQ(row(bits), "00010000");
    bits.set(5, -7);
    EXPECT_EQ(row(bits), "00010100");
    bits.clear(3, 0);
    EXPECT_EQ(row(bits), "00000100");
    bits.set(0, 2);
    EXPECT_EQ(row(bits), "11000100");
}

TEST(BoolArray, WritesRangesAcrossBytesAndGrows) {
    BXBoolArray bits(4, false);
    bits.set(2, 20);
    EXPECT_EQ(row(bits), "0011111111111111111111");
    bits.clear(7, 10);
    EXPECT_EQ(row(bits), "0011111000000000011111");
    bits.clear(21, 3);
    EXPECT_EQ(row(bits), "001111100000000001111000");
    bits.set(-1, 5);
    bits.clear(-8, 100);
    EXPECT_EQ(row(bits), "001111100000000001111000");
}

TEST(BoolArray, WritesListedBitsAndPassesOverNegativeIndexes) {
    BXBoolArray bits(2, false);
    const int indexes[] = {-4, 9, 0};
    bits.set(3, indexes);
    EXPECT_EQ(row(bits), "1000000001");
    bits.clear(list({0, 11, -1}));
    EXPECT_EQ(row(bits), "000000000100");
    bits.set(list({}));
    bits.set(list({-2}));
    EXPECT_EQ(row(bits), "000000000100");
    bits.set(list({13}));
    EXPECT_EQ(row(bits), "00000000010001");
}

TEST(BoolArray, WritesAllBits) {
    BXBoolArray bits(10, false);
    bits.setAll();
    EXPECT_EQ(row(bits), "1111111111");
    bits.clearAll();
    EXPECT_EQ(row(bits), "0000000000");
    EXPECT_TRUE(guarded(bits));
}

TEST(BoolArray, InvertsWholeBytesAndTheBitsBehindThem) {
    BXBoolArray bits(20, false);
    bits.set(9, true);
    bits.inverse();
    EXPECT_EQ(row(bits), "11111111101111111111");
    EXPECT_TRUE(guarded(bits));
}

TEST(BoolArray, InvertsEveryStorageByteOrTheBitsInUseAlone) {
    BXBoolArray bits(10, true);
    bits.resize(3, false);
    bits.inverse();
    EXPECT_EQ(bits.data()[0], 0xF8);
    EXPECT_EQ(bits.data()[1], 0xFF);
    bits.toggleAll();
    EXPECT_EQ(bits.data()[0], 0x07);
    EXPECT_EQ(bits.data()[1], 0x00);
    EXPECT_TRUE(guarded(bits));
}

// Required(R42)
TEST(BoolArray, ClearsTheNeighboursOfModifiedBitsToo) {
    BXBoolArray bits(20, false);
    bits.set(8);
    bits.set(9);
    bits.set(17);
    bits.clearAllModifiedIndices(list({9}));
    EXPECT_EQ(row(bits), "00000000000000000100");
    bits.setAllModifiedIndices(list({2}));
    EXPECT_EQ(row(bits), "11111111000000000100");
}

TEST(BoolArray, KeepsTheSpareBitsOfTheLastByteWhenModifiedBitsAreReset) {
    BXBoolArray bits(20, true);
    bits.clearAllModifiedIndices(list({17, -5, 24, INT_MAX}));
    EXPECT_EQ(row(bits), "11111111111111110000");
    EXPECT_EQ(bits.data()[2], 0xF0);
    BXBoolArray zeros(20, false);
    zeros.setAllModifiedIndices(list({16}));
    EXPECT_EQ(zeros.data()[2], 0x0F);
}

TEST(BoolArray, InsertsABit) {
    BXBoolArray bits = of("10110011");
    bits.insert(2, false);
    EXPECT_EQ(row(bits), "100110011");
    bits.insert(8, false);
    EXPECT_EQ(row(bits), "1001100101");
    bits.insert(0, true);
    EXPECT_EQ(row(bits), "11001100101");
    bits.insert(11, true);
    bits.insert(-1, true);
    EXPECT_EQ(row(bits), "11001100101");
}

TEST(BoolArray, ErasesABit) {
    BXBoolArray bits = of("1101100101");
    bits.erase(0);
    EXPECT_EQ(row(bits), "101100101");
    bits.erase(8);
    EXPECT_EQ(row(bits), "10110010");
    bits.erase(3);
    EXPECT_EQ(row(bits), "1010010");
    bits.erase(7);
    bits.erase(-1);
    EXPECT_EQ(row(bits), "1010010");
}

TEST(BoolArray, UnitesIntoTheLongerCount) {
    BXBoolArray bits = of("1000");
    bits.merge(of("0100000011"));
    EXPECT_EQ(row(bits), "1100000011");
    bits.set(of("001"));
    EXPECT_EQ(row(bits), "1110000011");
    bits.merge(bits);
    EXPECT_EQ(row(bits), "1110000011");
}

TEST(BoolArray, TakesNoSpareBitOfTheOtherArray) {
    BXBoolArray other(5, true);
    other.resize(2, false);
    BXBoolArray bits(8, false);
    bits.merge(other);
    EXPECT_EQ(row(bits), "11000000");
    bits.setAll();
    bits.clear(other);
    EXPECT_EQ(row(bits), "00111111");
    bits.toggle(other);
    EXPECT_EQ(row(bits), "11111111");
}

TEST(BoolArray, IntersectsIntoTheSmallerCount) {
    BXBoolArray bits = of("110111111111");
    bits.inter(of("101"));
    EXPECT_EQ(bits.count(), 3);
    EXPECT_EQ(row(bits), "100");
    EXPECT_EQ(bits.data()[1], 1) << "a guard behind the last used byte";
    BXBoolArray whole(24, true);
    whole.inter(BXBoolArray(8, true));
    EXPECT_EQ(whole.data()[1], 1) << "also where the last used byte is whole";
    BXBoolArray shorter = of("11");
    shorter.inter(of("0111"));
    EXPECT_EQ(row(shorter), "01");
    EXPECT_TRUE(guarded(shorter));
    bits = of("111");
    bits.inter(BXBoolArray());
    EXPECT_EQ(bits.count(), 0);
    EXPECT_EQ(bits.data()[0], 1) << "the first byte is behind the last used one, which is none";
    BXBoolArray empty;
    empty.inter(of("1"));
    EXPECT_EQ(empty.count(), 0);
    EXPECT_TRUE(guarded(empty));
}

TEST(BoolArray, ClearsWhatIsSetInTheOther) {
    BXBoolArray bits = of("1111");
    bits.clear(of("010100001"));
    EXPECT_EQ(row(bits), "1010");
}

TEST(BoolArray, TogglesIntoTheLongerCount) {
    BXBoolArray bits = of("1100");
    bits.toggle(of("101000001"));
    EXPECT_EQ(row(bits), "011000001");
    bits.toggle(bits);
    EXPECT_EQ(row(bits), "000000000");
}

TEST(BoolArray, TellsWhetherTheTwoShareABit) {
    EXPECT_TRUE(of("0001").hasInter(of("000100000")));
    EXPECT_FALSE(of("0001").hasInter(of("111000001")));
    EXPECT_FALSE(BXBoolArray().hasInter(of("1")));
    BXBoolArray spare(8, true);
    spare.resize(3, false);
    EXPECT_FALSE(spare.hasInter(of("000111")));
}

TEST(BoolArray, TestsAMask) {
    const BXBoolArray bits = of("0110100");
    EXPECT_TRUE(bits.bitTest(of("0100100")));
    EXPECT_FALSE(bits.bitTest(of("1100100")));
    EXPECT_TRUE(bits.bitTest(of("000000000000")));
    EXPECT_TRUE(bits.bitTest(BXBoolArray()));
    EXPECT_TRUE(bits.bitTest(of("011010000000")));
    EXPECT_FALSE(bits.bitTest(of("011010010000"))) << "the mask's last bit is at the count";
    EXPECT_FALSE(BXBoolArray().bitTest(of("1")));
}

// Required(R43)
TEST(BoolArray, OfAWholeNumberOfBytesEqualsNone) {
    const std::string sixteen = "1011001110001011";
    EXPECT_FALSE(of(sixteen) == of(sixteen));
    EXPECT_TRUE(of(sixteen) != of(sixteen));
    const BXBoolArray eight(8, false);
    EXPECT_FALSE(eight == eight);
    const std::string fifteen = sixteen.substr(0, 15);
    EXPECT_TRUE(of(fifteen) == of(fifteen));
    EXPECT_TRUE(BXBoolArray() == BXBoolArray());
}

TEST(BoolArray, EqualsByTheBitsInUse) {
    EXPECT_FALSE(of("101") == of("1010"));
    EXPECT_FALSE(of("101") == of("100"));
    EXPECT_FALSE(of("0011001110") == of("1011001110"));
    // The spare bits do not count.
    BXBoolArray spareSet(10, true);
    spareSet.resize(3, true);
    BXBoolArray spareClear(3, false);
    spareClear.set(0, 3);
    EXPECT_TRUE(spareSet == spareClear);
}

TEST(BoolArray, CountsWithinARange) {
    const BXBoolArray bits = of("1011001110001011101");
    EXPECT_EQ(bits.getNumberOfBitSet(), 11);
    EXPECT_EQ(bits.getNumberOfBitCleared(), 8);
    EXPECT_EQ(bits.getNumberOfBitSetWithin(1, 8), 4);
    EXPECT_EQ(bits.getNumberOfBitClearedWithin(1, 8), 3);
    EXPECT_EQ(bits.getNumberOfBitSetWithin(5, 5), 0);
    EXPECT_EQ(bits.getNumberOfBitSetWithin(6, 5), 0);
    EXPECT_EQ(bits.getNumberOfBitClearedWithin(6, 5), 0);
    EXPECT_EQ(bits.getNumberOfBitSetWithin(-3, 1), 1);
    EXPECT_EQ(bits.getNumberOfBitSetWithin(18, 1000), 1);
    EXPECT_EQ(bits.getNumberOfBitClearedWithin(17, 1000), 1);
    EXPECT_EQ(bits.getNumberOfBitClearedWithin(30, 40), 0);
    EXPECT_EQ(BXBoolArray().getNumberOfBitSet(), 0);
}

TEST(BoolArray, FindsTheFirstBit) {
    const BXBoolArray bits = of("0001000000001");
    EXPECT_EQ(bits.findFirst(true), 3);
    EXPECT_EQ(bits.findFirst(true, -4), 3);
    EXPECT_EQ(bits.findFirst(true, 3), 3);
    EXPECT_EQ(bits.findFirst(true, 4), 12);
    EXPECT_EQ(bits.findFirst(true, 13), -1);
    EXPECT_EQ(bits.findFirst(false, 3), 4);
    EXPECT_EQ(bits.findFirst(false, 12), -1);
    EXPECT_EQ(BXBoolArray().findFirst(true), -1);
    BXBoolArray spare(16, true);
    spare.clearAll();
    spare.resize(9, false);
    spare.toggleAll();
    spare.clear(0, 9);
    EXPECT_EQ(spare.findFirst(true), -1) << "spare bits do not count";
}

TEST(BoolArray, FindsTheLastBit) {
    const BXBoolArray bits = of("0001000000001");
    EXPECT_EQ(bits.findLast(true), 12);
    EXPECT_EQ(bits.findLast(true, 1000), 12);
    EXPECT_EQ(bits.findLast(true, 11), 3);
    EXPECT_EQ(bits.findLast(true, 2), -1);
    EXPECT_EQ(bits.findLast(true, -1), -1);
    EXPECT_EQ(bits.findLast(false), 11);
    EXPECT_EQ(BXBoolArray(100, true).findLast(false), -1);
    EXPECT_EQ(BXBoolArray().findLast(false), -1);
}

TEST(BoolArray, ListsItsIndexesInPlaceOfWhatTheListHeld) {
    const BXBoolArray bits = of("0101000001");
    BXArray<int> indexes = {7, 7, 7};
    EXPECT_TRUE(bits.getIndexesSet(indexes));
    EXPECT_EQ(indexes, list({1, 3, 9}));
    EXPECT_TRUE(bits.getIndexesCleared(indexes));
    EXPECT_EQ(indexes, list({0, 2, 4, 5, 6, 7, 8}));
    EXPECT_FALSE(BXBoolArray(9, true).getIndexesCleared(indexes));
    EXPECT_TRUE(indexes.empty());
    EXPECT_FALSE(BXBoolArray().getIndexesSet(indexes));
}

TEST(BoolArray, HoldsAsManyBitsAsAnIntCounts) {
    BXBoolArray bits(INT_MAX, false);
    const unsigned char* const storage = bits.data();
    EXPECT_EQ(bits.capacity(), INT_MAX);
    EXPECT_EQ(bits.findFirst(true), -1);
    EXPECT_EQ(bits.findFirst(false, INT_MAX - 1), INT_MAX - 1);
    EXPECT_EQ(bits.findFirst(false, INT_MAX), -1);
    EXPECT_EQ(bits.findLast(true), -1);
    bits.set(INT_MAX - 1);
    EXPECT_EQ(bits.findFirst(true), INT_MAX - 1);
    EXPECT_EQ(bits.getNumberOfBitSet(), 1);
    bits.clearAllModifiedIndices({INT_MAX - 1});
    EXPECT_EQ(bits.getNumberOfBitSet(), 0);
    bits.setAutoResize(INT_MAX);
    bits.insert(0, true);
    bits.set(INT_MAX, 5);
    bits.set(BXArray<int>{INT_MAX, 10});
    EXPECT_EQ(bits.count(), INT_MAX);
    EXPECT_EQ(bits.findFirst(true), 10);
    EXPECT_EQ(bits.findFirst(true, 11), -1);
    bits.setAll();
    EXPECT_EQ(bits.getNumberOfBitSet(), INT_MAX);
    EXPECT_EQ(bits.getNumberOfBitClearedWithin(5, INT_MAX), 0);
    EXPECT_EQ(bits.findFirst(false), -1);
    bits.resize(100, false);
    EXPECT_EQ(bits.data(), storage) << "it never shrinks";
    EXPECT_EQ(bits.getNumberOfBitSet(), 100);
    bits.resize(INT_MAX, false);
    EXPECT_EQ(bits.data(), storage);
    EXPECT_EQ(bits.getNumberOfBitSet(), 100);
}

TEST(BoolArray, PassesOverTheOneIndexThatNoCountReaches) {
    BXBoolArray bits;
    bits.set(BXArray<int>{INT_MAX, 10});
    EXPECT_EQ(bits.count(), 11);
    EXPECT_TRUE(bits.get(10));
    bits.clear(BXArray<int>{INT_MAX, 12});
    EXPECT_EQ(bits.count(), 13);
}
