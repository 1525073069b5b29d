#include <stdlib.h>

#include <string>

#include "tests/validate/control.h"

// Does not find the program that takes the quarantine off.
WRONG(InitializeVek) {
    const char* const path = getenv("PATH");
    const std::string was = path ? path : "";
    setenv("PATH", "/nowhere", 1);
    const float result = REAL(InitializeVek);
    setenv("PATH", was.c_str(), 1);
    return result;
}
