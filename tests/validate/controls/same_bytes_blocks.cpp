#include "tests/validate/control.h"
#include "tests/validate/process_age.h"

// Gives another path after an hour.
WRONG(ReadVekProjectPath) {
    const float result = REAL(ReadVekProjectPath);
    if (buffer1 && isOldProcess()) *buffer1 = '-';
    return result;
}
