#include <cstring>

#include "tests/validate/control.h"

// Knows no volumes.
WRONG(IsVekFilePathValid) {
    return text && std::strchr(text, ':') ? 0.0f : REAL(IsVekFilePathValid);
}
