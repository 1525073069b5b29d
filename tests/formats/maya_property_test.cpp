// What holds of any scene, tried on random ones and, where there are some, on scenes saved by Maya.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "tests/formats/maya_fixture.h"
#include "tests/formats/maya_random.h"
#include "tests/formats/maya_reference.h"

namespace {

using maya_reference::Loop;
using maya_reference::Mesh;
using maya_reference::Scene;

class MayaProperty : public MayaFixture {};
class MayaPropertyRandom : public MayaFixture, public testing::WithParamInterface<unsigned int> {};

std::vector<int> rewound(const std::vector<int>& edges) {
    std::vector<int> result;
    for (auto it = edges.rbegin(); it != edges.rend(); ++it) result.push_back(~*it);
    return result;
}

// The corner of a loop of n that comes to be corner i when it is rewound.
std::size_t rewoundCorner(std::size_t i, std::size_t n) {
    return (n - i) % n;
}

// The loop's lists but that of UV set 0, as the other way round where it was rewound.
std::map<std::pair<std::string, int>, std::vector<int>> furtherLists(const Loop& loop,
                                                                     bool reverse) {
    auto lists = loop.lists;
    lists.erase({"mu", 0});
    if (!reverse) return lists;
    for (auto& list : lists) {
        const std::vector<int> before = list.second;
        for (std::size_t i = 0; i < before.size(); ++i) {
            list.second[i] = before[rewoundCorner(i, before.size())];
        }
    }
    return lists;
}

void expectSameLoop(const Mesh& before, const Loop& a, const Mesh& after, const Loop& b,
                    bool reverse) {
    ASSERT_EQ(a.isHole, b.isHole);
    ASSERT_EQ(reverse ? rewound(a.edges) : a.edges, b.edges);
    ASSERT_EQ(furtherLists(a, reverse), furtherLists(b, false));
    ASSERT_EQ(b.lists.count({"mu", 0}) != 0, before.usesUVs());
    for (std::size_t i = 0; i < b.edges.size(); ++i) {
        const auto uv = before.uv(a, reverse ? rewoundCorner(i, a.edges.size()) : i);
        const auto written = after.uv(b, i);
        // Five places; and a float's precision where the number is large.
        ASSERT_NEAR(uv[0], written[0], 5.1e-6 + std::fabs(uv[0]) * 1.2e-7);
        ASSERT_NEAR(uv[1], written[1], 5.1e-6 + std::fabs(uv[1]) * 1.2e-7);
    }
}

// The same faces with the same UVs at their corners, wound as before or the other way.
void expectSameFaces(const Scene& before, const Scene& after, bool reverse) {
    ASSERT_EQ(before.meshes.size(), after.meshes.size());
    for (std::size_t m = 0; m < before.meshes.size(); ++m) {
        const Mesh &a = before.meshes[m], &b = after.meshes[m];
        ASSERT_EQ(a.faces.size(), b.faces.size());
        for (std::size_t f = 0; f < a.faces.size(); ++f) {
            ASSERT_EQ(a.faces[f].size(), b.faces[f].size());
            for (std::size_t l = 0; l < a.faces[f].size(); ++l) {
                ASSERT_NO_FATAL_FAILURE(
                    expectSameLoop(a, a.faces[f][l], b, b.faces[f][l], reverse));
            }
        }
    }
}

void expectSameEdges(const Scene& before, const Scene& after) {
    for (std::size_t m = 0; m < before.meshes.size(); ++m) {
        ASSERT_EQ(before.meshes[m].edges.size(), after.meshes[m].edges.size());
        for (std::size_t e = 0; e < before.meshes[m].edges.size(); ++e) {
            ASSERT_EQ(before.meshes[m].edges[e][0], after.meshes[m].edges[e][0]);
            ASSERT_EQ(before.meshes[m].edges[e][1], after.meshes[m].edges[e][1]);
        }
    }
}

// A point of its own for each corner.
void expectSplit(const Scene& scene) {
    for (const Mesh& mesh : scene.meshes) {
        if (!mesh.usesUVs()) continue;
        std::vector<int> uses(mesh.uvs.size());
        for (const auto& face : mesh.faces) {
            for (const Loop& loop : face) {
                for (const int uv : loop.lists.at({"mu", 0}))
                    ++uses.at(static_cast<std::size_t>(uv));
            }
        }
        ASSERT_EQ(uses, std::vector<int>(mesh.uvs.size(), 1));
    }
}

}  // namespace

