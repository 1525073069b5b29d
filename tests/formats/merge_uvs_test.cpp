#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <numeric>
#include <random>

#include "formats/bx_uv_merge_algo.h"

namespace {

using UVs = BXArray<BXVector2f>;
using Ints = BXArray<int>;

// Corner chains walked one by one, as the numbering is stated.
void referenceMerge(UVs& uvs, Ints& uvIndices, const Ints& vertexIndices, int vertexCount) {
    const int n = static_cast<int>(vertexIndices.size());
    if (vertexCount < 0) {
        vertexCount = 0;
        for (const int v : vertexIndices) vertexCount = std::max(vertexCount, v + 1);
    }
    if (!uvIndices.empty()) {
        UVs perCorner(static_cast<std::size_t>(n));
        for (std::size_t i = 0; i < perCorner.size(); ++i) {
            if (uvIndices[i] >= 0) perCorner[i] = uvs[static_cast<std::size_t>(uvIndices[i])];
        }
        uvs = perCorner;
    }
    Ints head(static_cast<std::size_t>(vertexCount), -1), next(static_cast<std::size_t>(n), -1);
    for (int i = 0; i < n; ++i) {
        const int v = vertexIndices[static_cast<std::size_t>(i)];
        if (v < 0) continue;
        next[static_cast<std::size_t>(i)] = head[static_cast<std::size_t>(v)];
        head[static_cast<std::size_t>(v)] = i;
    }
    uvIndices.assign(static_cast<std::size_t>(n), -1);
    int k = 0;
    for (const int first : head) {
        for (int c = first; c >= 0; c = next[static_cast<std::size_t>(c)]) {
            if (uvIndices[static_cast<std::size_t>(c)] != -1) continue;
            uvIndices[static_cast<std::size_t>(c)] = k;
            for (int d = next[static_cast<std::size_t>(c)]; d >= 0;
                 d = next[static_cast<std::size_t>(d)]) {
                if (uvs[static_cast<std::size_t>(d)] == uvs[static_cast<std::size_t>(c)]) {
                    uvIndices[static_cast<std::size_t>(d)] = k;
                }
            }
            ++k;
        }
    }
    UVs points(static_cast<std::size_t>(k));
    for (std::size_t i = 0; i < uvIndices.size(); ++i) {
        if (uvIndices[i] >= 0) points[static_cast<std::size_t>(uvIndices[i])] = uvs[i];
    }
    uvs = points;
}

const Ints kTwoTriangles = {0, 1, 2, 2, 1, 3};

}  // namespace

TEST(MergeUVs, SharesThePointsOfTwoTrianglesAlongTheirEdge) {
    UVs uvs = {{0, 0}, {1, 0}, {0, 1}, {0, 1}, {1, 0}, {1, 1}};
    Ints indices = {0, 1, 2, 3, 4, 5};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, kTwoTriangles, 4));
    EXPECT_EQ(uvs, (UVs{{0, 0}, {1, 0}, {0, 1}, {1, 1}}));
    EXPECT_EQ(indices, (Ints{0, 1, 2, 2, 1, 3}));
}

TEST(MergeUVs, KeepsTwoPointsWhereASharedVertexHasTwoUVs) {
    UVs uvs = {{0, 0}, {1, 0}, {0, 1}, {0, 1}, {1, 0.5f}, {1, 1}};
    Ints indices = {0, 1, 2, 3, 4, 5};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, kTwoTriangles, 4));
    EXPECT_EQ(uvs.size(), 5u);
    // In a vertex from its last corner to its first.
    EXPECT_EQ(indices, (Ints{0, 2, 3, 3, 1, 4}));
    EXPECT_TRUE((uvs[1] == BXVector2f{1, 0.5f}));
    EXPECT_TRUE((uvs[2] == BXVector2f{1, 0}));
}

TEST(MergeUVs, TakesOneUVPerCornerWhereThereAreNoIndices) {
    UVs uvs = {{0, 0}, {1, 0}, {0, 1}, {0, 1}, {1, 0}, {1, 1}};
    Ints indices;
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, kTwoTriangles, 4));
    EXPECT_EQ(uvs, (UVs{{0, 0}, {1, 0}, {0, 1}, {1, 1}}));
    EXPECT_EQ(indices, (Ints{0, 1, 2, 2, 1, 3}));
}

TEST(MergeUVs, RejectsEmptyArraysAndChangesNothing) {
    UVs none, one = {{1, 2}};
    Ints indices = {7}, noVertices;
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVs(none, indices, kTwoTriangles, 4));
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVs(one, indices, noVertices, 4));
    EXPECT_EQ(indices, Ints{7});
    EXPECT_EQ(one.size(), 1u);
}

TEST(MergeUVs, NeverSharesAPointAcrossVertices) {
    UVs uvs = {{1, 1}};
    Ints indices = {0, 0, 0};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {0, 1, 2}, -1));
    EXPECT_EQ(indices, (Ints{0, 1, 2}));
    EXPECT_EQ(uvs.size(), 3u);
}

TEST(MergeUVs, LeavesCornersWithoutAVertexAtMinusOne) {
    UVs uvs = {{1, 1}};
    Ints indices = {0, 0, 0};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {-1, 0, -5}, -1));
    EXPECT_EQ(indices, (Ints{-1, 0, -1}));
    UVs others = {{1, 1}};
    Ints none = {0};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(others, none, {-1}, -1));
    EXPECT_TRUE(others.empty());
}

TEST(MergeUVs, GivesACornerWithoutUVTheOrigin) {
    UVs uvs = {{1, 1}};
    Ints indices = {-1, 0};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {0, 0}, 1));
    EXPECT_EQ(indices, (Ints{1, 0}));
    EXPECT_TRUE((uvs[1] == BXVector2f{0, 0}));
}

