// VekPostExport on an exchange file of 1 GiB against cp of the same file over an existing one.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/support.h"

namespace {

// What a round trip turns: which of it the settings ask for.
struct Combination {
    const char* name;
    const char* descriptor;
    std::uint32_t faceKind;
    double offset;
};

const Combination kCombinations[] = {
    {"flip_switch_rewind_quads", "EXPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\nEXPORT_SWITCH_YZ 1\n", 20001,
     0.5},
    {"flip_switch_rewind_repeated", "EXPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\nEXPORT_SWITCH_YZ 1\n", 20002,
     0.5},
    {"flip_switch_rewind_triangles", "EXPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\nEXPORT_SWITCH_YZ 1\n",
     20003, 0.5},
    {"flip_rewind_about_origin", "EXPORT_FLIP_X 1\n", 20001, 0.0},
    {"switch_rewind_about_origin", "EXPORT_SWITCH_YZ 1\n", 20001, 0.0},
    {"two_flips_about_origin", "EXPORT_FLIP_X 1\nEXPORT_FLIP_Y 1\n", 20001, 0.0},
    {"nothing_to_do", "", 20001, 0.0},
};

class Writer {
public:
    explicit Writer(const std::string& path) : m_file(std::fopen(path.c_str(), "wb")) {
        const char header[32] = {'V', 'e', 'k', 'b'};
        std::fwrite(header, 1, sizeof header, m_file);
    }
    ~Writer() {
        const char end[16] = {};
        std::fwrite(end, 1, sizeof end, m_file);
        std::fclose(m_file);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    template <class Value>
    void block(std::uint32_t id, std::uint32_t count, const std::vector<Value>& values) {
        const std::uint32_t size = static_cast<std::uint32_t>(values.size() * sizeof(Value));
        const std::uint32_t header[4] = {id, (size + 19) & ~3u, count, 0};
        std::fwrite(header, 1, sizeof header, m_file);
        std::fwrite(values.data(), sizeof(Value), values.size(), m_file);
    }

private:
    std::FILE* m_file;
};

// A GiB, near enough: a vertex, a face and its corner values for each of millions of faces.
void writeMesh(const std::string& path, std::uint32_t faceKind) {
    const std::size_t width = faceKind == 20003 ? 3 : 4;
    const std::size_t count = (std::size_t{1} << 30) / (12 + 8 * width);
    std::vector<float> positions(3 * count);
    for (std::size_t i = 0; i < positions.size(); ++i) positions[i] = static_cast<float>(i % 1000);
    std::vector<std::int32_t> faces(width * count);
    for (std::size_t i = 0; i < faces.size(); ++i) faces[i] = static_cast<std::int32_t>(i % count);
    for (std::size_t i = 3; width == 4 && i < faces.size(); i += 28) {
        faces[i] = faceKind == 20001 ? -1 : faces[i - 1];
    }
    Writer file(path);
    file.block(10001, static_cast<std::uint32_t>(count), positions);
    file.block(faceKind, static_cast<std::uint32_t>(count), faces);
    file.block(25001, 0, faces);
}

void useApplication(const Combination& combination) {
    const std::string app = "/Users/Shared/Kelvaro/VekApps/Bench";
    shell("mkdir -p " + app + " /Users/Shared/Kelvaro/VekHub");
    std::FILE* const info = std::fopen((app + "/Vek_Info.txt").c_str(), "w");
    std::fprintf(info, "EXTENSION .vek\n%s", combination.descriptor);
    std::fclose(info);
    callExport("InitializeVek", "/");
    callExport("GetVekAppIOPrefs", "", 0.0);
    callExport("VekSetExportScale", "", 1.0);
    for (const char* axis : {"X", "Y", "Z"}) {
        callExport(std::string("VekSetExportOffset") + axis, "", combination.offset);
    }
}

// The most memory that a whole process held which did nothing but this one transform.
double peakOfAProcess(const std::string& file) {
    std::FILE* const run =
        popen((VEK_TOOL " run " VEK_BENCH_SOURCE "/peak.lua " + file).c_str(), "r");
    double peak = -1.0;
    if (std::fscanf(run, "%lf", &peak) != 1) peak = -1.0;
    pclose(run);
    return peak;
}

void postExport(benchmark::State& state, const Combination& combination, BenchFolder::Where where) {
    useApplication(combination);
    const BenchFolder folder(where);
    const std::string file = folder / "mesh.vek", other = folder / "copy.vek";
    writeMesh(file, combination.faceKind);
    shell("cp " + file + " " + other);
    compare(
        state,
        [&] {
            if (callExport("VekPostExport", file) != 0.0f)
                state.SkipWithError("VekPostExport failed");
        },
        [&] { shell("cp " + file + " " + other); });
    state.counters["peak_MiB"] = peakOfAProcess(file);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(std::filesystem::file_size(file)));
}

}  // namespace

int main(int argc, char** argv) {
    for (const auto where : {BenchFolder::Where::Memory, BenchFolder::Where::Disk}) {
        for (const Combination& combination : kCombinations) {
            const std::string name = std::string("VekPostExport/") +
                                     (where == BenchFolder::Where::Memory ? "memory/" : "disk/") +
                                     combination.name;
            benchmark::RegisterBenchmark(name.c_str(),
                                         [&combination, where](benchmark::State& state) {
                                             postExport(state, combination, where);
                                         })
                ->UseManualTime()
                ->Iterations(5)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return runBenchmarks(argc, argv);
}
