#include "tests/validate/control.h"

// Ends a message that was cut behind the block, and not in its last byte.
WRONG(VekAppInstall) {
    const float result = REAL(VekAppInstall);
    if (result == 1.0f && buffer1 && buffer1Size > 0 && buffer1Size < 4096)
        buffer1[buffer1Size] = '\0';
    return result;
}
