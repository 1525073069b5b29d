#include "tests/validate/control.h"

static bool s_isInitialised = false;

WRONG(InitializeVek) {
    s_isInitialised = true;
    return REAL(InitializeVek);
}

// Leaves the application that is selected before there is any.
WRONG(SetVekAppIndex) {
    return s_isInitialised ? REAL(SetVekAppIndex) : 0.0f;
}
