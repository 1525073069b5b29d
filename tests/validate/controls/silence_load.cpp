
// Greets.
#include <cstdio>

[[maybe_unused]] static const int s_printed = std::puts("loaded");
