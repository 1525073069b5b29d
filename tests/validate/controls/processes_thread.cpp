#include "tests/validate/control.h"
#include "tests/validate/idle_thread.h"

// Leaves a thread running.
WRONG(PrintInLog) {
    startIdleThread();
    return REAL(PrintInLog);
}
