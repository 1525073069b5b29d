#pragma once

#include <string>

// The folder that this program lies in; empty when that cannot be told.
std::string programFolder();
