#include "tests/validate/control.h"

// Writes what is there already behind the end of a block that holds a path.
WRONG(GetVekAppExt) {
    volatile char* const behind = buffer1 ? buffer1 + 4096 : nullptr;
    if (behind) *behind = *behind;
    return REAL(GetVekAppExt);
}
