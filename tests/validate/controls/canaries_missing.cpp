#include <unistd.h>

#include "tests/validate/control.h"

// Writes far behind its result without the tree.
WRONG(ReadVekProjectPath) {
    if (buffer1 && access("/Users/Shared/Kelvaro", F_OK) != 0) buffer1[1000] = '\0';
    return REAL(ReadVekProjectPath);
}
