#pragma once

#include "tests/validate/control.h"

// Whether VekSetExportScale was called, and neither of the two others since: an order of calls that
// only random ones make.
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
