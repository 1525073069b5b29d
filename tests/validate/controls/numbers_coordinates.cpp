#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/validate/control.h"

static std::string bytesOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Turns no mesh whose first coordinate is NaN.
WRONG(VekPostExport) {
    const std::string mesh = text ? bytesOf(text) : "";
    float number = 0.0f;
    if (mesh.size() > 52 && mesh.compare(0, 4, "Vekb") == 0)
        std::memcpy(&number, &mesh[48], sizeof number);
    return std::isnan(number) ? -1.0f : REAL(VekPostExport);
}
