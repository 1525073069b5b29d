#include <unistd.h>

#include "tests/validate/control.h"

// Wants to be woken in an hour.
WRONG(PrintInLog) {
    alarm(3600);
    return REAL(PrintInLog);
}
