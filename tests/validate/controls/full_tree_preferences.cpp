#include "tests/validate/control.h"
#include "tests/validate/full_disk.h"

// Empties a file that it cannot write.
WRONG(WriteConfigPrefAsString) {
    const float result = REAL(WriteConfigPrefAsString);
    if (text && isDiskFull()) emptyFile(text);
    return result;
}
