#include <signal.h>

#include "tests/validate/control.h"

// Sets a signal to what it does already, with flags of its own.
WRONG(PrintInLog) {
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    action.sa_flags = SA_NODEFER | SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    return REAL(PrintInLog);
}
