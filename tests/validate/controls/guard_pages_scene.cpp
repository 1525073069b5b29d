#include <cstring>

#include "tests/validate/control.h"

volatile char s_read;

// Reads a character more of the path of a scene.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    char* const extension = text ? std::strstr(text, ".ma") : nullptr;
    if (extension) s_read = extension[4];
    return result;
}
