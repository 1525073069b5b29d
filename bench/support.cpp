#include "bench/support.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double seconds(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

[[noreturn]] void fail(const std::string& sentence) {
    std::fprintf(stderr, "%s\n", sentence.c_str());
    std::exit(1);
}

std::string folderFor(BenchFolder::Where where) {
    const char* const disk = std::getenv("VEK_BENCH_DISK");
    const std::string parent = where == BenchFolder::Where::Memory ? "/dev/shm" : disk ? disk : ".";
    std::string path = std::filesystem::absolute(parent).string() + "/vek-bench-XXXXXX";
    if (!mkdtemp(path.data())) fail("cannot make a folder below " + parent);
    return path;
}

}  // namespace

VekExport loadedExport(const std::string& name) {
    static void* const library = dlopen(VEK_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    const auto function =
        library ? reinterpret_cast<VekExport>(dlsym(library, name.c_str())) : nullptr;
    if (!function) fail("the library has no " + name);
    return function;
}

float callExport(const std::string& name, const std::string& text, double value) {
    std::string copy(text);
    return loadedExport(name)(copy.data(), value, nullptr, 0, nullptr, 0, nullptr);
}

BenchFolder::BenchFolder(Where where) : m_path(folderFor(where)) {}

BenchFolder::~BenchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void compare(benchmark::State& state, const std::function<void()>& ours,
             const std::function<void()>& floor, const std::function<void()>& before) {
    std::vector<double> times, ratios;
    before();
    ours();  // once ahead of the count: both find their files in memory
    before();
    floor();
    bool oursFirst = true;
    for ([[maybe_unused]] auto iteration : state) {
        double our = 0;
        double other = 0;
        for (const bool timesOurs : {oursFirst, !oursFirst}) {
            before();
            (timesOurs ? our : other) = seconds(timesOurs ? ours : floor);
        }
        // The first of a pair finds its memory less warm.
        oursFirst = !oursFirst;
        times.push_back(other);
        ratios.push_back(our / other);
        state.SetIterationTime(our);
    }
    state.counters["floor_ms"] = median(times) * 1000;
    state.counters["ratio"] = median(ratios);
}

void shell(const std::string& command) {
    if (std::system(command.c_str()) != 0) fail("failed: " + command);
}

int runBenchmarks(int argc, char** argv) {
    if (!std::getenv("VEK_VIEW")) fail("run this with scripts/private-view: it clears the tree");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
