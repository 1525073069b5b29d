#include <unistd.h>

#include "tests/validate/control.h"

// Does not wait for a process that it started.
WRONG(PrintInLog) {
    if (fork() == 0) _exit(0);
    return REAL(PrintInLog);
}
