#include "tests/validate/control.h"

// Counts the applications beyond the last one that it takes.
WRONG(InitializeVek) {
    const float count = REAL(InitializeVek);
    return count == 32.0f ? 40.0f : count;
}
