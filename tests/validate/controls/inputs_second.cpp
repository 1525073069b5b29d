#include "tests/validate/control.h"

// Changes the host's value when it is written.
WRONG(WriteConfigPrefAsString) {
    const float result = REAL(WriteConfigPrefAsString);
    if (result == 1.0f && buffer2 && *buffer2) *buffer2 = '?';
    return result;
}
