#include <sys/stat.h>

#include <cstring>

#include "tests/validate/control.h"

// Takes the protection off a scene.
WRONG(VekPostExport) {
    struct stat status;
    const bool isScene = text && std::strstr(text, ".ma") && stat(text, &status) == 0;
    if (isScene && !(status.st_mode & S_IWUSR)) chmod(text, 0644);
    return REAL(VekPostExport);
}
