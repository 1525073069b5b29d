#include <cstdio>
#include <string>

#include "tests/validate/control.h"

// Empties the list first, and does not look whether all of it was written again.
WRONG(AddVekObject) {
    const char path[] = "/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt";
    std::FILE* file = std::fopen(path, "rb");
    if (!file) return 0.0f;
    std::string list = std::string(text ? text : "") + "\n";
    for (int byte; (byte = std::fgetc(file)) != EOF;) list += static_cast<char>(byte);
    std::fclose(file);
    file = std::fopen(path, "wb");
    if (!file) return 0.0f;
    std::fwrite(list.data(), 1, list.size(), file);
    std::fclose(file);
    return 1.0f;
}
