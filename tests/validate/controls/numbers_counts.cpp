#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/validate/control.h"

static std::string bytesOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Ends the process for a mesh of more than a million vertices.
WRONG(VekPostExport) {
    const std::string mesh = text ? bytesOf(text) : "";
    std::uint32_t count = 0;
    if (mesh.size() > 52 && mesh.compare(0, 4, "Vekb") == 0)
        std::memcpy(&count, &mesh[40], sizeof count);
    if (count > 1000000) std::abort();
    return REAL(VekPostExport);
}
