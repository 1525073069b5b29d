#include <filesystem>

#include "tools/vek/own_program.h"

std::string ownProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}
