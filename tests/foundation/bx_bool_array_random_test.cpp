// Long sequences of mixed operations on two bit arrays, held against ReferenceBits after each.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "foundation/bx_bool_array.h"
#include "tests/foundation/reference_bits.h"

namespace {

// In four tests with as many steps for each operation: over 100,000 random cases of each.
constexpr int kStepsForEach = 25800;
constexpr int kLeastForEach = 25000;

class RandomBits {
public:
    explicit RandomBits(unsigned int seed) : m_random(seed) {}

    static int operations() { return static_cast<int>(kOperations.size()); }

    // Does one random operation to both; its number.
    int step() {
        const int operation = below(operations());
        (this->*kOperations[static_cast<std::size_t>(operation)])();
        return operation;
    }

    void expectTheSame() {
        expectOneTheSame(m_a, m_expectedA);
        expectOneTheSame(m_b, m_expectedB);
        EXPECT_EQ(m_a == m_b, m_expectedA.equals(m_expectedB));
        EXPECT_EQ(m_a.hasInter(m_b), m_expectedA.hasInter(m_expectedB));
        EXPECT_EQ(m_a.bitTest(m_b), m_expectedA.bitTest(m_expectedB));
    }

private:
    using Operation = void (RandomBits::*)();
    static const std::vector<Operation> kOperations;

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    bool coin() { return below(2) != 0; }
    // An index in, beyond or before an array of this count.
    int index(int count) { return below(count + 20) - 3; }
    int anyIndex() { return index(m_a.count()); }
    int anyLength() { return below(40) - 4; }

    std::vector<int> indexes(int count) {
        std::vector<int> list(static_cast<std::size_t>(below(6)));
        for (int& i : list) i = index(count);
        return list;
    }

    std::vector<int> indexesWithin(int count) {
        std::vector<int> list(count > 0 ? static_cast<std::size_t>(below(6)) : 0);
        for (int& i : list) i = below(count);
        return list;
    }

    static BXArray<int> asArray(const std::vector<int>& list) {
        return BXArray<int>(list.begin(), list.end());
    }

    // So that the operations on single bits, which check nothing, have one.
    int someBit() {
        if (m_a.count() == 0) resizeTo(below(90) + 1, coin());
        return below(m_a.count());
    }

    void resizeTo(int n, bool fill) {
        m_a.resize(n, fill);
        m_expectedA.resize(n, fill);
    }

    void assignOneValue() {
        const int n = below(90);
        const bool value = coin();
        m_a.assign(n, value);
        m_expectedA.assign(n, value);
    }

    void assignBytes() {
        char bytes[30];
        for (char& byte : bytes) byte = static_cast<char>(below(256));
        const int n = below(100);
        m_a.assign(n, bytes);
        m_expectedA.assign(n, false);
        for (int i = 0; i < n; ++i) m_expectedA.write(i, bytes[i / 8] >> (i % 8) & 1);
    }

    void assignListed() {
        const int size = below(100) + 1;
        const std::vector<int> list = indexesWithin(size);
        m_a.assign(static_cast<int>(list.size()), list.data(), size);
        m_expectedA.assign(size, false);
        m_expectedA.writeListed(list, true);
    }

    void assignListedToWhatIsThere() {
        const std::vector<int> list = indexes(m_a.count());
        m_a.assign(static_cast<int>(list.size()), list.data(), -1);
        m_expectedA.writeListed(list, true);
    }

    void copy() {
        m_a.copy(m_b, coin());
        m_expectedA = m_expectedB;
    }

    void copyAssign() {
        const BXBoolArray result = (m_a = m_b);
        m_expectedA = m_expectedB;
        expectOneTheSame(result, m_expectedA);
    }

    void moveAssign() {
        m_b = BXBoolArray(m_a);
        m_expectedB = m_expectedA;
    }

    void swap() {
        m_a.swap(m_b);
        std::swap(m_expectedA, m_expectedB);
    }

    void resize() { resizeTo(below(90), coin()); }

