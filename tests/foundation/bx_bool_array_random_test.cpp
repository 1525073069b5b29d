// Long sequences of mixed operations on two bit arrays, held against ReferenceBits after each.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "foundation/bx_bool_array.h"
#include "tests/foundation/reference_bits.h"

namespace {

constexpr int kOperations = 26;
// Enough in all four tests for 100,000 cases of each operation.
constexpr int kSteps = kOperations * 26000;

class RandomBits {
public:
    explicit RandomBits(unsigned int seed) : m_random(seed) {}

    // Does one random operation to both; its number.
    int step() {
        const int operation = below(kOperations);
        apply(operation);
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
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    bool coin() { return below(2) != 0; }
    // An index in, beyond or before an array of this count.
    int index(int count) { return below(count + 20) - 3; }

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

    void apply(int operation) {
        const int count = m_a.count();
        const int i = index(count), n = below(40) - 4;
        const bool value = coin();
        switch (operation) {
            case 0:
                m_a.assign(below(90), value);
                m_expectedA.assign(m_a.count(), value);
                break;
            case 1:
                assignBytes();
                break;
            case 2:
                assignList(below(100) + 1);
                break;
            case 3:
                m_a.copy(m_b, value);
                m_expectedA = m_expectedB;
                break;
            case 4:
                m_a.swap(m_b);
                std::swap(m_expectedA, m_expectedB);
                break;
            case 5:
                m_a.resize(below(90), value);
                m_expectedA.resize(m_a.count(), value);
                break;
            case 6:
                m_a.setAutoResize(i);
                m_expectedA.writeGrowing(i, true);
                break;
            case 7:
                m_a.clearAutoResize(i);
                m_expectedA.writeGrowing(i, false);
                break;
            case 8:
                m_a.toggleAutoResize(i);
                m_expectedA.writeGrowing(i, !m_expectedA.get(i));
                break;
            case 9:
                m_a.set(i, n);
                m_expectedA.writeRange(i, n, true);
                break;
            case 10:
                m_a.clear(i, n);
                m_expectedA.writeRange(i, n, false);
                break;
            case 11:
                writeListed(indexes(count), value);
                break;
            case 12:
                value ? m_a.setAll() : m_a.clearAll();
                m_expectedA.assign(count, value);
                break;
            case 13:
                value ? m_a.toggleAll() : m_a.inverse();
                m_expectedA.bits.flip();
                break;
            case 14:
                writeBytesAround(indexesWithin(count), value);
                break;
            case 15:
            case 16:
                m_a.insert(i, value);
                m_expectedA.insert(i, value);
                break;
            case 17:
            case 18:
                m_a.erase(i);
                m_expectedA.erase(i);
                break;
            case 19:
                value ? m_a.merge(m_b) : m_a.set(m_b);
                m_expectedA.merge(m_expectedB);
                break;
            case 20:
                m_a.inter(m_b);
                m_expectedA.inter(m_expectedB);
                break;
            case 21:
                m_a.clear(m_b);
                m_expectedA.clear(m_expectedB);
                break;
            case 22:
                m_a.toggle(m_b);
                m_expectedA.toggle(m_expectedB);
                break;
            case 23:
                m_b = BXBoolArray(m_a);
                m_expectedB = m_expectedA;
                break;
            case 24:
                if (count > 0) writeOne(below(count), value);
                break;
            default:
                if (below(20) == 0) {
                    m_a.freeData();
                    m_expectedA.bits.clear();
                }
                break;
        }
    }

    void writeOne(int i, bool value) {
        if (coin()) {
            m_a.set(i, value);
            m_expectedA.write(i, value);
        } else {
            m_a.toggle(i);
            m_expectedA.write(i, !m_expectedA.get(i));
        }
    }

    void assignBytes() {
        char bytes[30];
        for (char& byte : bytes) byte = static_cast<char>(below(256));
        const int n = below(100);
        m_a.assign(n, bytes);
        m_expectedA.assign(n, false);
        for (int i = 0; i < n; ++i) m_expectedA.write(i, bytes[i / 8] >> (i % 8) & 1);
    }

    void assignList(int size) {
        const std::vector<int> list = indexesWithin(size);
        const bool keep = coin();
        m_a.assign(static_cast<int>(list.size()), list.data(), keep ? -1 : size);
        if (!keep) m_expectedA.assign(size, false);
        m_expectedA.writeListed(list, true);
    }

    void writeListed(const std::vector<int>& list, bool value) {
        const int n = static_cast<int>(list.size());
        if (coin()) {
            value ? m_a.set(n, list.data()) : m_a.clear(n, list.data());
        } else {
            value ? m_a.set(asArray(list)) : m_a.clear(asArray(list));
        }
        m_expectedA.writeListed(list, value);
    }

    void writeBytesAround(const std::vector<int>& list, bool value) {
        value ? m_a.setAllModifiedIndices(asArray(list))
              : m_a.clearAllModifiedIndices(asArray(list));
        m_expectedA.writeBytesAround(list, value);
    }

    void expectOneTheSame(const BXBoolArray& bits, const ReferenceBits& expected) {
        ASSERT_EQ(bits.count(), expected.count());
        EXPECT_GE(bits.capacity(), bits.count());
        EXPECT_EQ(bits.data()[-1], 1) << "the guard before the bits";
        EXPECT_EQ(*bits.dataEnd(), 1) << "the guard behind the bits";
        for (int i = 0; i < bits.count(); ++i) {
            if (bits.get(i) != expected.get(i)) ADD_FAILURE() << "bit " << i;
        }
        EXPECT_FALSE(bits.get(bits.count()));
        const int from = index(bits.count()), to = index(bits.count());
        const bool value = coin();
        EXPECT_EQ(bits.findFirst(value, from), expected.findFirst(value, from)) << from;
        EXPECT_EQ(bits.findLast(value, from), expected.findLast(value, from)) << from;
        EXPECT_EQ(bits.getNumberOfBitSetWithin(from, to), expected.countWithin(from, to, true));
        EXPECT_EQ(bits.getNumberOfBitClearedWithin(from, to),
                  expected.countWithin(from, to, false));
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

}  // namespace

class BoolArrayRandom : public testing::TestWithParam<unsigned int> {};

TEST_P(BoolArrayRandom, DoesWhatTheReferenceDoesAfterEachOfManyMixedOperations) {
    RandomBits random(GetParam());
    for (int i = 0; i < kSteps; ++i) {
        const int operation = random.step();
        random.expectTheSame();
        if (testing::Test::HasFailure()) FAIL() << "step " << i << ", operation " << operation;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, BoolArrayRandom, testing::Values(1u, 2u, 3u, 4u));

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
