#include <cstring>

#include "tests/validate/control.h"

volatile std::size_t s_length;

// Measures its text without looking whether there is one.
WRONG(FindVekApp) {
    s_length = std::strlen(text);
    return REAL(FindVekApp);
}
