#include <clocale>

#include "tests/validate/control.h"

static bool hasComma() {
    return *std::localeconv()->decimal_point == ',';
}

// Finds no descriptor it can read where numbers are to have a comma.
WRONG(InitializeVek) {
    const float count = REAL(InitializeVek);
    return hasComma() ? 0.0f : count;
}
