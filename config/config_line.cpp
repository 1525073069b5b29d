#include "config/config_line.h"

#include <cstring>

#include "config/line_walker.h"

BXConfigLine::BXConfigLine(const char* begin, const char* end) {
    if (!begin || begin >= end || !trimLine(begin, end)) return;
    const void* const found = std::memchr(begin, '=', static_cast<std::size_t>(end - begin));
    const char* const equals = found ? static_cast<const char*>(found) : end;
    keyBegin = begin;
    keyEnd = equals;
    while (keyEnd > keyBegin && isBlank(keyEnd[-1])) --keyEnd;
    valueBegin = found ? equals + 1 : end;
    valueEnd = end;
    while (valueBegin < valueEnd && isBlank(*valueBegin)) ++valueBegin;
}

bool BXConfigLine::hasKey(const BXString& key, int keyLength) const {
    if (keyLength == 0 || keyEnd - keyBegin < keyLength) return false;
    if (BXString::cmpNoCase(keyBegin, key.c_str(), keyLength) != 0) return false;
    // As text, the key ends at a NUL.
    return keyBegin + keyLength == keyEnd || keyBegin[keyLength] == '\0';
}
