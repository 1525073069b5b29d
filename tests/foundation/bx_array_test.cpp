#include "foundation/bx_array.h"

#include <gtest/gtest.h>

#include <set>

#include "foundation/bx_string.h"

namespace {

// Stands for the records that arrays are made anew of.
struct Record {
    Record() {
        ++s_alive;
        ++s_made;
    }
    Record(const Record& other) : name(other.name) { ++s_alive; }
    Record& operator=(const Record&) = default;
    ~Record() { --s_alive; }

    BXString name = "new";
    static int s_alive;
    static int s_made;  // by default, not as copies
};

int Record::s_alive = 0;
int Record::s_made = 0;

}  // namespace

TEST(BXArray, OffersTheOperationsOfTheVector) {
    BXArray<int> array;
    EXPECT_TRUE(array.empty());
    array.reserve(10);
    EXPECT_GE(array.capacity(), 10u);
    array.push_back(1);
    array.resize(3, 7);
    EXPECT_EQ((BXArray<int>{1, 7, 7}), array);
    array.erase(array.begin() + 1, array.end());
    EXPECT_EQ((BXArray<int>{1}), array);
    EXPECT_EQ(1, array[0]);
}

TEST(BXArray, LiesContiguously) {
    const BXArray<int> array{1, 2, 3};
    EXPECT_EQ(&array[0] + 2, &array[2]);
}

TEST(BXArray, CopiesDeep) {
    BXArray<BXString> array{"a", BXString()};
    BXArray<BXString> copy = array;
    EXPECT_NE(array[0].data(), copy[0].data());
    copy[0] = "x";
    EXPECT_STREQ("a", array[0].c_str());
    EXPECT_TRUE(copy[1].isNull());
}

TEST(BXArray, DestroysItsElements) {
    {
        BXArray<Record> array(5);
        EXPECT_EQ(5, Record::s_alive);
        array.resize(2);
        EXPECT_EQ(2, Record::s_alive);
        array.clear();
        EXPECT_EQ(0, Record::s_alive);
        array.resize(3);
    }
    EXPECT_EQ(0, Record::s_alive);
}

TEST(BXArray, KeepsAnEmptyArrayReversed) {
    BXArray<BXString> array;
    array.reverse();
    EXPECT_TRUE(array.empty());
}

TEST(BXArray, KeepsAOneElementArrayReversed) {
    BXArray<BXString> array{"a"};
    const char* const buffer = array[0].data();
    array.reverse();
    ASSERT_EQ(1u, array.size());
    EXPECT_STREQ("a", array[0].c_str());
    EXPECT_EQ(buffer, array[0].data());
}

TEST(BXArray, SwapsTheEndsOfThreeElementsAndLeavesTheMiddleOne) {
    BXArray<BXString> array{"a", "b", "c"};
    const std::set<const void*> ends{array[0].data(), array[2].data()};
    const char* const middle = array[1].data();
    array.reverse();
    EXPECT_EQ((BXArray<BXString>{"c", "b", "a"}), array);
    EXPECT_EQ(middle, array[1].data());
    EXPECT_FALSE(ends.count(array[0].data()) && ends.count(array[2].data()))
        << "the ends are copies, not the old buffers changed about";
}

TEST(BXArray, ReversesAnEvenNumberOfElements) {
    BXArray<BXString> array{"a", "b", "c", "d"};
    array.reverse();
    EXPECT_EQ((BXArray<BXString>{"d", "c", "b", "a"}), array);
}

TEST(BXArray, KeepsNullStringsNullReversed) {
    BXArray<BXString> array{BXString(), "b", "", BXString(), "e"};
    array.reverse();
    EXPECT_STREQ("e", array[0].c_str());
    EXPECT_TRUE(array[1].isNull());
    EXPECT_FALSE(array[2].isNull());
    EXPECT_TRUE(array[2].isEmpty());
    EXPECT_STREQ("b", array[3].c_str());
    EXPECT_TRUE(array[4].isNull());
}

TEST(BXArray, ReversesElementsThatAreNoStrings) {
    BXArray<int> array{1, 2, 3, 4, 5};
    array.reverse();
    EXPECT_EQ((BXArray<int>{5, 4, 3, 2, 1}), array);
}

TEST(BXArray, IsMadeAnewOfCopiesOfOneElement) {
    BXArray<Record> array(5);
    for (Record& record : array) record.name = "old";
    Record::s_made = 0;
    array.reinit(3);
    EXPECT_EQ(1, Record::s_made);
    ASSERT_EQ(3u, array.size());
    for (const Record& record : array) EXPECT_STREQ("new", record.name.c_str());
}

TEST(BXArray, EmptiesItselfWhenReinitialisedWithZero) {
    BXArray<Record> array(5);
    array.reinit(0);
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(0, Record::s_alive);
}

TEST(BXArray, EmptiesItselfWhenReinitialisedWithANegativeCount) {
    BXArray<Record> array(5);
    array.reinit(-1);
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(0, Record::s_alive);
}

TEST(BXArray, HoldsOnlyNewElementsWhenReinitialised) {
    BXArray<Record> array(5);
    for (Record& record : array) record.name = "old";
    array.reinit(3);
    ASSERT_EQ(3u, array.size());
    for (const Record& record : array) EXPECT_STREQ("new", record.name.c_str());
    EXPECT_EQ(3, Record::s_alive);
    array.reinit(7);
    EXPECT_EQ(7u, array.size());
    EXPECT_STREQ("new", array[6].name.c_str());
}
