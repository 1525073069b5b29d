// What BXString makes of formats and numbers.

#include <cstdarg>

#include "foundation/bx_string.h"
#include "foundation/c_locale.h"

namespace {

// The longest result has 511 characters. Buffers start out as zeros: a format that fails midway is
// not promised to end what it wrote.
constexpr std::size_t kFormatBufferSize = 512;

}  // namespace

// By value: variable arguments must not follow a reference.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
BXString BXString::format(BXString fmt, ...) {
    char text[kFormatBufferSize] = {};
    std::va_list arguments;
    va_start(arguments, fmt);
    bxFormatInCLocale(text, sizeof text, fmt.c_str(), arguments);
    va_end(arguments);
    return text;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): as above.
void BXString::print(BXString fmt, ...) {
    char text[kFormatBufferSize] = {};
    std::va_list arguments;
    va_start(arguments, fmt);
    bxFormatInCLocale(text, sizeof text, fmt.c_str(), arguments);
    va_end(arguments);
    *this = BXString(text);
}

BXString BXString::int2String(int n) {
    return format("%d", n);
}

void BXString::printShortCount(int n) {
    if (n >= 1000000) {
        print("%d.%dm", n / 1000000, n % 1000000 / 100000);
    } else if (n >= 1000) {
        print("%d.%dk", n / 1000, n % 1000 / 100);
    } else {
        // Required(R09): below zero only the last three digits are left.
        print("%d", n % 1000000 % 1000);
    }
}

// Required(R06): no text comes of a time.
void BXString::printTime(unsigned int /*time*/, bool /*flag*/) {
    *this = BXString("");
}

void bxSprintf_s(char* buffer, int size, const char* fmt, ...) {
    if (!buffer || size < 1) return;
    std::va_list arguments;
    va_start(arguments, fmt);
    bxFormatInCLocale(buffer, static_cast<std::size_t>(size), fmt, arguments);
    va_end(arguments);
}

// Required(R07): the operation is empty; the caller's buffer keeps what it holds.
void bxSprintf(char* /*buffer*/, char* /*fmt*/, ...) {}
