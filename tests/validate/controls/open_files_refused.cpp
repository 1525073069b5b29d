#include <fcntl.h>
#include <unistd.h>

#include "tests/validate/control.h"

volatile int s_file;

// Forgets to close a file that it refuses.
WRONG(VekPreImport) {
    const float result = REAL(VekPreImport);
    if (result == -1.0f && text) s_file = open(text, O_RDONLY | O_CLOEXEC);
    return result;
}
