#include "tests/validate/control.h"

// The offsets along y and z are exchanged.
WRONG(VekSetExportOffsetY) {
    return REAL(VekSetExportOffsetZ);
}

WRONG(VekSetExportOffsetZ) {
    return REAL(VekSetExportOffsetY);
}
