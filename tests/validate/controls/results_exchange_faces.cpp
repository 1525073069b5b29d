#include <cstdio>
#include <cstring>

#include "tests/validate/control.h"

// Mirrors the vertices, and leaves the faces as they were.
WRONG(VekPostExport) {
    constexpr long kFaces = 32 + 16 + 4 * 12;
    char faces[256];
    std::FILE* file = text ? std::fopen(text, "rb") : nullptr;
    std::size_t count = 0;
    if (file && std::fseek(file, kFaces, SEEK_SET) == 0)
        count = std::fread(faces, 1, sizeof faces, file);
    if (file) std::fclose(file);
    const float result = REAL(VekPostExport);
    const char* const end = text ? std::strrchr(text, '.') : nullptr;
    const bool isMesh = end && std::strcmp(end, ".vek") == 0;
    file = result == 0.0f && isMesh ? std::fopen(text, "r+b") : nullptr;
    if (!file) return result;
    if (std::fseek(file, kFaces, SEEK_SET) == 0) std::fwrite(faces, 1, count, file);
    std::fclose(file);
    return result;
}
