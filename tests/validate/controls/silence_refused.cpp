#include <cstdio>

#include "tests/validate/control.h"

// Says what it refuses.
WRONG(VekPreImport) {
    const float result = REAL(VekPreImport);
    if (result == -1.0f) std::fputs("this is no mesh\n", stderr);
    return result;
}
