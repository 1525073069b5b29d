// Typed arrays through the binary stream against a bare fwrite and fread of the same bytes.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/support.h"
#include "formats/bx_binary_file.h"

namespace {

constexpr std::size_t kBytes = std::size_t{64} << 20;

template <class Element>
void transfer(benchmark::State& state, bool write) {
    const BenchFolder folder(BenchFolder::Where::Memory);
    const std::string ours = folder / "ours", theirs = folder / "theirs";
    BXArray<Element> array(kBytes / sizeof(Element)), other(array);
    const auto count = static_cast<int>(array.size());
    const auto bareWrite = [&] {
        std::FILE* const file = std::fopen(theirs.c_str(), "wb");
        std::fwrite(&count, 4, 1, file);
        std::fwrite(other.data(), sizeof(Element), other.size(), file);
        std::fclose(file);
    };
    const auto ourWrite = [&] {
        BXBinaryFile file(ours.c_str(), "wb");
        if (!file.write(array)) state.SkipWithError("not written");
    };
    bareWrite();
    ourWrite();
    if (write) return compare(state, ourWrite, bareWrite);
    compare(
        state,
        [&] {
            const BXBinaryFile file(ours.c_str(), "rb");
            if (!file.read(array)) state.SkipWithError("not read");
        },
        [&] {
            std::FILE* const file = std::fopen(theirs.c_str(), "rb");
            int there = 0;
            const bool came =
                std::fread(&there, 4, 1, file) == 1 &&
                std::fread(other.data(), sizeof(Element), other.size(), file) == other.size();
            std::fclose(file);
            if (!came) state.SkipWithError("not read");
        });
}

template <class Element>
void add(const std::string& name) {
    for (const bool write : {true, false}) {
        benchmark::RegisterBenchmark(
            ("BXBinaryFile/" + std::string(write ? "write" : "read") + "_64MiB_of_" + name).c_str(),
            [write](benchmark::State& state) { transfer<Element>(state, write); })
            ->UseManualTime()
            ->Iterations(25)
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace

int main(int argc, char** argv) {
    add<int>("ints");
    add<unsigned short>("shorts");
    add<unsigned char>("bytes");
    add<BXVector2f>("vector2f");
    add<BXVector3f>("vector3f");
    return runBenchmarks(argc, argv);
}
