#include <sys/stat.h>

#include "tests/validate/control.h"

// Refuses a file that ends within its vertices.
WRONG(VekPreImport) {
    struct stat status = {};
    const bool isThere = text && stat(text, &status) == 0;
    if (isThere && status.st_size > 0 && status.st_size < 96) return -1.0f;
    return REAL(VekPreImport);
}
