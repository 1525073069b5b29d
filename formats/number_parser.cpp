#include "formats/number_parser.h"

#include <climits>
#include <cstdio>
#include <limits>

#include "foundation/c_locale.h"

namespace {

// Adds up to 19 digits, which any 64 bits hold, counted from the first that is not 0.
struct Digits {
    // Returns the end of the digits.
    const char* add(const char* p) {
        constexpr int kMostUsed = 19;
        for (; isMayaDigit(*p); ++p) {
            if (used == kMostUsed) {
                ++leftOut;
                continue;
            }
            number = number * 10 + static_cast<unsigned int>(*p - '0');
            if (number != 0) ++used;
        }
        return p;
    }

    std::uint64_t number = 0;
    int used = 0;
    std::int64_t leftOut = 0;
};

// number * 10 to the `exponent`, rounded once by the C library.
float roundedOnce(std::uint64_t number, std::int64_t exponent) {
    constexpr int kBeyondEveryFloat = 100;
    if (number == 0 || exponent < -kBeyondEveryFloat) return 0.0f;
    if (exponent > kBeyondEveryFloat) return std::numeric_limits<float>::infinity();
    char text[40];
    std::snprintf(text, sizeof text, "%llue%d", static_cast<unsigned long long>(number),
                  static_cast<int>(exponent));
    return bxScanFloatInCLocale(text);
}

}  // namespace

int parseLongMayaInt(const char* digits, bool negative) noexcept {
    constexpr std::int64_t kBeyond = std::int64_t{INT_MAX} + 1;
    std::int64_t number = 0;
    for (const char* p = digits; isMayaDigit(*p); ++p) {
        number = number * 10 + (*p - '0');
        if (number > kBeyond) number = kBeyond;
    }
    if (negative) return static_cast<int>(-number);
    return number == kBeyond ? INT_MAX : static_cast<int>(number);
}

float parseLongMayaFloat(const char* whole) noexcept {
    Digits digits;
    const char* const wholeEnd = digits.add(whole);
    if (*wholeEnd != '.') return roundedOnce(digits.number, digits.leftOut);
    const std::int64_t leftOutOfWhole = digits.leftOut;
    const char* const fraction = wholeEnd + 1;
    const char* const fractionEnd = digits.add(fraction);
    const std::int64_t places = fractionEnd - fraction - (digits.leftOut - leftOutOfWhole);
    return roundedOnce(digits.number, leftOutOfWhole - places);
}
