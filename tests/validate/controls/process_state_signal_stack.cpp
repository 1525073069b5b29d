#include <signal.h>

#include "tests/validate/control.h"

static char s_room[65536];

// Has signals handled in a place of its own.
WRONG(PrintInLog) {
    stack_t stack = {};
    stack.ss_sp = s_room;
    stack.ss_size = sizeof s_room;
    sigaltstack(&stack, nullptr);
    return REAL(PrintInLog);
}
