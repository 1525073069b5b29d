#include <cmath>

#include "tests/validate/control.h"

// Cuts its offset off without the allowance for what scripts round off.
WRONG(SetItemPos) {
    value = std::trunc(value);
    return REAL(SetItemPos);
}
