#include <cmath>

#include "tests/validate/control.h"

// Takes an index beyond all integers for the first application, whose command it then runs.
WRONG(CallVekAppCommandAsAdmin) {
    if (std::fabs(value) > 2147483647.0) value = 0.0;
    return REAL(CallVekAppCommandAsAdmin);
}
