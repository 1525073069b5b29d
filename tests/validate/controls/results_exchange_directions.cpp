#include "tests/validate/control.h"

// Turns what the application wrote as if the host had written it.
WRONG(VekPreImport) {
    return REAL(VekPostExport);
}
