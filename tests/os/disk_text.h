#pragma once

#include <string>

#include "foundation/bx_string.h"
#include "tests/support/temp_folder.h"

inline BXString text(const std::string& bytes) {
    return BXString(bytes.c_str());
}

// The path of an entry of the folder.
inline BXString at(const TempFolder& folder, const std::string& name) {
    return text(folder / name);
}
