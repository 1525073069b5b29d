#include "exports/call_frame.h"

// Not built yet: each gives its failure result and touches nothing.

VEK_DEFINE(SetItemPos) {
    return -1.0f;
}
