#include <cctype>

#include "tests/validate/control.h"

// Compares keys by making the host's own one small.
WRONG(WriteConfigPrefAsString) {
    if (buffer1 && *buffer1) *buffer1 = static_cast<char>(std::tolower(*buffer1));
    return REAL(WriteConfigPrefAsString);
}
