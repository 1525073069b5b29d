#pragma once

#include <string>

#include "tools/vek/descriptor.h"

// What to write for a command of which the folder has no file. `key` is the command's, and `name`
// what stands there for the file's name.
std::string adviceForCommand(const std::string& key, const std::string& name,
                             const std::string& folder, const Descriptor& descriptor);
