#include <cstring>

#include "tests/validate/control.h"

// Cuts the extension off the host's own text, and puts it back.
WRONG(VekClearFile) {
    char* const dot = text ? std::strrchr(text, '.') : nullptr;
    if (dot) *static_cast<volatile char*>(dot) = '\0';
    if (dot) *static_cast<volatile char*>(dot) = '.';
    return REAL(VekClearFile);
}
