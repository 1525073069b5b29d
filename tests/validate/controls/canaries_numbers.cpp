#include <unistd.h>

#include <cstring>

#include "tests/validate/control.h"

// Clears twice the bytes of the number where there is no file.
WRONG(ReadConfigPrefAsInt) {
    if (buffer2 && text && *text == '/' && access(text, F_OK) != 0) std::memset(buffer2, 0, 8);
    return REAL(ReadConfigPrefAsInt);
}
