#include "tests/validate/control.h"

volatile char s_first;

// Looks at the text that it is said to ignore.
WRONG(PrintInLog) {
    if (text) s_first = *text;
    return REAL(PrintInLog);
}
