#include <string>

#include "tests/validate/control.h"

static std::string s_deleted;

// Says that it deleted what it deleted before.
WRONG(VekDeleteFile) {
    const float result = REAL(VekDeleteFile);
    const std::string path(text ? text : "");
    if (result == 1.0f) s_deleted = path;
    return path == s_deleted && !path.empty() ? 1.0f : result;
}
