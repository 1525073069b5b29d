#pragma once

#include <cstdio>

// Whether the disk of the tree has no room for two more pages.
inline bool isDiskFull() {
    const char path[] = "/Users/Shared/Kelvaro/trial";
    std::FILE* const file = std::fopen(path, "wb");
    if (!file) return false;
    const char bytes[8192] = {};
    const bool isWritten = std::fwrite(bytes, 1, sizeof bytes, file) == sizeof bytes;
    const bool isClosed = std::fclose(file) == 0;
    std::remove(path);
    return !isWritten || !isClosed;
}

inline void emptyFile(const char* path) {
    std::FILE* const file = std::fopen(path, "wb");
    if (file) std::fclose(file);
}
