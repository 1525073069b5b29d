#pragma once

#include <cstdarg>
#include <cstddef>

// Numbers in files and messages are written and read as in the C locale, whatever locale the host
// has set for the process: a comma for a decimal point would change the files.

// vsnprintf with the C locale's numbers. A null format is the empty one.
int bxFormatInCLocale(char* buffer, std::size_t size, const char* fmt, std::va_list arguments);

// What scanf's "%f" makes of `text` in the C locale; 0 when it makes nothing of it, or for null.
float bxScanFloatInCLocale(const char* text);
