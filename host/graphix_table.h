#pragma once

// The host's graphix function table that was installed before the first replacement; null until
// there was one. Shown to the outside under this very name: host builds look for it.
extern "C" __attribute__((visibility("default"))) void* s_table2;
