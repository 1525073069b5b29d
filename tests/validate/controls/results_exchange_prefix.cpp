#include <cstring>

#include "tests/validate/control.h"

// Takes the volume off the host's own text.
WRONG(IsVekFilePathValid) {
    const float result = REAL(IsVekFilePathValid);
    char* const path = text ? std::strchr(text, '/') : nullptr;
    if (path && path != text) std::memmove(text, path, std::strlen(path) + 1);
    return result;
}
