// Leaves a variable behind when it is unloaded.
#include <cstdlib>

static const struct AtUnload {
    ~AtUnload() { setenv("VEK_WAS_HERE", "1", 1); }
} s_atUnload;
