#include <cstdio>

#include "tests/validate/control.h"

// Does log.
WRONG(PrintInLog) {
    std::puts("PrintInLog");
    return REAL(PrintInLog);
}
