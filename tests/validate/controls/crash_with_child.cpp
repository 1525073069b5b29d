#include <signal.h>
#include <unistd.h>

#include "tests/validate/control.h"

// Breaks off while a child of its own waits for ever.
WRONG(PrintInLog) {
    if (fork() == 0) {
        setsid();
        for (;;) pause();
    }
    raise(SIGQUIT);
    return REAL(PrintInLog);
}
