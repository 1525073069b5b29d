
// Takes its leave.
#include <cstdio>

static const struct AtUnload {
    ~AtUnload() { std::fputs("unloaded\n", stderr); }
} s_atUnload;
