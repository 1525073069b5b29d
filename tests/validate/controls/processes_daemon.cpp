#include <sys/wait.h>
#include <unistd.h>

#include "tests/validate/control.h"

// Leaves a process in the background, in a session of its own.
WRONG(PrintInLog) {
    const pid_t process = fork();
    if (process == 0) {
        setsid();
        if (fork() != 0) _exit(0);
        for (;;) pause();
    }
    waitpid(process, nullptr, 0);
    return REAL(PrintInLog);
}
