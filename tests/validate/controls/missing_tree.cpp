#include <sys/stat.h>

#include "tests/validate/control.h"

// Makes the folder that its file goes into.
WRONG(AddVekObjectToList) {
    mkdir("/Users/Shared/Kelvaro", 0755);
    mkdir("/Users/Shared/Kelvaro/VekHub", 0755);
    return REAL(AddVekObjectToList);
}
