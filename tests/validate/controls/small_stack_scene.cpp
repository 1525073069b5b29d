#include <cstring>

#include "tests/validate/control.h"

char* volatile s_block;

// Works on a scene in a large block on the stack.
static void useBlock() {
    char block[512 * 1024];
    s_block = block;
    std::memset(s_block, 0, sizeof block);
}

WRONG(VekPostExport) {
    const char* const end = text ? std::strrchr(text, '.') : nullptr;
    if (end && std::strcmp(end, ".ma") == 0) useBlock();
    return REAL(VekPostExport);
}
