#include "os/shell.h"

#include <cstdlib>

void bxRunShellCommand(const BXString& command) {
    const int ignored = std::system(command.c_str());
    static_cast<void>(ignored);
}
