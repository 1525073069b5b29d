#include <cmath>
#include <cstring>

#include "tests/validate/control.h"

// Does not write what is no number.
WRONG(WriteConfigPrefAsFloat) {
    float number = 0.0f;
    if (buffer2) std::memcpy(&number, buffer2, sizeof number);
    return std::isnan(number) ? 0.0f : REAL(WriteConfigPrefAsFloat);
}
