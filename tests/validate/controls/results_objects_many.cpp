#include <algorithm>

#include "tests/validate/control.h"

// Counts to 50.
WRONG(ReadVekObjectList) {
    return std::min(50.0f, REAL(ReadVekObjectList));
}
