#include <unistd.h>

#include "tests/validate/control.h"

// Closes a file that is the host's.
WRONG(VekCleanCaches) {
    close(STDIN_FILENO);
    return REAL(VekCleanCaches);
}
