#include <mach-o/dyld.h>
#include <stdlib.h>

#include <cstdint>

#include "tools/vek/own_program.h"

std::string ownProgram() {
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::string path(size, '\0');
    if (_NSGetExecutablePath(path.data(), &size) != 0) return "";
    char* const whole = realpath(path.c_str(), nullptr);
    if (!whole) return "";
    path = whole;
    std::free(whole);
    return path;
}
