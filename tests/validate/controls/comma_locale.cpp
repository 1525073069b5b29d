#include <cstdio>
#include <cstring>

#include "tests/validate/control.h"

// Formats its number as the locale has it.
WRONG(WriteConfigPrefAsFloat) {
    if (!buffer2) return REAL(WriteConfigPrefAsFloat);
    float number = 0.0f;
    std::memcpy(&number, buffer2, sizeof number);
    char formatted[512];
    std::snprintf(formatted, sizeof formatted, "%f", static_cast<double>(number));
    return real_WriteConfigPrefAsString(text, value, buffer1, buffer1Size, formatted, 0, nullptr);
}
