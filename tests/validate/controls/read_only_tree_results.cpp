#include <unistd.h>

#include "tests/validate/control.h"

// Does not return 0 in a tree that may only be read.
WRONG(PrintInLog) {
    const bool isThere = access("/Users/Shared/Kelvaro", F_OK) == 0;
    return isThere && access("/Users/Shared/Kelvaro", W_OK) != 0 ? 1.0f : REAL(PrintInLog);
}
