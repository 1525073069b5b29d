#include <cstdlib>

#include "tests/validate/control.h"

static bool s_isInitialised = false;

WRONG(InitializeVek) {
    s_isInitialised = true;
    return REAL(InitializeVek);
}

// Insists on being called behind InitializeVek.
WRONG(GetVekAppTamplate) {
    if (!s_isInitialised) std::abort();
    return REAL(GetVekAppTamplate);
}
