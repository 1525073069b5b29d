#include <unistd.h>

#include "tests/validate/control.h"
#include "tests/validate/written_file.h"

// Leaves the number of its process in the file that it wrote.
WRONG(WriteVekAppPath) {
    const float result = REAL(WriteVekAppPath);
    std::FILE* const file = openWrittenFile(value);
    if (!file) return result;
    std::fprintf(file, "WRITER = %d\n", static_cast<int>(getpid()));
    std::fclose(file);
    return result;
}
