#include <unistd.h>

#include "tests/validate/control.h"

// Does not return 0 without the tree.
WRONG(PrintInLog) {
    return access("/Users/Shared/Kelvaro", F_OK) == 0 ? REAL(PrintInLog) : 1.0f;
}
