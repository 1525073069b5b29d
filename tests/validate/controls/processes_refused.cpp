#include <unistd.h>

#include "tests/validate/control.h"

// Does not wait for a process where there is no command.
WRONG(CallVekAppCommand) {
    const float result = REAL(CallVekAppCommand);
    if (result == -1.0f && fork() == 0) _exit(0);
    return result;
}
