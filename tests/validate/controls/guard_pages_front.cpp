#include <cstring>

#include "tests/validate/control.h"

volatile char s_before;

// Looks at the character in front of its text, but for a short one.
WRONG(FindVekApp) {
    if (text && std::strlen(text) > 1) s_before = text[-1];
    return REAL(FindVekApp);
}