TEST(MergeUVs, ComparesWithoutToleranceButTakesMinusZeroForZero) {
    UVs uvs = {{0.0f, 1.0f}, {-0.0f, 1.0f}, {0.0f, std::nextafter(1.0f, 2.0f)}};
    Ints indices;
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {0, 0, 0}, 1));
    EXPECT_EQ(indices, (Ints{1, 1, 0}));
}

TEST(MergeUVs, FindsNoEqualForNaN) {
    for (const std::size_t corners : {3u, 100u}) {
        UVs uvs(corners, BXVector2f{NAN, 0});
        Ints indices;
        EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, Ints(corners, 0), 1));
        EXPECT_EQ(uvs.size(), corners);
    }
}

TEST(MergeUVs, TakesAUVIndexBeyondItsArrayForNone) {
    UVs uvs = {{1, 1}};
    Ints indices = {0, 9};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {0, 0, 0}, 1));
    EXPECT_EQ(indices, (Ints{1, 0, 0}));
    EXPECT_EQ(uvs, (UVs{{0, 0}, {1, 1}}));
}

TEST(MergeUVs, RejectsAVertexThatIsNotBelowTheirCount) {
    for (const int count : {0, 1, 7}) {
        UVs uvs = {{1, 1}};
        Ints indices = {0, 0};
        EXPECT_FALSE(BXUVMergeAlgo::mergeUVs(uvs, indices, {0, 7}, count)) << count;
        EXPECT_EQ(indices, (Ints{0, 0}));
        EXPECT_EQ(uvs, (UVs{{1, 1}}));
    }
    UVs uvs = {{1, 1}};
    Ints indices = {0, 0};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {0, 7}, 8));
}

TEST(MergeUVs, NumbersByVertexHoweverLargeTheNumbersOfTheVerticesAre) {
    UVs uvs = {{1, 1}, {2, 2}, {3, 3}, {4, 4}};
    Ints indices = {0, 1, 2, 3};
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, {2000000000, 5, INT_MAX, -3}, -1));
    EXPECT_EQ(indices, (Ints{1, 0, 2, -1}));
    EXPECT_EQ(uvs, (UVs{{2, 2}, {1, 1}, {3, 3}}));
}

TEST(MergeUVs, GivesTheNumbersOfTheReferenceAtVerticesOfManyUVs) {
    std::mt19937 random(6);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 300; ++round) {
        // Zeros of both signs, NaNs, and some hundred values at a vertex.
        const auto part = [&] {
            const int n = below(16);
            return n == 0 ? 0.0f : n == 1 ? -0.0f : n == 2 ? NAN : static_cast<float>(n) / 3.0f;
        };
        const int corners = 1 + below(1500), vertices = 1 + below(3);
        UVs uvs;
        Ints indices, vertexIndices;
        for (int i = 0; i < corners; ++i) {
            uvs.push_back({part(), part()});
            vertexIndices.push_back(below(vertices));
        }
        UVs expectedUVs = uvs;
        Ints expectedIndices(static_cast<std::size_t>(corners));
        std::iota(expectedIndices.begin(), expectedIndices.end(), 0);
        referenceMerge(expectedUVs, expectedIndices, vertexIndices, vertices);
        EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, vertexIndices, vertices));
        ASSERT_EQ(indices, expectedIndices) << round;
        ASSERT_EQ(uvs.size(), expectedUVs.size()) << round;
        for (std::size_t i = 0; i < uvs.size(); ++i) {
            ASSERT_EQ(std::memcmp(&uvs[i], &expectedUVs[i], sizeof uvs[i]), 0) << round;
        }
    }
}

TEST(MergeUVs, GivesTheNumbersOfTheReferenceOnRandomMeshes) {
    std::mt19937 random(5);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 2000; ++round) {
        const int corners = 1 + below(200), vertices = 1 + below(6), values = 1 + below(60);
        UVs uvs;
        Ints indices, vertexIndices;
        for (int i = 0; i < values; ++i) {
            uvs.push_back({static_cast<float>(below(8)), static_cast<float>(below(8)) * -0.0f});
        }
        for (int i = 0; i < corners; ++i) {
            indices.push_back(below(values + 1) - 1);
            vertexIndices.push_back(below(vertices + 1) - 1);
        }
        UVs expectedUVs = uvs;
        Ints expectedIndices = indices;
        const int count = below(2) ? vertices : -1;
        referenceMerge(expectedUVs, expectedIndices, vertexIndices, count);
        EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, vertexIndices, count));
        ASSERT_EQ(indices, expectedIndices) << round;
        ASSERT_EQ(uvs.size(), expectedUVs.size()) << round;
        for (std::size_t i = 0; i < uvs.size(); ++i) {
            ASSERT_TRUE(uvs[i] == expectedUVs[i] &&
                        std::signbit(uvs[i].y) == std::signbit(expectedUVs[i].y))
                << round;
        }
    }
}

TEST(MergeUVs, MergingAgainChangesNothing) {
    UVs uvs = {{0, 0}, {1, 0}, {0, 1}, {0, 1}, {1, 0.5f}, {1, 1}};
    Ints indices = {0, 1, 2, 3, 4, 5};
    BXUVMergeAlgo::mergeUVs(uvs, indices, kTwoTriangles, 4);
    const UVs points = uvs;
    const Ints numbers = indices;
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVs(uvs, indices, kTwoTriangles, 4));
    EXPECT_EQ(indices, numbers);
    EXPECT_EQ(uvs.size(), points.size());
}
