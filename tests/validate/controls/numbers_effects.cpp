#include <cmath>

#include "tests/validate/control.h"

// Takes what is not a number for the first application, whose path it then records.
WRONG(WriteVekAppPath) {
    if (std::isnan(value)) value = 0.0;
    return REAL(WriteVekAppPath);
}
