#include "tests/validate/control.h"

// Marks a key that is not there.
WRONG(ReadConfigPrefAsInt) {
    const float result = REAL(ReadConfigPrefAsInt);
    if (result == 0.0f && buffer1 && *buffer1) *buffer1 = '?';
    return result;
}
