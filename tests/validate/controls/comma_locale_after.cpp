#include <clocale>

#include "tests/validate/control.h"

static bool hasComma() {
    return *std::localeconv()->decimal_point == ',';
}

// Takes the comma away, and does not give it back.
WRONG(VekPostExport) {
    if (hasComma()) std::setlocale(LC_NUMERIC, "C");
    return REAL(VekPostExport);
}
