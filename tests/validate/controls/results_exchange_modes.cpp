#include <sys/stat.h>

#include "tests/validate/control.h"

// Keeps what it turned from everybody else.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    if (text && result == 0.0f) chmod(text, 0600);
    return result;
}
