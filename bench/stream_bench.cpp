// Typed arrays through the binary stream against a bare fwrite and fread of the same bytes.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "bench/support.h"
#include "formats/bx_binary_file.h"

namespace {

constexpr std::size_t kBytes = std::size_t{64} << 20;

enum class Way { Write, Read, ReadIntoFreshMemory };

template <class Element>
void transfer(benchmark::State& state, Way way) {
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
    const auto ourRead = [&](BXArray<Element>& to) {
        const BXBinaryFile file(ours.c_str(), "rb");
        if (!file.read(to)) state.SkipWithError("not read");
    };
    const auto bareRead = [&](Element* to) {
        std::FILE* const file = std::fopen(ours.c_str(), "rb");
        int there = 0;
        const bool came = std::fread(&there, 4, 1, file) == 1 &&
                          std::fread(to, sizeof(Element), array.size(), file) == array.size();
        std::fclose(file);
        if (!came) state.SkipWithError("not read");
    };
    bareWrite();
    ourWrite();
    if (way == Way::Write) return compare(state, ourWrite, bareWrite);
    // Into the same memory: where an array comes to lie makes a tenth of a difference.
    if (way == Way::Read) {
        return compare(
            state, [&] { ourRead(array); }, [&] { bareRead(array.data()); });
    }
    compare(
        state,
        [&] {
            BXArray<Element> fresh;
            ourRead(fresh);
        },
        [&] {
            void* const fresh = std::malloc(kBytes);
            bareRead(static_cast<Element*>(fresh));
            std::free(fresh);
        });
}

template <class Element>
void add(const std::string& name) {
    const std::pair<Way, const char*> ways[] = {
        {Way::Write, "write"}, {Way::Read, "read"}, {Way::ReadIntoFreshMemory, "read_fresh"}};
    for (const auto& each : ways) {
        const Way way = each.first;
        benchmark::RegisterBenchmark(
            ("BXBinaryFile/" + std::string(each.second) + "_64MiB_of_" + name).c_str(),
            [way](benchmark::State& state) { transfer<Element>(state, way); })
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
