#include <sys/stat.h>

#include <initializer_list>

#include "tests/validate/control.h"

// Takes the protection off the folder and the file that it is to write.
WRONG(WriteVekAppPath) {
    for (const char* path : {"/Users/Shared/Kelvaro/VekApps/Alpha",
                             "/Users/Shared/Kelvaro/VekApps/Alpha/Vek_Config.txt"}) {
        struct stat status = {};
        if (stat(path, &status) == 0) chmod(path, status.st_mode | S_IWUSR);
    }
    return REAL(WriteVekAppPath);
}
