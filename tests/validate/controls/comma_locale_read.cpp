#include <cstdlib>
#include <cstring>

#include "tests/validate/control.h"

// Reads its number as the locale has it.
WRONG(ReadConfigPrefAsFloat) {
    char found[4096] = "";
    const float result = REAL(ReadConfigPrefAsFloat);
    real_ReadConfigPrefAsString(text, value, buffer1, buffer1Size, found, sizeof found, nullptr);
    if (!buffer2 || std::strchr(found, '.') == nullptr) return result;
    const float number = std::strtof(found, nullptr);
    std::memcpy(buffer2, &number, sizeof number);
    return result;
}
