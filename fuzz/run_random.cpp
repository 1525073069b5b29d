// Runs a fuzz target without a fuzzer: on files, or on a corpus and then on damaged files of it and
// damaged inputs that the target makes of a seed.
//
//     PROGRAM CORPUS DICTIONARY NUMBER-OF-INPUTS SEED    or    PROGRAM FILE...
//
// The input at which it ends is left in the working folder.

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "fuzz/make_input.h"
#include "fuzz/mutator.h"

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));
extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

const Input* s_running = nullptr;
std::string s_leftover;

void leaveInput() {
    std::FILE* const file = s_running ? std::fopen(s_leftover.c_str(), "wb") : nullptr;
    if (!file) return;
    std::fwrite(s_running->data(), 1, s_running->size(), file);
    std::fclose(file);
    std::fprintf(stderr, "the input is in %s\n", s_leftover.c_str());
    s_running = nullptr;
}

void leaveInputAndEnd(int number) {
    leaveInput();
    signal(number, SIG_DFL);
    raise(number);
}

void watch(const char* program) {
    s_leftover = fs::path(program).filename().string() + "." + std::to_string(getpid()) + ".failed";
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(leaveInput);
    signal(SIGABRT, leaveInputAndEnd);
    if (__sanitizer_set_death_callback) return;
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) signal(number, leaveInputAndEnd);
}

void run(const Input& input) {
    s_running = &input;
    // Of exactly its size, so that a read beyond its end is seen.
    LLVMFuzzerTestOneInput(input.data(), input.size());
    s_running = nullptr;
}

bool readWhole(const fs::path& path, Input& bytes) {
    std::ifstream file(path, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(file), {});
    return static_cast<bool>(file);
}

int fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    return 1;
}

int runFiles(int count, char** paths) {
    for (int i = 0; i < count; ++i) {
        Input input;
        if (!readWhole(paths[i], input)) return fail(std::string("cannot read ") + paths[i]);
        run(input);
    }
    std::printf("%d files\n", count);
    return 0;
}

// In the order of their names, so that a seed gives the same inputs everywhere.
bool readCorpus(const fs::path& folder, std::vector<Input>& corpus) {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(folder)) paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const fs::path& path : paths) {
        corpus.emplace_back();
        if (!readWhole(path, corpus.back())) return false;
    }
    return !corpus.empty();
}

int runCorpus(const char* folder, const char* dictionary, int inputs, unsigned int seed) {
    std::vector<Input> corpus, words;
    if (!readCorpus(folder, corpus)) return fail(std::string("no corpus is in ") + folder);
    Input text;
    if (!readWhole(dictionary, text) || !readDictionary({text.begin(), text.end()}, words)) {
        return fail(std::string("not a dictionary: ") + dictionary);
    }
    for (const Input& input : corpus) run(input);

    const Mutator mutator(words, corpus);
    std::mt19937 random(seed);
    for (int i = 0; i < inputs; ++i) {
        const bool isMade = makeInput && random() % 2 == 0;
        Input input = isMade ? makeInput(random) : corpus[random() % corpus.size()];
        for (auto times = random() % 5; times > 0; --times) mutator.damage(input, random);
        run(input);
    }
    std::printf("%zu files of the corpus, %d inputs\n", corpus.size(), inputs);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return fail("usage: PROGRAM CORPUS DICTIONARY NUMBER-OF-INPUTS SEED | PROGRAM FILE...");
    if (LLVMFuzzerInitialize) LLVMFuzzerInitialize(&argc, &argv);
    watch(argv[0]);
    if (argc == 5 && fs::is_directory(argv[1])) {
        return runCorpus(argv[1], argv[2], std::atoi(argv[3]),
                         static_cast<unsigned int>(std::atoi(argv[4])));
    }
    return runFiles(argc - 1, argv + 1);
}
