#pragma once

#include <cstdint>

#include "foundation/bx_array.h"
#include "foundation/bx_string.h"

// The running processes as /proc tells them.

// Their ids, ascending.
BXArray<std::uint32_t> bxProcessIds();
// The file that the process runs: for a script the script, not its interpreter. Empty for a process
// that has ended, and for one of another user, which does not say.
BXString bxExecutableOfProcess(std::uint32_t id);
