#include <sys/stat.h>

#include "tests/validate/control.h"

// Sets the mask for new files to the one that most processes have already.
WRONG(VekAppIsInstalled) {
    umask(022);
    return REAL(VekAppIsInstalled);
}
