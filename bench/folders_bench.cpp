// Whole folders: VekCleanCaches against rm -rf, the wildcard search against find.

#include <string>

#include "bench/support.h"
#include "os/bx_disk_server.h"

namespace {

const std::string kProject = "/Users/Shared/Kelvaro/VekProjects/Default";

// `folders` folders of `files` small files each.
std::string fill(const std::string& parent, int folders, int files) {
    return "mkdir -p " + parent + " && cd " + parent + " && for i in $(seq " +
           std::to_string(folders) + "); do mkdir d$i && cd d$i && touch $(seq -f f%g.vek " +
           std::to_string(files) + ") && cd ..; done";
}

void cleanCaches(benchmark::State& state) {
    compare(
        state, [] { callExport("VekCleanCaches", ""); }, [] { shell("rm -rf " + kProject + "/*"); },
        [] { shell(fill(kProject, 200, 100)); });
}

void search(benchmark::State& state) {
    const BenchFolder folder(BenchFolder::Where::Disk);
    const std::string tree = folder / "tree";
    shell(fill(tree, 1000, 100));
    const BXString root(tree.c_str());
    compare(
        state,
        [&] {
            BXArray<BXString> found;
            BXDiskServer::searchFileList(found, "*.VEK", root, 9, 0);
            if (found.size() != 100000) state.SkipWithError("not all files were found");
        },
        [&] { shell("find " + tree + " -iname '*.vek' >/dev/null"); });
}

}  // namespace

BENCHMARK(cleanCaches)
    ->Name("VekCleanCaches/20000_files_against_rm")
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(search)
    ->Name("searchFileList/100000_files_against_find")
    ->UseManualTime()
    ->Iterations(7)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv);
}
