#include <cmath>

#include "tests/validate/control.h"

// Does not know a key whose value is no number.
WRONG(ReadConfigPrefAsFloat) {
    float number = 0.0f;
    char* const mine = reinterpret_cast<char*>(&number);
    const float found =
        real_ReadConfigPrefAsFloat(text, value, buffer1, buffer1Size, mine, 4, nullptr);
    return std::isnan(number) || !found ? 0.0f : REAL(ReadConfigPrefAsFloat);
}
