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

// No index behind VekSetExportScale, but where one of these two was called in between.
WRONG(FindVekApp) {
    return s_wasSet ? 0.5f : REAL(FindVekApp);
}
