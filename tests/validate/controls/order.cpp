#include <cstring>

#include "tests/validate/control.h"

static char s_first[4096];

// Remembers the first object, also when the list was released.
WRONG(GetVekObjectPath) {
    char path[4096] = "";
    const float result = real_GetVekObjectPath(text, value, path, 0, nullptr, 0, nullptr);
    if (value == 0.0 && *path) std::strcpy(s_first, path);
    if (buffer1 && value == 0.0 && *s_first) std::strcpy(buffer1, s_first);
    return value == 0.0 ? result : REAL(GetVekObjectPath);
}
