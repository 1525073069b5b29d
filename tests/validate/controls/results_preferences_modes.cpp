#include <sys/stat.h>
#include <unistd.h>

#include "tests/validate/control.h"
#include "tests/validate/full_disk.h"

// Keeps what it wrote from everybody else.
WRONG(WriteConfigPrefAsInt) {
    const float result = REAL(WriteConfigPrefAsInt);
    if (text && access(text, W_OK) == 0 && !isDiskFull()) chmod(text, 0600);
    return result;
}
