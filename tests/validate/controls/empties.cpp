#include <cstdlib>

#include "tests/validate/control.h"

// Insists on a path.
WRONG(IsAppPathValid) {
    if (text && !*text) std::abort();
    return REAL(IsAppPathValid);
}
