#include <unistd.h>

#include <cstdlib>

#include "tests/validate/control.h"

// Starts a program, which leaves its id, and waits for it, for ever.
WRONG(VekSetExportScale) {
    if (std::system("echo $$ >\"$VEK_STARTED\"; sleep 1000") != 0) return 1.0f;
    return REAL(VekSetExportScale);
}
