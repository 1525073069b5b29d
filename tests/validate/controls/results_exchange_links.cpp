#include <filesystem>

#include "tests/validate/control.h"

// Empties the folders, too, that links lead to.
WRONG(VekCleanCaches) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    for (const auto& entry :
         fs::directory_iterator("/Users/Shared/Kelvaro/VekProjects/Default", ignored)) {
        if (!entry.is_symlink(ignored) || !entry.is_directory(ignored)) continue;
        for (const auto& inner : fs::directory_iterator(entry.path(), ignored))
            fs::remove_all(inner.path(), ignored);
    }
    return REAL(VekCleanCaches);
}
