#include <cfenv>

#include "tests/validate/control.h"

// Leaves numbers being cut off.
WRONG(VekSetExportScale) {
    std::fesetround(FE_TOWARDZERO);
    return REAL(VekSetExportScale);
}
