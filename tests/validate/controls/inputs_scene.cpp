#include <cstring>

#include "tests/validate/control.h"

// Cuts the extension off the text of a scene.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    char* const extension = text ? std::strstr(text, ".ma") : nullptr;
    if (extension) *extension = '\0';
    return result;
}
