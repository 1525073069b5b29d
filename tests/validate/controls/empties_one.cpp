#include <cstdlib>

#include "tests/validate/control.h"

// Can do without a file, but not with an empty key in it.
WRONG(ReadConfigPrefAsFloat) {
    if (text && *text && buffer1 && !*buffer1) std::abort();
    return REAL(ReadConfigPrefAsFloat);
}
