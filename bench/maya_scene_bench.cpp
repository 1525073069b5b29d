// Maya scenes of 1 and 4 million quads: the whole merge and the whole split through the exports,
// against reading the OBJ file of the same mesh.

#define TINYOBJLOADER_IMPLEMENTATION
#include <tiny_obj_loader.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/maya_grid.h"
#include "bench/support.h"

namespace {

namespace fs = std::filesystem;

enum class Way { Merge, Split };

void readObj(const std::string& path) {
    tinyobj::ObjReaderConfig config;
    config.triangulate = false;
    tinyobj::ObjReader reader;
    if (!reader.ParseFromFile(path, config)) std::abort();
    benchmark::DoNotOptimize(reader.GetAttrib().vertices.size());
}

// The most memory that a process takes which does this one call, in units of the file's size.
double peakOverSize(const std::string& name, const std::string& path) {
    const double size = static_cast<double>(fs::file_size(path));
    std::FILE* const run = popen(
        (VEK_TOOL " run " VEK_BENCH_SOURCE "/peak_of_call.lua " + name + " " + path).c_str(), "r");
    double peak = -1.0;
    if (std::fscanf(run, "%lf", &peak) != 1) peak = -1.0;
    pclose(run);
    return peak * 1048576 / size;
}

void compareWithObj(benchmark::State& state, Way way, MayaGrid grid) {
    const BenchFolder folder(BenchFolder::Where::Memory);
    const std::string scene = folder / "scene.ma", work = folder / "work.ma",
                      obj = folder / "grid.obj";
    grid.writeScene(scene);
    grid.writeObj(obj);
    const std::string name = way == Way::Merge ? "VekPostExport" : "VekPreImport";
    // The split reads what the merge wrote.
    if (way == Way::Split && callExport("VekPostExport", scene) != 0) {
        return state.SkipWithError("not merged");
    }
    const auto restore = [&] { shell("cp '" + scene + "' '" + work + "'"); };
    compare(
        state,
        [&] {
            if (callExport(name, work) != 0) state.SkipWithError("refused");
        },
        [&] { readObj(obj); }, restore);
    restore();
    state.counters["MB"] = static_cast<double>(fs::file_size(scene)) / 1e6;
    state.counters["peak_over_size"] = peakOverSize(name, work);
}

void add(Way way, int side, bool shuffled) {
    const std::string name = std::string(way == Way::Merge ? "VekPostExport" : "VekPreImport") +
                             "/" + std::to_string(side * side / 1000000) + "M_quads" +
                             (shuffled ? "_shuffled" : "") + "/against_tinyobjloader";
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state) {
                                     compareWithObj(state, way, {side, shuffled});
                                 })
        ->UseManualTime()
        ->Iterations(side > 1000 ? 3 : 7)
        ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    for (const Way way : {Way::Merge, Way::Split}) {
        for (const int side : {1000, 2000}) {
            for (const bool shuffled : {false, true}) add(way, side, shuffled);
        }
    }
    return runBenchmarks(argc, argv);
}
