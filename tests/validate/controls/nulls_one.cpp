#include <cstdlib>

#include "tests/validate/control.h"

// Can do without a file, but not without a key in it.
WRONG(ReadConfigPrefAsBool) {
    if (text && *text && !buffer1) std::abort();
    return REAL(ReadConfigPrefAsBool);
}
