// The indexed sort of a million points against the standard library's sort of an index array with
// the same comparison.

#include <algorithm>
#include <numeric>
#include <random>

#include "bench/support.h"
#include "formats/indexed_sort.h"

namespace {

constexpr int kPoints = 1000000;

// Points of a grid, so that many coordinates are the same, in no order; or scattered ones.
BXArray<BXVector3f> points(bool onAGrid) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> scattered(-1, 1);
    BXArray<BXVector3f> made(kPoints);
    for (BXVector3f& p : made) {
        const auto coordinate = [&] {
            return onAGrid ? static_cast<float>(random() % 100) : scattered(random);
        };
        p = BXVector3f(coordinate(), coordinate(), coordinate());
    }
    return made;
}

void sortIndexes(benchmark::State& state, bool onAGrid, float tolerance) {
    const BXArray<BXVector3f> data = points(onAGrid);
    BXArray<int> ours, theirs;
    compare(
        state, [&] { BXVector3f::indexedSort(ours, data, tolerance); },
        [&] {
            theirs.resize(kPoints);
            std::iota(theirs.begin(), theirs.end(), 0);
            std::sort(theirs.begin(), theirs.end(),
                      BXIndexedComparator<BXVector3f, BXVector3fComp>(data.data(),
                                                                      BXVector3fComp(tolerance)));
        });
    if (ours != theirs) state.SkipWithError("the two orders differ");
}

}  // namespace

int main(int argc, char** argv) {
    const auto add = [](const char* name, bool onAGrid, float tolerance) {
        benchmark::RegisterBenchmark(
            name, [=](benchmark::State& state) { sortIndexes(state, onAGrid, tolerance); })
            ->UseManualTime()
            ->Iterations(9)
            ->Unit(benchmark::kMillisecond);
    };
    add("indexedSort/million_scattered_points", false, 0.0f);
    add("indexedSort/million_grid_points", true, 0.0f);
    add("indexedSort/million_grid_points_with_a_tolerance", true, 0.25f);
    return runBenchmarks(argc, argv);
}
