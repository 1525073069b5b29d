#pragma once

#include "foundation/bx_string.h"

// The parts of a line KEY = value of the lookup dialect, in place: key and value without the
// blanks and tabs around them, the value without the line's break. Only the first '=' separates; a
// line without one is all key.
struct BXConfigLine {
    BXConfigLine(const char* begin, const char* end);

    bool hasKey() const { return keyBegin < keyEnd; }
    // Whether the key is this one, in any letter case. No line has the empty key.
    bool hasKey(const BXString& key, int keyLength) const;

    const char* keyBegin = nullptr;
    const char* keyEnd = nullptr;
    const char* valueBegin = nullptr;
    const char* valueEnd = nullptr;
};
