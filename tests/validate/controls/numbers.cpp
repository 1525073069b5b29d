#include "tests/validate/control.h"

// Takes what is not a number for the first application.
WRONG(GetVekAppId) {
    if (value != value) value = 0.0;
    return REAL(GetVekAppId);
}
