#include <sys/stat.h>

#include "tests/validate/control.h"

// Lets everybody write what is made from now on.
WRONG(VekAppIsInstalled) {
    umask(0);
    return REAL(VekAppIsInstalled);
}
