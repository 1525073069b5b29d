#include "tools/vek/program_folder.h"

#include "tools/vek/own_program.h"

std::filesystem::path programFolder() {
    return std::filesystem::path(ownProgram()).parent_path();
}
