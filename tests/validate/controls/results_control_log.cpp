#include <cstring>

#include "tests/validate/control.h"

// Takes an installation for done that left no log.
WRONG(VekAppInstall) {
    const float result = REAL(VekAppInstall);
    return buffer1 && std::memchr(buffer1, '\0', 256) == buffer1 + 218 ? 0.0f : result;
}
