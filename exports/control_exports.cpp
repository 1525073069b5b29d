#include "exports/call_frame.h"

// Not built yet: each gives its failure result and touches nothing.

float VekAppInstall(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return 1.0f;
}

float VekAppIsRunning(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return 0.0f;
}

float OpenVekApplication(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return 0.0f;
}

float CallVekAppCommand(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return -1.0f;
}

float CallVekAppCommandAsAdmin(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return -1.0f;
}