    // The array is filled again: the next operations are to have bits to work on.
    void freeData() {
        m_a.freeData();
        m_expectedA.bits.clear();
        expectTheSame();
        assignBytes();
    }

    void clearArray() {
        m_a.clearArray();
        m_expectedA.bits.clear();
        expectTheSame();
        assignBytes();
    }

    void setAutoResize() {
        const int i = anyIndex();
        m_a.setAutoResize(i);
        m_expectedA.writeGrowing(i, true);
    }

    void clearAutoResize() {
        const int i = anyIndex();
        m_a.clearAutoResize(i);
        m_expectedA.writeGrowing(i, false);
    }

    void toggleAutoResize() {
        const int i = anyIndex();
        m_a.toggleAutoResize(i);
        m_expectedA.writeGrowing(i, !m_expectedA.get(i));
    }

    void setBit() {
        const int i = someBit();
        m_a.set(i);
        m_expectedA.write(i, true);
    }

    void clearBit() {
        const int i = someBit();
        m_a.clear(i);
        m_expectedA.write(i, false);
    }

    void writeBit() {
        const int i = someBit();
        const bool value = coin();
        m_a.set(i, value);
        m_expectedA.write(i, value);
    }

    void toggleBit() {
        const int i = someBit();
        m_a.toggle(i);
        m_expectedA.write(i, !m_expectedA.get(i));
    }

    void setRange() {
        const int i = anyIndex(), n = anyLength();
        m_a.set(i, n);
        m_expectedA.writeRange(i, n, true);
    }

    void clearRange() {
        const int i = anyIndex(), n = anyLength();
        m_a.clear(i, n);
        m_expectedA.writeRange(i, n, false);
    }

    void setListed() {
        const std::vector<int> list = indexes(m_a.count());
        m_a.set(static_cast<int>(list.size()), list.data());
        m_expectedA.writeListed(list, true);
    }

    void clearListed() {
        const std::vector<int> list = indexes(m_a.count());
        m_a.clear(static_cast<int>(list.size()), list.data());
        m_expectedA.writeListed(list, false);
    }

    void setArray() {
        const std::vector<int> list = indexes(m_a.count());
        m_a.set(asArray(list));
        m_expectedA.writeListed(list, true);
    }

    void clearListedArray() {
        const std::vector<int> list = indexes(m_a.count());
        m_a.clear(asArray(list));
        m_expectedA.writeListed(list, false);
    }

    void setAll() {
        m_a.setAll();
        m_expectedA.assign(m_a.count(), true);
    }

    void clearAll() {
        m_a.clearAll();
        m_expectedA.assign(m_a.count(), false);
    }

    void toggleAll() {
        m_a.toggleAll();
        m_expectedA.bits.flip();
    }

    void inverse() {
        m_a.inverse();
        m_expectedA.bits.flip();
    }

    void setAllModifiedIndices() {
        const std::vector<int> list = indexesWithin(m_a.count());
        m_a.setAllModifiedIndices(asArray(list));
        m_expectedA.writeBytesAround(list, true);
    }

    void clearAllModifiedIndices() {
        const std::vector<int> list = indexesWithin(m_a.count());
        m_a.clearAllModifiedIndices(asArray(list));
        m_expectedA.writeBytesAround(list, false);
    }

    void insert() {
        const int i = anyIndex();
        const bool value = coin();
        m_a.insert(i, value);
        m_expectedA.insert(i, value);
    }

    void erase() {
        const int i = anyIndex();
        m_a.erase(i);
        m_expectedA.erase(i);
    }

    void setOther() {
        m_a.set(m_b);
        m_expectedA.merge(m_expectedB);
    }

    void merge() {
        m_a.merge(m_b);
        m_expectedA.merge(m_expectedB);
    }

    void inter() {
        m_a.inter(m_b);
        m_expectedA.inter(m_expectedB);
    }

    void clearOther() {
        m_a.clear(m_b);
        m_expectedA.clear(m_expectedB);
    }

