#include <cstring>

#include "tests/validate/control.h"

// Ends its text with two zeros.
WRONG(GetVekAppName) {
    char name[8192] = "";
    real_GetVekAppName(text, value, name, 0, nullptr, 0, nullptr);
    const float result = REAL(GetVekAppName);
    if (buffer1 && *name) buffer1[std::strlen(name) + 1] = '\0';
    return result;
}
