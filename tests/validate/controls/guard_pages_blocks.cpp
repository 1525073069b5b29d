#include <cstring>

#include "tests/validate/control.h"

volatile char s_behind;

// Looks at the character behind the end of its key, but for a short one.
WRONG(ReadConfigPrefAsInt) {
    const std::size_t length = buffer1 ? std::strlen(buffer1) : 0;
    if (length > 1) s_behind = buffer1[length + 1];
    return REAL(ReadConfigPrefAsInt);
}
