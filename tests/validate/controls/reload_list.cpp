#include <cstring>

#include "tests/validate/control.h"
#include "tests/validate/kept_count.h"

static bool s_isPrepared = false;

WRONG(InitializeVek) {
    s_isPrepared = true;
    return REAL(InitializeVek);
}

WRONG(ReadVekObjectList) {
    s_isPrepared = true;
    return REAL(ReadVekObjectList);
}

// Has an object when it is loaded for the fifth time and asked before it has read any.
WRONG(GetVekObjectPath) {
    if (!s_isPrepared && ++keptCount() > 4 && buffer1) std::strcpy(buffer1, "kept");
    return REAL(GetVekObjectPath);
}
