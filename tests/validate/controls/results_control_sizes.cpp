#include "tests/validate/control.h"

// Ends a message in a block that has no room for any.
WRONG(VekAppInstall) {
    const float result = REAL(VekAppInstall);
    if (buffer1 && buffer1Size < 1) *buffer1 = '\0';
    return result;
}
