#include "exports/call_frame.h"

// Not built yet: each gives its failure result and touches nothing.

float OpenFileDialog(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return -1.0f;
}
