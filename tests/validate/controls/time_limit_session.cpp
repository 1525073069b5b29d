#include <cstdlib>

#include "tests/validate/control.h"

// Starts a program in a session of its own, which leaves its id, and waits for it, for ever.
WRONG(VekSetExportScale) {
    if (std::system("setsid sh -c 'echo $$ >\"$VEK_STARTED\"; sleep 1000'") != 0) return 1.0f;
    return REAL(VekSetExportScale);
}
