#include <sys/resource.h>

#include "tests/validate/control.h"

// Makes way for other processes.
WRONG(VekCleanCaches) {
    setpriority(PRIO_PROCESS, 0, getpriority(PRIO_PROCESS, 0) + 1);
    return REAL(VekCleanCaches);
}
