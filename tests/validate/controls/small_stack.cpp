#include <cstring>

#include "tests/validate/control.h"

char* volatile s_block;

// Works in a large block on the stack.
WRONG(VekPreImport) {
    char block[512 * 1024];
    s_block = block;
    std::memset(s_block, 0, sizeof block);
    return REAL(VekPreImport);
}
