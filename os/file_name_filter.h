#pragma once

// Whether a file name matches a wildcard filter: '*' stands for any run of characters, '?' for any
// one, everything else, '.' too, for itself in any letter case. An empty name or filter matches
// nothing. The time is at most the name's length times the filter's.
bool fileNameMatchFilter(const char* name, const char* filter) noexcept;
