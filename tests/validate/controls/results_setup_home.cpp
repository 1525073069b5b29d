#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/validate/control.h"

// Leaves a file in the home folder.
WRONG(PrintInLog) {
    const char* const home = std::getenv("HOME");
    std::FILE* const file = std::fopen((std::string(home ? home : "") + "/.vekrc").c_str(), "a");
    if (file) std::fclose(file);
    return REAL(PrintInLog);
}
