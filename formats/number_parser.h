#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Numbers in Maya scenes. The text has to end with a character that is part of no number, such as a
// NUL; what follows a number is left to the caller.

// Reads an optional sign and decimal digits. Returns the end of what was read, or null where there
// is no digit. A number that no int holds becomes the nearest one.
const char* parseMayaInt(const char* text, int& value) noexcept;

// Reads an optional sign, digits, and an optional point with more digits; there are no exponents.
// The value is the nearest float (a tie goes to the even one) to what the first 19 digits say from
// the first one that is not 0 on, or infinite. Returns the end of what was read, or null where
// there is no digit.
const char* parseMayaFloat(const char* text, float& value) noexcept;

// The ways of the above for numbers of more digits than a machine word takes.
int parseLongMayaInt(const char* digits, bool negative) noexcept;
float parseLongMayaFloat(const char* whole) noexcept;

inline bool isMayaDigit(char c) noexcept {
    return static_cast<unsigned char>(c - '0') < 10;
}

inline const char* parseMayaInt(const char* text, int& value) noexcept {
    const char* p = text;
    const bool negative = *p == '-';
    if (negative || *p == '+') ++p;
    const char* const digits = p;
    unsigned int number = 0;
    for (; isMayaDigit(*p); ++p) number = number * 10 + static_cast<unsigned int>(*p - '0');
    if (p == digits) return nullptr;
    constexpr std::ptrdiff_t kMostSafe = 9;
    if (p - digits > kMostSafe) {
        value = parseLongMayaInt(digits, negative);
    } else {
        value = negative ? -static_cast<int>(number) : static_cast<int>(number);
    }
    return p;
}

// Required(R62): without exponents, 1e-05 is 1.
inline const char* parseMayaFloat(const char* text, float& value) noexcept {
    constexpr int kMostDigits = 19;
    constexpr double kPowersOf10[kMostDigits + 1] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                                     1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                                     1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
    constexpr std::uint64_t kExactInDouble = std::uint64_t{1} << 53;
    const char* p = text;
    const bool negative = *p == '-';
    if (negative || *p == '+') ++p;
    const char* const whole = p;
    std::uint64_t number = 0;
    for (; isMayaDigit(*p); ++p) number = number * 10 + static_cast<unsigned int>(*p - '0');
    std::ptrdiff_t digits = p - whole, places = 0;
    if (*p == '.') {
        const char* const fraction = ++p;
        for (; isMayaDigit(*p); ++p) number = number * 10 + static_cast<unsigned int>(*p - '0');
        places = p - fraction;
        digits += places;
    }
    if (digits == 0) return nullptr;

    // One division of two numbers that a double holds exactly is rounded once; the step to float
    // is a second time only for what came to lie half way between two floats.
    if (digits <= kMostDigits && number < kExactInDouble) {
        const double quotient = static_cast<double>(number) / kPowersOf10[places];
        std::uint64_t bits;
        std::memcpy(&bits, &quotient, sizeof bits);
        if ((bits & 0x1FFFFFFF) != 0x10000000) {
            value = static_cast<float>(negative ? -quotient : quotient);
            return p;
        }
    }
    const float magnitude = parseLongMayaFloat(whole);
    value = negative ? -magnitude : magnitude;
    return p;
}
