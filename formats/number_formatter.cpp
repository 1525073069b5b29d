#include "formats/number_formatter.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "foundation/bx_string.h"

namespace {

// The four digits of each number below 10,000.
struct FourDigits {
    constexpr FourDigits() : chars() {
        for (int number = 0; number < 10000; ++number) {
            for (int place = 3, rest = number; place >= 0; --place, rest /= 10) {
                chars[4 * number + place] = static_cast<char>('0' + rest % 10);
            }
        }
    }

    char chars[40000];
};

constexpr FourDigits kFourDigits;

char* writeFour(char* to, std::uint32_t number) {
    std::memcpy(to, kFourDigits.chars + std::size_t{4} * number, 4);
    return to + 4;
}

// A number below 10,000 without zeros in front. Four characters are written whatever their number.
char* writeUpToFour(char* to, std::uint32_t number) {
    const std::uint32_t zeros = (number < 1000) + (number < 100) + (number < 10);
    std::uint32_t digits = 0;
    std::memcpy(&digits, kFourDigits.chars + std::size_t{4} * number, 4);
    digits >>= 8 * zeros;  // the first character is in the lowest byte
    std::memcpy(to, &digits, 4);
    return to + 4 - zeros;
}

char* writeUnsigned(char* to, std::uint32_t number) {
    constexpr std::uint32_t k4 = 10000, k8 = 100000000;
    if (number < k4) return writeUpToFour(to, number);
    if (number < k8) return writeFour(writeUpToFour(to, number / k4), number % k4);
    to = writeUpToFour(to, number / k8);
    number %= k8;
    return writeFour(writeFour(to, number / k4), number % k4);
}

// The whole part fits into 32 bits below this.
constexpr float kMostForUnsigned = 4e9f;

constexpr std::uint32_t kPlaces = 100000;

// Numbers below this, with their places, fit into 32 bits.
constexpr std::int64_t kMostShort = INT64_C(4000000000);

}  // namespace

char* formatInt(char* to, int value) noexcept {
    const auto bits = static_cast<std::uint32_t>(value);
    *to = '-';
    return value < 0 ? writeUnsigned(to + 1, 0u - bits) : writeUnsigned(to, bits);
}

char* formatFixed5(char* to, float value) noexcept {
    const float magnitude = std::fabs(value);
    if (!(magnitude < kMostForUnsigned)) {
        char text[kMostFixed5Chars + 1];
        bxSprintf_s(text, sizeof text, "%.5f", static_cast<double>(value));
        const std::size_t length = std::strlen(text);
        std::memcpy(to, text, length);
        return to + length;
    }
    *to = '-';
    to += std::signbit(value);
    // 24 bits times 17 bits: exact in a double. Adding and taking away 2^52 rounds to the nearest
    // integer, a tie to the even one, as printf does.
    constexpr double kRounder = 4503599627370496.0;
    const double scaled = static_cast<double>(magnitude) * 1e5;
    const auto rounded = static_cast<std::int64_t>((scaled + kRounder) - kRounder);
    const bool isShort = rounded < kMostShort;
    const auto whole = isShort ? static_cast<std::uint32_t>(rounded) / kPlaces
                               : static_cast<std::uint32_t>(rounded / kPlaces);
    const auto places = static_cast<std::uint32_t>(rounded - std::int64_t{whole} * kPlaces);
    if (whole < 10) {
        *to++ = static_cast<char>('0' + whole);
    } else {
        to = writeUnsigned(to, whole);
    }
    *to++ = '.';
    *to++ = static_cast<char>('0' + places / 10000);
    return writeFour(to, places % 10000);
}
