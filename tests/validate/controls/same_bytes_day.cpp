#include <time.h>

#include "tests/validate/control.h"
#include "tests/validate/written_file.h"

// Leaves the day in the file that it wrote.
WRONG(WriteVekAppPath) {
    const float result = REAL(WriteVekAppPath);
    std::FILE* const file = openWrittenFile(value);
    if (!file) return result;
    std::fprintf(file, "DAY = %ld\n", static_cast<long>(time(nullptr) / 86400));
    std::fclose(file);
    return result;
}
