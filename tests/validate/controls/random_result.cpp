#include "tests/validate/scale_setting.h"

// No index in that order.
WRONG(FindVekApp) {
    return s_wasSet ? 0.5f : REAL(FindVekApp);
}
