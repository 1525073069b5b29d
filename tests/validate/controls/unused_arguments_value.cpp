#include "tests/validate/control.h"

// Knows files for the number 0 alone.
WRONG(IsVekFilePathValid) {
    return value == 0.0 ? REAL(IsVekFilePathValid) : 0.0f;
}
