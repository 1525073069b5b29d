#include <cmath>

#include "tests/validate/control.h"

// Takes what is not a number for the first kind of map.
WRONG(GetFirstObjectTextureFileName) {
    if (std::isnan(value)) value = 0.0;
    return REAL(GetFirstObjectTextureFileName);
}
