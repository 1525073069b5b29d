#pragma once

#include <unistd.h>

#include <cstdio>

// The file that WriteVekAppPath has just written for the first application, to add a line to it
// that is not the same in another run; null where it wrote none.
inline std::FILE* openWrittenFile(double value) {
    const char path[] = "/Users/Shared/Kelvaro/VekApps/Alpha/Vek_Config.txt";
    const bool isWritten = value > -1.0 && value < 1.0 && access(path, W_OK) == 0;
    return isWritten ? std::fopen(path, "ab") : nullptr;
}
