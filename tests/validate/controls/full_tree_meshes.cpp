#include "tests/validate/control.h"
#include "tests/validate/full_disk.h"

// Empties a mesh where there is no room for another one.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    if (text && result == 0.0f && isDiskFull()) emptyFile(text);
    return result;
}
