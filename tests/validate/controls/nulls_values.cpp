#include "tests/validate/control.h"

// Writes no text where there is none, and not the empty one.
WRONG(WriteConfigPrefAsString) {
    if (buffer2) return REAL(WriteConfigPrefAsString);
    return real_ReadConfigPrefAsString(text, value, buffer1, buffer1Size, nullptr, 0, nullptr);
}
