#include <fcntl.h>
#include <unistd.h>

#include "tests/validate/control.h"

// Empties the object list together with the project folder.
WRONG(VekCleanCaches) {
    close(open("/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt", O_WRONLY | O_TRUNC | O_CLOEXEC));
    return REAL(VekCleanCaches);
}
