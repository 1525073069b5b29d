#include <sys/resource.h>

#include "tests/validate/control.h"

// Takes half of its open files from the host.
WRONG(PrintInLog) {
    struct rlimit limit = {};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur > 256) {
        limit.rlim_cur = 256;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    return REAL(PrintInLog);
}
