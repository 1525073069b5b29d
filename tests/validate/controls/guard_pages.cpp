#include <cstring>

#include "tests/validate/control.h"

volatile char s_behind;

// Looks at the character behind the end of its text, but for a short one.
WRONG(FindVekApp) {
    if (text && std::strlen(text) > 1) s_behind = text[std::strlen(text) + 1];
    return REAL(FindVekApp);
}
