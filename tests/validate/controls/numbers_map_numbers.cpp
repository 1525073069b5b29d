#include <cmath>
#include <cstdlib>

#include "tests/validate/control.h"

// Gives no map whose number is no number.
WRONG(GetFirstObjectTextureFileName) {
    const float result = REAL(GetFirstObjectTextureFileName);
    const bool hasNumber = result == 0.0f && value == 2.0 && buffer2;
    return hasNumber && std::isnan(std::strtod(buffer2, nullptr)) ? -1.0f : result;
}
