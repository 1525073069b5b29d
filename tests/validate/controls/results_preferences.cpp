#include <cstring>

#include "tests/validate/control.h"

// Cuts numbers off downward, and not toward zero.
WRONG(ReadConfigPrefAsInt) {
    const float found = REAL(ReadConfigPrefAsInt);
    float real = 0.0f;
    int whole = 0;
    real_ReadConfigPrefAsFloat(text, value, buffer1, 0, reinterpret_cast<char*>(&real), 0, nullptr);
    if (!buffer2) return found;
    std::memcpy(&whole, buffer2, sizeof whole);
    if (real < 0.0f && real > -1e6f && real < static_cast<float>(whole)) --whole;
    if (found == 1.0f) std::memcpy(buffer2, &whole, sizeof whole);
    return found;
}
