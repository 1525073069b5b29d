#include <unistd.h>

#include "tests/validate/control.h"

// Goes over to the group of who started it, and waits for ever.
WRONG(PrintInLog) {
    setpgid(0, getpgid(getppid()));
    for (;;) pause();
}
