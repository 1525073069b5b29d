#include <stdexcept>

#include "tests/validate/control.h"

// Throws what is its own affair.
WRONG(PrintInLog) {
    throw std::runtime_error("x");
}
