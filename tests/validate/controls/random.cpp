#include <cstdlib>

#include "tests/validate/scale_setting.h"

// Must not be called in that order.
WRONG(FindVekApp) {
    if (s_wasSet) std::abort();
    return REAL(FindVekApp);
}
