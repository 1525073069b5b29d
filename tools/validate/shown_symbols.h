#pragma once

#include <set>
#include <string>

// The names that a library's own file shows to who loads it, whatever it brings along. False, with
// a sentence in `why`, where they cannot be told here.
bool shownSymbols(const std::string& path, std::set<std::string>& names, std::string& why);

// The word size that a library is built for: 32 or 64; 0 where the file does not say.
int bitsOf(const std::string& path);

// Why a file of this program's word size is no library that it could load; empty where it is one.
std::string whyNotLoadable(const std::string& path);
