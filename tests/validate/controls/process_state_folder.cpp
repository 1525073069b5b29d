#include <unistd.h>

#include "tests/validate/control.h"

// Works from the top of the file system.
WRONG(VekPreImport) {
    if (chdir("/") != 0) return -1.0f;
    return REAL(VekPreImport);
}
