#include <sys/stat.h>
#include <unistd.h>

#include "tests/validate/control.h"

// Lets everybody write the object list, of which it should know nothing.
WRONG(PrintInLog) {
    const char path[] = "/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt";
    if (access(path, W_OK) == 0) chmod(path, 0777);
    return REAL(PrintInLog);
}
