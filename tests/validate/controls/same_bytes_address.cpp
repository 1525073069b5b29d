#include "tests/validate/control.h"
#include "tests/validate/written_file.h"

static char s_here;

// Leaves a place in memory in the file that it wrote.
WRONG(WriteVekAppPath) {
    const float result = REAL(WriteVekAppPath);
    std::FILE* const file = openWrittenFile(value);
    if (!file) return result;
    std::fprintf(file, "WRITER = %p\n", static_cast<void*>(&s_here));
    std::fclose(file);
    return result;
}
