#include <cstdio>
#include <cstring>

#include "tests/validate/control.h"

// Says that it merged a scene.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    char* const extension = text ? std::strstr(text, ".ma") : nullptr;
    if (extension) std::puts("merged");
    return result;
}
