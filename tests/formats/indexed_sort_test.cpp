#include "formats/indexed_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Points = BXArray<BXVector3f>;

BXArray<int> sorted(const Points& points, float tolerance) {
    BXArray<int> indices = {7, 7};
    BXVector3f::indexedSort(indices, points, tolerance);
    return indices;
}

// The rule word by word.
bool goesBefore(const Points& points, float t, int a, int b) {
    const BXVector3f &p = points[static_cast<std::size_t>(a)],
                     &q = points[static_cast<std::size_t>(b)];
    if (p.x - q.x < -t) return true;
    if (p.x - q.x > t) return false;
    if (p.y - q.y < -t) return true;
    if (p.y - q.y > t) return false;
    if (p.z - q.z < -t) return true;
    if (p.z - q.z > t) return false;
    return a < b;
}

// Every index once.
void expectPermutation(BXArray<int> indices, std::size_t count) {
    ASSERT_EQ(indices.size(), count);
    std::sort(indices.begin(), indices.end());
    for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(indices[i], static_cast<int>(i));
}

Points randomPoints(std::mt19937& random, std::size_t count, int values, float step) {
    Points points(count);
    for (BXVector3f& p : points) {
        const auto value = [&] {
            return static_cast<float>(random() % static_cast<unsigned>(values)) * step;
        };
        p = BXVector3f(value(), value(), value());
    }
    return points;
}

}  // namespace

TEST(IndexedSort, OfNoPointsIsEmpty) {
    EXPECT_TRUE(sorted({}, 0.0f).empty());
    EXPECT_TRUE(sorted({}, 1.0f).empty());
}

TEST(IndexedSort, OfNoPointsLeavesAFreshArrayAlone) {
    BXArray<int> indices;
    BXVector3f::indexedSort(indices, {}, 0.0f);
    EXPECT_TRUE(indices.empty());
    EXPECT_EQ(indices.capacity(), 0u);
}

TEST(IndexedSort, KeepsEqualPointsInTheOrderOfTheirIndexes) {
    EXPECT_EQ(sorted({{1, 0, 0}, {0, 0, 0}, {1, 0, 0}}, 0.0f), (BXArray<int>{1, 0, 2}));
}

TEST(IndexedSort, LooksAtXThenYThenZ) {
    EXPECT_EQ(sorted({{1, 0, 0}, {0, 2, 0}, {0, 1, 3}, {0, 1, 2}}, 0.0f),
              (BXArray<int>{3, 2, 1, 0}));
}

TEST(IndexedSort, TakesCoordinatesWithinTheToleranceForTheSame) {
    EXPECT_EQ(sorted({{0.25f, 2, 0}, {0, 1, 0}, {0.5f, 0, 0}}, 0.25f), (BXArray<int>{1, 2, 0}));
    EXPECT_EQ(sorted({{0.25f, 0, 0}, {0, 0, 0}}, 0.25f), (BXArray<int>{0, 1})) << "the bound is in";
    EXPECT_EQ(sorted({{0.26f, 0, 0}, {0, 0, 0}}, 0.25f), (BXArray<int>{1, 0}));
    EXPECT_EQ(sorted({{0, 0.25f, 2}, {0, 0, 1}, {0, 0.5f, 0}}, 0.25f), (BXArray<int>{1, 2, 0}));
    EXPECT_EQ(sorted({{0, 0.25f, 0}, {0, 0, 0}}, 0.25f), (BXArray<int>{0, 1}));
    EXPECT_EQ(sorted({{0, 0.26f, 0}, {0, 0, 0}}, 0.25f), (BXArray<int>{1, 0}));
    EXPECT_EQ(sorted({{0, 0, 0.25f}, {0, 0, 0}}, 0.25f), (BXArray<int>{0, 1}));
    EXPECT_EQ(sorted({{0, 0, 0.26f}, {0, 0, 0}}, 0.25f), (BXArray<int>{1, 0}));
}

