// Runs a fuzz target without a fuzzer, on inputs made of a seed:
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Input = std::vector<std::uint8_t>;

// Small numbers in four bytes, as counts are, among bytes of all kinds.
Input randomInput(std::mt19937& random) {
    Input input(random() % 200);
    for (std::uint8_t& byte : input) byte = static_cast<std::uint8_t>(random());
    for (auto fields = random() % 12; fields > 0 && input.size() > 8; --fields) {
        static const std::uint32_t sizes[] = {0,          1,          2,          3,
                                              4,          7,          20,         0x7FFFFFFF,
                                              0x80000000, 0xFFFFFFFF, 0x00100000, 0x00040001,
                                              0x40000001, 0x20000001, 0x15555556};
        const std::uint32_t value = sizes[random() % std::size(sizes)];
        const std::size_t at = random() % (input.size() - 4);
        for (std::size_t i = 0; i < 4; ++i) {
            input[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }
    return input;
}

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
        const Input input = randomInput(random);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%d inputs\n", inputs);
}
