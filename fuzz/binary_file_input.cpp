#include <iterator>

#include "fuzz/make_input.h"

// Small numbers in four bytes, as counts are, among bytes of all kinds.
Input makeInput(std::mt19937& random) {
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
