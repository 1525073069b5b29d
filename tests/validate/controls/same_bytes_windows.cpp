#include "tests/validate/control.h"
#include "tests/validate/process_age.h"

// Moves no windows any more when it has been called for an hour.
WRONG(SetItemPos) {
    return isOldProcess() ? 0.0f : REAL(SetItemPos);
}