    void toggleOther() {
        m_a.toggle(m_b);
        m_expectedA.toggle(m_expectedB);
    }

    void expectOneTheSame(const BXBoolArray& bits, const ReferenceBits& expected) {
        ASSERT_EQ(bits.count(), expected.count());
        EXPECT_GE(bits.capacity(), bits.count());
        EXPECT_EQ(bits.data()[-1], 1) << "the guard before the bits";
        EXPECT_EQ(*bits.dataEnd(), 1) << "the guard behind the bits";
        for (int i = 0; i < bits.count(); ++i) {
            const bool value = expected.get(i);
            const unsigned char mask = static_cast<unsigned char>(value ? 1u << (i % 8) : 0u);
            if (bits.get(i) != value || bits[i] != value || bits.getNoSizeTest(i) != value ||
                bits.getAsMask(i) != mask) {
                ADD_FAILURE() << "bit " << i;
            }
        }
        EXPECT_FALSE(bits.get(bits.count()));
        const int from = index(bits.count()), to = index(bits.count());
        const bool value = coin();
        EXPECT_EQ(bits.findFirst(value, from), expected.findFirst(value, from)) << from;
        EXPECT_EQ(bits.findLast(value, from), expected.findLast(value, from)) << from;
        EXPECT_EQ(bits.getNumberOfBitSetWithin(from, to), expected.countWithin(from, to, true));
        EXPECT_EQ(bits.getNumberOfBitClearedWithin(from, to),
                  expected.countWithin(from, to, false));
        EXPECT_EQ(bits.findFirst(value), expected.findFirst(value, 0));
        EXPECT_EQ(bits.findLast(value), expected.findLast(value, expected.count() - 1));
        EXPECT_EQ(bits.getNumberOfBitSet(), expected.countWithin(0, expected.count(), true));
        EXPECT_EQ(bits.getNumberOfBitCleared(), expected.countWithin(0, expected.count(), false));
        BXArray<int> found = {1, 2, 3};
        const std::vector<int> listed = expected.indexes(value);
        EXPECT_EQ(value ? bits.getIndexesSet(found) : bits.getIndexesCleared(found),
                  !listed.empty());
        EXPECT_TRUE(std::equal(found.begin(), found.end(), listed.begin(), listed.end()));
    }

    std::mt19937 m_random;
    BXBoolArray m_a, m_b;
    ReferenceBits m_expectedA, m_expectedB;
};

const std::vector<RandomBits::Operation> RandomBits::kOperations = {
    &RandomBits::assignOneValue,
    &RandomBits::assignBytes,
    &RandomBits::assignListed,
    &RandomBits::assignListedToWhatIsThere,
    &RandomBits::copy,
    &RandomBits::copyAssign,
    &RandomBits::moveAssign,
    &RandomBits::swap,
    &RandomBits::resize,
    &RandomBits::freeData,
    &RandomBits::clearArray,
    &RandomBits::setAutoResize,
    &RandomBits::clearAutoResize,
    &RandomBits::toggleAutoResize,
    &RandomBits::setBit,
    &RandomBits::clearBit,
    &RandomBits::writeBit,
    &RandomBits::toggleBit,
    &RandomBits::setRange,
    &RandomBits::clearRange,
    &RandomBits::setListed,
    &RandomBits::clearListed,
    &RandomBits::setArray,
    &RandomBits::clearListedArray,
    &RandomBits::setAll,
    &RandomBits::clearAll,
    &RandomBits::toggleAll,
    &RandomBits::inverse,
    &RandomBits::setAllModifiedIndices,
    &RandomBits::clearAllModifiedIndices,
    &RandomBits::insert,
    &RandomBits::erase,
    &RandomBits::setOther,
    &RandomBits::merge,
    &RandomBits::inter,
    &RandomBits::clearOther,
    &RandomBits::toggleOther,
};

}  // namespace

class BoolArrayRandom : public testing::TestWithParam<unsigned int> {};