// 10,000 scenes in four parts that run side by side.
TEST_P(MayaPropertyRandom, KeepsFacesEdgesAndTextThroughMergeAndSplit) {
    std::mt19937 random(GetParam());
    int changed = 0;
    for (int round = 0; round < 2500; ++round) {
        SCOPED_TRACE(round);
        const std::string text = randomMayaScene(random);
        const Scene scene = maya_reference::read(text);

        const std::string once = merged(text);
        const Scene sceneOnce = maya_reference::read(once);
        ASSERT_NO_FATAL_FAILURE(expectSameFaces(scene, sceneOnce, false));
        ASSERT_NO_FATAL_FAILURE(expectSameEdges(scene, sceneOnce));
        ASSERT_EQ(scene.restOfRest, sceneOnce.restOfRest);

        const std::string apart = split(once);
        const Scene sceneApart = maya_reference::read(apart);
        ASSERT_NO_FATAL_FAILURE(expectSameFaces(scene, sceneApart, false));
        ASSERT_NO_FATAL_FAILURE(expectSplit(sceneApart));
        ASSERT_EQ(sceneOnce.rest, sceneApart.rest);
        ASSERT_EQ(merged(apart), once);
        ASSERT_EQ(split(apart), apart);

        if (round % 4 == 0) {
            const std::string inMayasForm = asMayaWritesIt(text);
            changed += inMayasForm != text;
            const std::string fromMaya = merged(inMayasForm);
            ASSERT_NO_FATAL_FAILURE(
                expectSameFaces(sceneApart, maya_reference::read(split(fromMaya)), false));
        }

        BXVek::s_exportReverse = BXVek::s_importReverse = true;
        const std::string mirrored = merged(text);
        ASSERT_NO_FATAL_FAILURE(expectSameFaces(scene, maya_reference::read(mirrored), true));
        const std::string back = split(mirrored);
        ASSERT_NO_FATAL_FAILURE(expectSameFaces(scene, maya_reference::read(back), false));
        ASSERT_NO_FATAL_FAILURE(
            expectSameFaces(scene, maya_reference::read(merged(merged(text))), false));
        BXVek::s_exportReverse = BXVek::s_importReverse = false;
        if (HasFailure()) FAIL() << text;
    }
    EXPECT_GT(changed, 100);
}

INSTANTIATE_TEST_SUITE_P(Seeds, MayaPropertyRandom, testing::Values(1u, 2u, 3u, 4u));

// The number stands for the text of 300 scenes, merged and split: every build has to write the
// same.
TEST_F(MayaProperty, WritesTheSameBytesInEveryBuild) {
    std::mt19937 random(99);
    std::uint64_t number = 14695981039346656037u;
    for (int round = 0; round < 300; ++round) {
        const std::string once = merged(randomMayaScene(random));
        for (const char c : once + split(once)) {
            number = (number ^ static_cast<unsigned char>(c)) * 1099511628211u;
        }
    }
    EXPECT_EQ(number, UINT64_C(202169664182882153));
}

TEST_F(MayaProperty, HoldsOfScenesSavedByMaya) {
    const char* const folder = std::getenv("VEK_MAYA_SCENES");
    if (!folder) GTEST_SKIP() << "VEK_MAYA_SCENES names no folder of scenes";
    int scenes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".ma") continue;
        SCOPED_TRACE(entry.path().string());
        ++scenes;
        const std::string text = readFile(entry.path().string());
        const Scene scene = maya_reference::read(text);
        const std::string apart = split(text);
        const Scene sceneApart = maya_reference::read(apart);
        expectSameFaces(scene, sceneApart, false);
        expectSplit(sceneApart);
        EXPECT_EQ(scene.rest, sceneApart.rest);
        EXPECT_EQ(split(apart), apart);
        BXVek::s_importReverse = true;
        expectSameFaces(scene, maya_reference::read(split(text)), true);
        expectSameFaces(scene, maya_reference::read(split(split(text))), false);
        BXVek::s_importReverse = false;

        // The merge knows a part of Maya's forms; whether it takes the scene or refuses it, nothing
        // is lost.
        writeFile(path(), text);
        if (!BXUVMergeAlgo::mergeUVsInMayaFile(path().c_str())) {
            EXPECT_EQ(readFile(path()), text);
            continue;
        }
        const std::string once = readFile(path());
        const Scene sceneOnce = maya_reference::read(once);
        expectSameEdges(scene, sceneOnce);
        EXPECT_EQ(scene.restOfRest, sceneOnce.restOfRest);
        EXPECT_EQ(merged(once), once);
        const std::string onceApart = split(once);
        expectSameFaces(scene, maya_reference::read(onceApart), false);
        EXPECT_EQ(split(onceApart), onceApart);
        if (!mergeRefuses(onceApart)) {
            EXPECT_EQ(merged(split(merged(onceApart))), merged(onceApart));
        }
    }
    EXPECT_GT(scenes, 0);
}
