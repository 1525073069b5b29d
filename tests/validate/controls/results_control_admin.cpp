#include "tests/validate/control.h"

// The two are exchanged.
WRONG(CallVekAppCommand) {
    return REAL(CallVekAppCommandAsAdmin);
}
WRONG(CallVekAppCommandAsAdmin) {
    return REAL(CallVekAppCommand);
}
