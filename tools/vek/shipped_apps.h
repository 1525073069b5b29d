#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

// The folder of target applications that belongs to this program: share/vek/apps where it is
// installed, apps of the build folder where it was built.
std::string shippedAppsFolder();
// The names of the target applications in `folder`, sorted: the folders in it with a descriptor,
// and those that cannot be looked into. `error` says why the folder itself cannot be read.
std::vector<std::string> shippedApps(const std::string& folder, std::error_code& error);

// What ships of a folder, sorted; what a build leaves there does not.
std::vector<std::filesystem::directory_entry> shippedEntries(const std::string& folder,
                                                             std::error_code& error);
// All that ships of a folder, also within its folders, by the paths below it.
std::vector<std::string> contentsOf(const std::string& folder);
// The same of all applications in `folder`.
std::vector<std::string> contentsOfApps(const std::string& folder);
// The permissions that the copy of a file gets.
mode_t modeForCopyOf(const std::filesystem::directory_entry& file);
