#include <cstring>

#include "tests/validate/control.h"

char* volatile s_path;

// Copies its text into a block that paths fit into.
WRONG(VekAppIsRunning) {
    char path[4096];
    s_path = path;
    if (text) std::strcpy(s_path, text);
    return REAL(VekAppIsRunning);
}
