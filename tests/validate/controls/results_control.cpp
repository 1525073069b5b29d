#include "tests/validate/control.h"

// Gives the message of an installation that failed, and 0 all the same.
WRONG(VekAppInstall) {
    const float result = REAL(VekAppInstall);
    const bool gaveText = buffer1 && buffer1Size > 0 && buffer1[buffer1Size - 1] == '\0';
    return gaveText ? 0.0f : result;
}
