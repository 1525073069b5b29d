// The exports of every control: each passes its call on, and gives way to a definition of its own.

#include "tests/validate/control.h"

#define X(name, group, textUse, valueUse, kind1, kind2, result)          \
    extern "C" VEK_API __attribute__((weak)) float name(VEK_ARGUMENTS) { \
        return REAL(name);                                               \
    }
#include "exports/exports.def.h"
#undef X
