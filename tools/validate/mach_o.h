#pragma once

#include <string>

// The word sizes for which a macOS library holds code.
struct MachOSizes {
    bool has32 = false;
    bool has64 = false;
};

// Of the file with these bytes, which may be one that holds several libraries, each for a processor
// of its own; none where it is neither.
MachOSizes machOSizes(const std::string& bytes);
