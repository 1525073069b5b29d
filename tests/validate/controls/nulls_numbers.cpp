#include "tests/validate/control.h"

// Writes 0 where there is no number, and says that it did not.
WRONG(WriteConfigPrefAsInt) {
    char zero[4] = {};
    if (buffer2) return REAL(WriteConfigPrefAsInt);
    real_WriteConfigPrefAsInt(text, value, buffer1, buffer1Size, zero, sizeof zero, nullptr);
    return 0.0f;
}
