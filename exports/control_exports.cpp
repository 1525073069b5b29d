#include "exports/call_frame.h"

// Not built yet: each gives its failure result and touches nothing.

VEK_DEFINE(VekAppInstall) {
    return 1.0f;
}

VEK_DEFINE(VekAppIsRunning) {
    return 0.0f;
}

VEK_DEFINE(OpenVekApplication) {
    return 0.0f;
}

VEK_DEFINE(CallVekAppCommand) {
    return -1.0f;
}

VEK_DEFINE(CallVekAppCommandAsAdmin) {
    return -1.0f;
}
