#pragma once

#include <string>

// The path of the running program; empty where the system does not tell.
std::string ownProgram();
