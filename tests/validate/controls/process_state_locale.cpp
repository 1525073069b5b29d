#include <clocale>

#include "tests/validate/control.h"

// Sorts as its user does from now on.
WRONG(WriteConfigPrefAsInt) {
    std::setlocale(LC_COLLATE, "C.UTF-8");
    return REAL(WriteConfigPrefAsInt);
}
