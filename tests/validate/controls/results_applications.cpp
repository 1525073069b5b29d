#include "tests/validate/control.h"

// Finds no id whose first letter is of the other case.
WRONG(FindVekApp) {
    return text && *text == 'a' ? -1.0f : REAL(FindVekApp);
}
