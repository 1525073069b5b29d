#include "tests/validate/control.h"

// Ends the text in front of the block where there is none.
WRONG(GetVekAppId) {
    const float result = REAL(GetVekAppId);
    if (buffer1 && value >= 1.0) buffer1[-1] = '\0';
    return result;
}
