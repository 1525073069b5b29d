#include <unistd.h>

#include <cstdio>

#include "tests/validate/control.h"

static char s_here;

// Leaves a place in memory in the file that it wrote.
WRONG(WriteVekAppPath) {
    const float result = REAL(WriteVekAppPath);
    const char path[] = "/Users/Shared/Kelvaro/VekApps/Alpha/Vek_Config.txt";
    const bool isWritten = value > -1.0 && value < 1.0 && access(path, W_OK) == 0;
    std::FILE* const file = isWritten ? std::fopen(path, "ab") : nullptr;
    if (!file) return result;
    std::fprintf(file, "WRITER = %p\n", static_cast<void*>(&s_here));
    std::fclose(file);
    return result;
}