TEST(IndexedSort, MovesNoPoint) {
    const Points points = {{3, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    const Points before = points;
    sorted(points, 0.0f);
    EXPECT_EQ(points, before);
}

TEST(IndexedSort, GivesTheOrderOfTheStandardLibraryWhereTheComparisonIsAnOrder) {
    std::mt19937 random(17);
    for (int round = 0; round < 300; ++round) {
        // Steps wider than the tolerance: within it means the same.
        const Points points = randomPoints(random, random() % 2000, 1 + round % 40, 1.0f);
        const float tolerance = round % 2 ? 0.25f : 0.0f;
        std::vector<int> expected(points.size());
        std::iota(expected.begin(), expected.end(), 0);
        std::sort(expected.begin(), expected.end(),
                  [&](int a, int b) { return goesBefore(points, tolerance, a, b); });
        const BXArray<int> found = sorted(points, tolerance);
        ASSERT_TRUE(std::equal(found.begin(), found.end(), expected.begin(), expected.end()));
    }
}

TEST(IndexedSort, StaysInItsRangeWhereTheToleranceMakesNoOrder) {
    std::mt19937 random(23);
    for (int round = 0; round < 200; ++round) {
        const std::size_t count = random() % 3000;
        const Points points = randomPoints(random, count, 1000, 0.01f);
        expectPermutation(sorted(points, 0.05f * static_cast<float>(round % 20)), count);
    }
}

TEST(IndexedSort, StaysInItsRangeWithWhatIsNoNumber) {
    std::mt19937 random(29);
    const float odd[] = {std::numeric_limits<float>::quiet_NaN(),
                         std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(),
                         0.0f,
                         -0.0f,
                         1.0f};
    for (int round = 0; round < 200; ++round) {
        Points points(random() % 2000);
        for (BXVector3f& p : points) {
            p = BXVector3f(odd[random() % 6], odd[random() % 6], odd[random() % 6]);
        }
        for (const float tolerance : {0.0f, 0.5f, -1.0f, odd[0], odd[1]}) {
            expectPermutation(sorted(points, tolerance), points.size());
        }
    }
}

TEST(IndexedSort, CopesWithArraysThatAreSortedReversedOrAllTheSame) {
    for (const std::size_t count : {2u, 16u, 17u, 1000u, 100000u}) {
        Points up(count), down(count);
        for (std::size_t i = 0; i < count; ++i) {
            up[i].x = static_cast<float>(i);
            down[i].x = static_cast<float>(count - i);
        }
        BXArray<int> expected(count);
        std::iota(expected.begin(), expected.end(), 0);
        EXPECT_EQ(sorted(up, 0.0f), expected);
        EXPECT_EQ(sorted(Points(count), 0.0f), expected);
        std::reverse(expected.begin(), expected.end());
        EXPECT_EQ(sorted(down, 0.0f), expected);
    }
}

TEST(IndexedSort, SortsWhateverHasAComparison) {
    const char* const names[] = {"pear", "apple", "fig", "apple"};
    BXArray<int> indices;
    indexedSort(indices, 4, names,
                [](const char* a, const char* b) { return std::string(a).compare(b); });
    EXPECT_EQ(indices, (BXArray<int>{1, 3, 2, 0}));
}

namespace {

// Decides what the elements are worth while they are compared, so that every pivot turns out to be
// among the least: whatever element the sort holds against undecided ones gets the next lowest
// worth.
struct Adversary {
    explicit Adversary(int n) : worth(static_cast<std::size_t>(n), n) {}

    int compare(int a, int b) {
        ++comparisons;
        const int undecided = static_cast<int>(worth.size());
        int &worthOfA = worth[static_cast<std::size_t>(a)],
            &worthOfB = worth[static_cast<std::size_t>(b)];
        if (worthOfA == undecided && worthOfB == undecided) {
            (a == candidate ? worthOfA : worthOfB) = decided++;
        }
        if (worthOfA == undecided) {
            candidate = a;
        } else if (worthOfB == undecided) {
            candidate = b;
        }
        return worthOfA < worthOfB ? -1 : worthOfA > worthOfB;
    }

    std::vector<int> worth;
    int decided = 0, candidate = 0;
    long comparisons = 0;
};

}  // namespace

TEST(IndexedSort, StaysFastAndRightAgainstAnAdversary) {
    constexpr int kCount = 20000;
    Adversary adversary(kCount);
    std::vector<int> ids(kCount);
    std::iota(ids.begin(), ids.end(), 0);
    BXArray<int> indices;
    indexedSort(indices, kCount, ids.data(), [&](int a, int b) { return adversary.compare(a, b); });
    // A quicksort alone would need some 100 million; n log n is 286,000.
    EXPECT_LT(adversary.comparisons, 3'000'000);
    expectPermutation(indices, kCount);
    const std::vector<int>& worth = adversary.worth;
    BXArray<int> again;
    indexedSort(again, kCount, worth.data(), [](int a, int b) { return a < b ? -1 : a > b; });
    std::vector<int> expected(ids);
    std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
        return worth[static_cast<std::size_t>(a)] < worth[static_cast<std::size_t>(b)];
    });
    EXPECT_TRUE(std::equal(again.begin(), again.end(), expected.begin(), expected.end()));
    EXPECT_EQ(indices, again) << "what was decided on the way is the order";
}
