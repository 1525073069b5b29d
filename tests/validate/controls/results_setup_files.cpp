#include <fcntl.h>
#include <unistd.h>

#include "tests/validate/control.h"

// Empties the object list, of which it should know nothing.
WRONG(PrintInLog) {
    close(open("/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt", O_WRONLY | O_TRUNC | O_CLOEXEC));
    return REAL(PrintInLog);
}
