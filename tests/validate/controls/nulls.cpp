#include <cstring>

#include "tests/validate/control.h"

volatile std::size_t s_length;

// Measures its text without looking whether there is one, where there is no block either.
WRONG(VekAppInstall) {
    if (!buffer1) s_length = std::strlen(text);
    return REAL(VekAppInstall);
}
