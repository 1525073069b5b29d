#include <cstring>

#include "tests/validate/control.h"

volatile char s_behind;

// Looks at the character behind the end of its text.
WRONG(FindVekApp) {
    if (text) s_behind = text[std::strlen(text) + 1];
    return REAL(FindVekApp);
}
