#include <time.h>

#include <cstdio>

#include "tests/validate/control.h"

// Leaves the time in the header of the file that it rewrote.
WRONG(VekPostExport) {
    const float result = REAL(VekPostExport);
    std::FILE* const file = result == 0.0f && text ? std::fopen(text, "r+b") : nullptr;
    if (!file) return result;
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    if (std::fgetc(file) == 'V' && std::fseek(file, 16, SEEK_SET) == 0) {
        std::fwrite(&now, sizeof now, 1, file);
    }
    std::fclose(file);
    return result;
}
