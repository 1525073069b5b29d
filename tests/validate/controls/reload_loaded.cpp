#include <dlfcn.h>

#include "tests/validate/control.h"
#include "tests/validate/kept_count.h"

static bool s_isPrepared = false;

WRONG(InitializeVek) {
    s_isPrepared = true;
    return REAL(InitializeVek);
}

// Stays in memory when it is loaded for the fifth time and asked before it was initialised.
WRONG(GetVekObjectPath) {
    Dl_info here = {};
    if (!s_isPrepared && ++keptCount() > 4 && dladdr(&s_isPrepared, &here) != 0)
        dlopen(here.dli_fname, RTLD_NOW | RTLD_NODELETE);
    return REAL(GetVekObjectPath);
}
