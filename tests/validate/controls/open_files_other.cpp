#include <fcntl.h>
#include <unistd.h>

#include "tests/validate/control.h"

// Has another file in the place of one that is the host's.
WRONG(VekCleanCaches) {
    const int folder = open("/", O_RDONLY);
    dup2(folder, STDIN_FILENO);
    close(folder);
    return REAL(VekCleanCaches);
}
