#include <cstring>

#include "tests/validate/control.h"

volatile char s_dot;

// Looks for the dot of an extension in front of a text that is shorter than one.
WRONG(VekPreImport) {
    if (text && std::strlen(text) == 1) s_dot = text[-3];
    return REAL(VekPreImport);
}
