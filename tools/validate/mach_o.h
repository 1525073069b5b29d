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

// What the file is for processors of this word size. A bundle can be loaded as a library can.
enum class MachOKind { Library, Object, Program, Other };
MachOKind machOKind(const std::string& bytes, int bits);
