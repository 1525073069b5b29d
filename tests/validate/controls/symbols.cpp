// Shows a function that is no export.
#include "tests/validate/control.h"

extern "C" VEK_API int VekDebugDump() {
    return 1;
}
