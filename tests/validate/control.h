#pragma once

// For libraries that are wrong in one way. Every export passes its call on to the real one, under
// the name real_NAME, but for those that a control defines itself.

#include "exports/vek.h"

#define X(name, group, textUse, valueUse, kind1, kind2, result) \
    extern "C" float real_##name(VEK_ARGUMENTS);
#include "exports/exports.def.h"
#undef X

// The head of an export that is wrong.
#define WRONG(name) extern "C" VEK_API float name(VEK_ARGUMENTS)
// The call of this export passed on, with the arguments as they are now.
#define REAL(name) real_##name(text, value, buffer1, buffer1Size, buffer2, buffer2Size, hostData)
