#include <fcntl.h>

#include "tests/validate/control.h"

volatile int s_folder;

// Forgets to close the folder that it emptied.
WRONG(VekCleanCaches) {
    s_folder = open("/", O_RDONLY | O_CLOEXEC);
    return REAL(VekCleanCaches);
}
