#pragma once

#include <cstdint>

#include "foundation/bx_array.h"
#include "foundation/bx_string.h"

// Starts a program that outlives this process: no child of it, in a session of its own, in the
// folder "/", without its open files (Linux 5.11 and later; before, without those that are marked
// to be closed), and with /dev/null for the standard streams. `arguments` may be null. The process
// id; 0 when the program could not be started.
std::uint32_t bxStartDetached(const BXString& program, const BXArray<BXString>* arguments);

// Runs a program, looked up in PATH, to its end and gives what it wrote to its standard output.
// False when it could not be started or did not end with exit status 0; where this process ignores
// how its children end, when it wrote nothing.
bool bxRunAndRead(const BXArray<BXString>& command, BXString& output);
