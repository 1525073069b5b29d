#include <sys/stat.h>

#include "tests/validate/control.h"

// Takes the protection off the folder and the file that it is to write.
WRONG(WriteVekAppPath) {
    chmod("/Users/Shared/Kelvaro/VekApps/Alpha", 0755);
    chmod("/Users/Shared/Kelvaro/VekApps/Alpha/Vek_Config.txt", 0644);
    return REAL(WriteVekAppPath);
}
