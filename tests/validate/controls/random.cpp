#include <cstdlib>

#include "tests/validate/control.h"

static bool s_wasSet = false;

WRONG(VekSetExportScale) {
    s_wasSet = true;
    return REAL(VekSetExportScale);
}

WRONG(GetVekAppIndex) {
    s_wasSet = false;
    return REAL(GetVekAppIndex);
}

WRONG(ReadVekObjectList) {
    s_wasSet = false;
    return REAL(ReadVekObjectList);
}

// Must not be called behind VekSetExportScale, but where one of these two was called in between.
WRONG(FindVekApp) {
    if (s_wasSet) std::abort();
    return REAL(FindVekApp);
}
