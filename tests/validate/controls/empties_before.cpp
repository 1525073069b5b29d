#include "tests/validate/control.h"

volatile char s_last;

// Looks at the last character of a text that has none.
WRONG(FindVekApp) {
    if (text && !*text) s_last = text[-1];
    return REAL(FindVekApp);
}
