// The weld of a mesh's UVs against meshoptimizer's vertex remap of the same corners, and "%.5f"
// against the C library's.

#include <meshoptimizer.h>

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench/support.h"
#include "formats/bx_uv_merge_algo.h"
#include "formats/number_formatter.h"

namespace {

constexpr int kSide = 1000;

// What tells two corners apart.
struct Corner {
    int vertex;
    float u, v;
};

std::vector<Corner> gridCorners(bool shuffled) {
    const int row = kSide + 1;
    std::vector<int> names(static_cast<std::size_t>(row * row));
    std::iota(names.begin(), names.end(), 0);
    std::mt19937 random(1);
    if (shuffled) std::shuffle(names.begin(), names.end(), random);
    std::vector<Corner> corners;
    for (int quad = 0; quad < kSide * kSide; ++quad) {
        const int x = quad % kSide, y = quad / kSide;
        const int places[4] = {y * row + x, y * row + x + 1, (y + 1) * row + x + 1,
                               (y + 1) * row + x};
        for (const int place : places) {
            corners.push_back({names[static_cast<std::size_t>(place)],
                               static_cast<float>(place % row) / kSide,
                               static_cast<float>(place / row) / kSide});
        }
    }
    return corners;
}

std::vector<Corner> oneVertexOfManyUVs() {
    std::vector<Corner> corners;
    for (int i = 0; i < 4000000; ++i) {
        corners.push_back({0, static_cast<float>(i % 1000000), 0.5f});
    }
    return corners;
}

void weld(benchmark::State& state, const std::vector<Corner>& corners) {
    BXArray<BXVector2f> given;
    BXArray<int> vertices;
    for (const Corner& corner : corners) {
        given.push_back({corner.u, corner.v});
        vertices.push_back(corner.vertex);
    }
    BXArray<BXVector2f> uvs;
    BXArray<int> indices;
    std::vector<unsigned int> remap(corners.size());
    std::size_t points = 0, ourPoints = 0;
    compare(
        state,
        [&] {
            BXUVMergeAlgo::mergeUVs(uvs, indices, vertices, -1);
            ourPoints = uvs.size();
        },
        [&] {
            points = meshopt_generateVertexRemap(remap.data(), nullptr, corners.size(),
                                                 corners.data(), corners.size(), sizeof(Corner));
        },
        [&] {
            uvs = given;
            indices.clear();
        });
    if (points != ourPoints) state.SkipWithError("the peer has another number of points");
    state.counters["points"] = static_cast<double>(points);
}

void formatting(benchmark::State& state) {
    std::mt19937 random(2);
    std::vector<float> values(1000000);
    for (float& value : values) value = static_cast<float>(random() % 2000001) / 1000000.0f - 1.0f;
    char text[64];
    std::size_t ours = 0, theirs = 0;
    compare(
        state,
        [&] {
            ours = 0;
            for (const float value : values) {
                ours += static_cast<std::size_t>(formatFixed5(text, value) - text);
            }
        },
        [&] {
            theirs = 0;
            for (const float value : values) {
                theirs += static_cast<std::size_t>(
                    std::snprintf(text, sizeof text, "%.5f", static_cast<double>(value)));
            }
        });
    if (ours != theirs) state.SkipWithError("the library prints something else");
}

template <class Run>
void add(const char* name, Run run) {
    benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(9)->Unit(
        benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    add("mergeUVs/4M_corners/against_meshoptimizer",
        [](benchmark::State& state) { weld(state, gridCorners(false)); });
    add("mergeUVs/4M_corners_shuffled/against_meshoptimizer",
        [](benchmark::State& state) { weld(state, gridCorners(true)); });
    add("mergeUVs/one_vertex_of_1M_UVs/against_meshoptimizer",
        [](benchmark::State& state) { weld(state, oneVertexOfManyUVs()); });
    add("formatFixed5/1M_UVs/against_snprintf", formatting);
    return runBenchmarks(argc, argv);
}
