#include <sys/stat.h>

#include "tests/validate/control.h"

// Changes the mask where it cannot clear the file.
WRONG(VekClearFile) {
    const float result = REAL(VekClearFile);
    if (result == 0.0f) umask(0);
    return result;
}
