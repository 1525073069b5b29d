#include "tools/vek/program_folder.h"

#include <filesystem>

#include "tools/vek/own_program.h"

std::string programFolder() {
    return std::filesystem::path(ownProgram()).parent_path().string();
}
