#include <cstring>

#include "tests/validate/control.h"

// Gives what it never gives for a long text.
WRONG(IsVekFilePathValid) {
    return text && std::strlen(text) > 50000 ? 2.0f : REAL(IsVekFilePathValid);
}
