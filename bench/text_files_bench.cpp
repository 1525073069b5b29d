// The text files of the tree: small ones against truncating and refilling them, large ones against
// cat.

#include <cstdio>
#include <string>

#include "bench/support.h"

namespace {

const std::string kHub = "/Users/Shared/Kelvaro/VekHub";
const std::string kList = kHub + "/Vek_ObjectList.txt";
constexpr int kLines = 1000000;

void write(const std::string& path, const std::string& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
}

std::string read(const std::string& path) {
    std::string bytes;
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    std::fseek(file, 0, SEEK_END);
    bytes.resize(static_cast<std::size_t>(std::ftell(file)));
    std::rewind(file);
    const std::size_t came = std::fread(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    bytes.resize(came);
    return bytes;
}

// `format` takes the line's number, once or twice.
std::string lines(int count, const char* format) {
    std::string text;
    char line[128];
    for (int i = 0; i < count; ++i) {
        std::snprintf(line, sizeof line, format, i, i);
        text += line;
    }
    return text;
}

const char kObject[] = "/Users/Shared/Kelvaro/VekProjects/Default/object_%07d\n";
const char kSetting[] = "SETTING_%07d = \"a value of some length %d\"\n";

void addObject(benchmark::State& state) {
    shell("mkdir -p " + kHub);
    const std::string old = lines(25, kObject);
    compare(
        state, [] { callExport("AddVekObject", "one more object"); },
        [] { write(kList, "one more object\n" + read(kList)); }, [&] { write(kList, old); });
}

void writePreference(benchmark::State& state) {
    const BenchFolder folder(BenchFolder::Where::Disk);
    const std::string file = folder / "prefs.txt";
    const std::string old = lines(30, kSetting);
    const auto writeString = loadedExport("WriteConfigPrefAsString");
    std::string path = file, key = "setting_0000007", value = "new";
    compare(
        state, [&] { writeString(path.data(), 0, key.data(), 0, value.data(), 0, nullptr); },
        [&] { write(file, "SETTING_0000007 = new\n" + read(file)); }, [&] { write(file, old); });
}

void readObjects(benchmark::State& state) {
    shell("mkdir -p " + kHub);
    write(kList, lines(kLines, kObject));
    compare(
        state,
        [&] {
            if (callExport("ReadVekObjectList", "") != static_cast<float>(kLines)) {
                state.SkipWithError("not all objects were read");
            }
        },
        [] { shell("cat " + kList + " >/dev/null"); });
}

void rewriteKey(benchmark::State& state) {
    const BenchFolder folder(BenchFolder::Where::Memory);
    std::string file = folder / "prefs.txt", copy = folder / "copy.txt";
    write(file, lines(kLines, kSetting));
    const auto writeString = loadedExport("WriteConfigPrefAsString");
    std::string key = "setting_0500000", value = "new";
    compare(
        state, [&] { writeString(file.data(), 0, key.data(), 0, value.data(), 0, nullptr); },
        [&] { shell("cat " + file + " >" + copy); });
}

}  // namespace

BENCHMARK(addObject)
    ->Name("AddVekObject/1.3KB_against_truncating")
    ->UseManualTime()
    ->Iterations(2000);
BENCHMARK(writePreference)
    ->Name("WriteConfigPrefAsString/1.5KB_against_truncating")
    ->UseManualTime()
    ->Iterations(2000);
BENCHMARK(readObjects)
    ->Name("ReadVekObjectList/million_lines_against_cat")
    ->UseManualTime()
    ->Iterations(7)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(rewriteKey)
    ->Name("WriteConfigPrefAsString/million_lines_against_cat_to_a_file")
    ->UseManualTime()
    ->Iterations(7)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv);
}
