#include <cstring>

#include "tests/validate/control.h"

// Merges a scene where it is to be split.
WRONG(VekPreImport) {
    const char* const end = text ? std::strrchr(text, '.') : nullptr;
    return end && std::strcmp(end, ".ma") == 0 ? REAL(VekPostExport) : REAL(VekPreImport);
}
