#include "tests/validate/control.h"

// Takes the size of its block for what it says.
WRONG(GetVekAppName) {
    return buffer1Size < 0 ? 0.0f : REAL(GetVekAppName);
}
