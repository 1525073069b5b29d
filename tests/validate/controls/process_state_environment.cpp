#include <stdlib.h>

#include "tests/validate/control.h"

// Notes in the environment that it was called.
WRONG(PrintInLog) {
    setenv("VEK_WAS_HERE", "1", 1);
    return REAL(PrintInLog);
}
