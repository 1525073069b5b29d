#pragma once

#include <filesystem>

// The folder that this program lies in; empty where the system does not tell.
std::filesystem::path programFolder();
