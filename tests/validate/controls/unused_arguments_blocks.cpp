#include "tests/validate/control.h"

volatile char s_first;

// Looks into a block that it is said to ignore.
WRONG(PrintInLog) {
    if (buffer1) s_first = *buffer1;
    return REAL(PrintInLog);
}
