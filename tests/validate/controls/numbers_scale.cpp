#include <cmath>

#include "tests/validate/control.h"

static double s_scale = 0.0;

WRONG(VekSetExportScale) {
    s_scale = value;
    return REAL(VekSetExportScale);
}

// Refuses to work with a scale that is no number.
WRONG(VekPostExport) {
    return std::isfinite(s_scale) ? REAL(VekPostExport) : -1.0f;
}
