#include "tests/validate/control.h"
#include "tests/validate/process_age.h"

// Does not return 0 any more when it has been called for an hour.
WRONG(PrintInLog) {
    return isOldProcess() ? 1.0f : REAL(PrintInLog);
}