TEST_P(BoolArrayRandom, DoesWhatTheReferenceDoesAfterEachOfManyMixedOperations) {
    RandomBits random(GetParam());
    std::vector<int> cases(static_cast<std::size_t>(RandomBits::operations()));
    for (int i = 0; i < kStepsForEach * RandomBits::operations(); ++i) {
        const int operation = random.step();
        ++cases[static_cast<std::size_t>(operation)];
        random.expectTheSame();
        if (testing::Test::HasFailure()) FAIL() << "step " << i << ", operation " << operation;
    }
    EXPECT_GE(*std::min_element(cases.begin(), cases.end()), kLeastForEach);
}

INSTANTIATE_TEST_SUITE_P(Seeds, BoolArrayRandom, testing::Values(1u, 2u, 3u, 4u));

// Long enough for several lines of memory at a time.
TEST(BoolArrayRandomLong, CombinesLongArraysAsTheReferenceDoes) {
    std::mt19937 random(6);
    const auto filled = [&random](BXBoolArray& bits, ReferenceBits& expected) {
        const int count = static_cast<int>(random() % 9000);
        bits.assign(count, false);
        expected.assign(count, false);
        for (int i = 0; i < count; ++i) {
            if (random() % 3) continue;
            bits.set(i);
            expected.write(i, true);
        }
    };
    const auto rowOf = [](const BXBoolArray& bits) {
        std::vector<bool> row;
        for (int i = 0; i < bits.count(); ++i) row.push_back(bits.get(i));
        return row;
    };
    for (int round = 0; round < 400; ++round) {
        BXBoolArray a, b;
        ReferenceBits expectedA, expectedB;
        filled(a, expectedA);
        filled(b, expectedB);
        ASSERT_EQ(a.hasInter(b), expectedA.hasInter(expectedB));
        ASSERT_EQ(a.bitTest(b), expectedA.bitTest(expectedB));
        switch (round % 4) {
            case 0:
                a.merge(b);
                expectedA.merge(expectedB);
                break;
            case 1:
                a.inter(b);
                expectedA.inter(expectedB);
                break;
            case 2:
                a.clear(b);
                expectedA.clear(expectedB);
                break;
            default:
                a.toggle(b);
                expectedA.toggle(expectedB);
                break;
        }
        ASSERT_EQ(rowOf(a), expectedA.bits) << round;
        ASSERT_EQ(rowOf(b), expectedB.bits) << round;
        ASSERT_EQ(a.getNumberOfBitSet(), expectedA.countWithin(0, expectedA.count(), true));
    }
}

// Sparse and full arrays, long enough for the steps of several words.
TEST(BoolArrayRandomLong, FindsCountsAndListsInLongArraysAsTheReferenceDoes) {
    std::mt19937 random(5);
    for (int round = 0; round < 1000; ++round) {
        const int count = static_cast<int>(random() % 3000) + 1;
        const bool background = round % 2 != 0;
        BXBoolArray bits(count, background);
        ReferenceBits expected;
        expected.assign(count, background);
        for (auto i = random() % 5; i > 0; --i) {
            const int at = static_cast<int>(random() % static_cast<unsigned>(count));
            bits.set(at, !background);
            expected.write(at, !background);
        }
        for (int query = 0; query < 100; ++query) {
            const int start = static_cast<int>(random() % static_cast<unsigned>(count));
            const int to = static_cast<int>(random() % static_cast<unsigned>(count + 1));
            const bool value = random() % 2 != 0;
            ASSERT_EQ(bits.findFirst(value, start), expected.findFirst(value, start));
            ASSERT_EQ(bits.findLast(value, start), expected.findLast(value, start));
            ASSERT_EQ(bits.getNumberOfBitSetWithin(start, to),
                      expected.countWithin(start, to, true));
        }
        BXArray<int> found;
        bits.getIndexesSet(found);
        const std::vector<int> listed = expected.indexes(true);
        ASSERT_TRUE(std::equal(found.begin(), found.end(), listed.begin(), listed.end()));
    }
}
