#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

#include "exports/vek.h"

// An export of the library, loaded by path as the host does.
VekExport loadedExport(const std::string& name);
float callExport(const std::string& name, const std::string& text, double value = 0.0);

// A folder of the bench's own, in memory or on the disk, that goes away with the object.
class BenchFolder {
public:
    enum class Where { Memory, Disk };

    explicit BenchFolder(Where where);
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;
    ~BenchFolder();

    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

// Times ours and the floor or peer, once each for each iteration of the benchmark and in turn
// first: the reported time is ours, "floor_ms" the median of the other, "ratio" the median of ours
// over the other. `before` runs ahead of each, untimed.
void compare(
    benchmark::State& state, const std::function<void()>& ours, const std::function<void()>& floor,
    const std::function<void()>& before = [] {});

// The main function of every bench program: refuses to run on a real tree.
int runBenchmarks(int argc, char** argv);

// Runs a shell command; ends the program when it fails.
void shell(const std::string& command);
