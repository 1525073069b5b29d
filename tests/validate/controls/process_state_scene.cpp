#include <stdlib.h>

#include <cstring>

#include "tests/validate/control.h"

// Sets a variable for a scene.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    char* const extension = text ? std::strstr(text, ".ma") : nullptr;
    if (extension) setenv("VEK_MERGED", "1", 1);
    return result;
}
