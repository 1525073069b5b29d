#include <fcntl.h>

#include <cstring>

#include "tests/validate/control.h"

volatile int s_folder;

// Leaves a folder open for a scene.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    char* const extension = text ? std::strstr(text, ".ma") : nullptr;
    if (extension) s_folder = open("/", O_RDONLY | O_CLOEXEC);
    return result;
}
