// Runs a fuzz target without a fuzzer, on inputs that makeInput makes of a seed:
//
//     PROGRAM [NUMBER OF INPUTS [SEED]]    or    PROGRAM FILE...

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "tests/fuzz/make_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool isNumber(const char* text) {
    return *text && std::all_of(text, text + std::char_traits<char>::length(text),
                                [](unsigned char c) { return std::isdigit(c); });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && !isNumber(argv[1])) {
        for (int i = 1; i < argc; ++i) {
            std::ifstream file(argv[i], std::ios::binary);
            const Input input{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(input.data(), input.size());
        }
        return 0;
    }
    const int inputs = argc > 1 ? std::atoi(argv[1]) : 1000;
    std::mt19937 random(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1u);
    for (int i = 0; i < inputs; ++i) {
        const Input input = makeInput(random);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%d inputs\n", inputs);
}
