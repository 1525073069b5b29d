#pragma once

#include "foundation/bx_string.h"

// Runs the command through the system's shell and waits for it. Nothing is made of its outcome: it
// is not even an error when there is no such command.
void bxRunShellCommand(const BXString& command);
