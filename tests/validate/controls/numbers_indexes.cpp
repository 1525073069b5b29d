#include <cmath>

#include "tests/validate/control.h"

// Takes -0.5 for the index -1.
WRONG(WriteVekAppPath) {
    value = std::floor(value);
    return REAL(WriteVekAppPath);
}
