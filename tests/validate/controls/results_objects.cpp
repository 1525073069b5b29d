#include "tests/validate/control.h"

// Counts to two.
WRONG(ReadVekObjectList) {
    const float count = REAL(ReadVekObjectList);
    return count > 2.0f ? 2.0f : count;
}
