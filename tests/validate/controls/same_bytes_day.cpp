#include <time.h>
#include <unistd.h>

#include <cstdio>

#include "tests/validate/control.h"

// Leaves the day in the file that it wrote.
WRONG(WriteVekAppPath) {
    const float result = REAL(WriteVekAppPath);
    const char path[] = "/Users/Shared/Kelvaro/VekApps/Alpha/Vek_Config.txt";
    const bool isWritten = value > -1.0 && value < 1.0 && access(path, W_OK) == 0;
    std::FILE* const file = isWritten ? std::fopen(path, "ab") : nullptr;
    if (!file) return result;
    std::fprintf(file, "DAY = %ld\n", static_cast<long>(time(nullptr) / 86400));
    std::fclose(file);
    return result;
}
