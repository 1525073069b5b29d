#include <unistd.h>

#include "tests/validate/control.h"

// Takes a file for valid that is there and empty.
WRONG(IsVekFilePathValid) {
    return text && access(text, R_OK) == 0 ? 1.0f : REAL(IsVekFilePathValid);
}
