#include "tests/validate/control.h"

// Takes a pointer of the host's for a place of its own.
WRONG(SetItemPos) {
    if (hostData) hostData[0] = text;
    return REAL(SetItemPos);
}
