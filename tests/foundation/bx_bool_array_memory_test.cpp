// How BXBoolArray and BXArray take and give back memory.

#include <gtest/gtest.h>

#include <utility>

#include "foundation/bx_array.h"
#include "foundation/bx_bool_array.h"
#include "foundation/bx_string.h"
#include "tests/support/allocation_record.h"

namespace {

using Sizes = AllocationRecord::Sizes;

}  // namespace

TEST(BoolArrayMemory, TakesItsBytesAndTwoGuardsAtOnce) {
    AllocationRecord record;
    { const BXBoolArray bits(20, true); }
    EXPECT_EQ(record.releases(), 1);
    EXPECT_EQ((Sizes{5}), record.stop());
}

TEST(BoolArrayMemory, TakesNoneWhenEmpty) {
    AllocationRecord record;
    {
        BXBoolArray empty;
        const BXBoolArray copy(empty), none(0, true);
        empty.resize(0, true);
        empty.freeData();
    }
    EXPECT_EQ(record.releases(), 0);
    EXPECT_EQ(Sizes{}, record.stop());
}

TEST(BoolArrayMemory, TakesOneExactStorageForEachGrowth) {
    const BXBoolArray longer(80, true);
    BXBoolArray bits(8, false);
    AllocationRecord record;
    bits.resize(9, false);
    bits.setAutoResize(23);
    bits.set(20, 10);
    bits.set(BXBoolArray(40, true));
    bits.assign(41, false);
    bits.copy(longer, false);
    bits.insert(3, true);
    EXPECT_EQ((Sizes{4, 5, 6, 7, 7, 8, 12, 13}), record.stop());
}

TEST(BoolArrayMemory, TakesNoneWithinItsCapacity) {
    const BXBoolArray other(50, true);
    BXBoolArray bits(100, false);
    AllocationRecord record;
    bits.resize(3, true);
    bits.resize(100, true);
    bits.assign(90, true);
    bits.copy(other, true);
    bits.merge(other);
    bits.toggle(other);
    bits.clear(other);
    bits.inter(other);
    bits.insert(4, true);
    bits.erase(4);
    bits.setAutoResize(99);
    bits.set(90, 10);
    EXPECT_EQ(Sizes{}, record.stop());
}

TEST(BoolArrayMemory, TakesNoneForSearchesTestsCountsAndMoves) {
    BXBoolArray bits(100, true), other(90, false);
    AllocationRecord record;
    bits.findFirst(true, 3);
    bits.findLast(false);
    bits.getNumberOfBitSet();
    bits.getNumberOfBitClearedWithin(3, 70);
    bits.hasInter(other);
    bits.bitTest(other);
    (void)(bits == other);
    bits.swap(other);
    BXBoolArray moved(std::move(bits));
    other = std::move(moved);
    EXPECT_EQ(Sizes{}, record.stop());
}

TEST(BoolArrayMemory, TakesOneListForItsIndexes) {
    BXBoolArray bits(100, false);
    bits.set(7);
    bits.set(70);
    BXArray<int> indexes;
    AllocationRecord record;
    bits.getIndexesSet(indexes);
    EXPECT_EQ((Sizes{2 * sizeof(int)}), record.stop());
}

// The copy that an assignment results in takes its own.
TEST(BoolArrayMemory, TakesTwoStoragesForAnAssignment) {
    const BXBoolArray from(20, true);
    BXBoolArray to;
    AllocationRecord record;
    to = from;
    EXPECT_EQ(record.releases(), 1);
    EXPECT_EQ((Sizes{5, 5}), record.stop());
}

TEST(ArrayMemory, TakesOneBlockForItsElements) {
    AllocationRecord record;
    {
        BXArray<int> numbers(10);
        numbers.reinit(10);
        numbers.reverse();
        BXArray<int> moved(std::move(numbers));
        moved.clear();
    }
    EXPECT_EQ(record.releases(), 1);
    EXPECT_EQ((Sizes{10 * sizeof(int)}), record.stop());
}

TEST(ArrayMemory, OfTextsIsAnArrayOfPointers) {
    AllocationRecord record;
    { const BXArray<BXString> texts(10); }
    EXPECT_EQ((Sizes{10 * sizeof(char*)}), record.stop());
}
