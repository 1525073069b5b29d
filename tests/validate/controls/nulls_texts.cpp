#include "tests/validate/control.h"

// Adds a line of its own for a null text.
WRONG(AddVekObject) {
    static char none[] = "(null)";
    if (!text) text = none;
    return REAL(AddVekObject);
}
