#include "tests/validate/control.h"
#include "tests/validate/full_disk.h"

// Does not return 0 on a full disk.
WRONG(PrintInLog) {
    return isDiskFull() ? 1.0f : REAL(PrintInLog);
}
