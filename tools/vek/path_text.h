#pragma once

#include <string>

#include "tools/vek/finding.h"

// Paths as they are written into the tree's text files.

// What follows the name of a volume, which a ':' ends and the root follows; the path itself where
// it has none.
std::string withoutVolume(const std::string& path);
// The path that is probably meant: without quotes and blanks around it, the beginning of an address
// and the backslashes that a shell wants.
std::string plainPath(const std::string& written);

// Whether `path` begins at the root, with or without a volume; found otherwise. `whose` begins the
// sentence.
bool checkAbsolute(Findings& findings, const std::string& path, const std::string& file, int line,
                   const std::string& whose);
// Finds a volume in front of a path that applications read as it stands.
void findVolume(Findings& findings, const std::string& path, const std::string& file, int line);
