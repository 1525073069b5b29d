#include "tools/vek/program_folder.h"

#ifdef __APPLE__
#include <mach-o/dyld.h>

std::filesystem::path programFolder() {
    char path[4096] = {};
    uint32_t size = sizeof path;
    if (_NSGetExecutablePath(path, &size) != 0) return {};
    std::error_code error;
    return std::filesystem::canonical(path, error).parent_path();
}

#else

std::filesystem::path programFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

#endif
