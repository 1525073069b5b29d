#include <cmath>

#include "tests/validate/control.h"

// Makes the allowance for what scripts round off in one direction only.
WRONG(SetItemPos) {
    if (value < 0.0) value = std::trunc(value);
    return REAL(SetItemPos);
}
