#include "tools/vek/library.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

#include "tools/vek/program_folder.h"

Library::Library(const std::string& path)
    : m_path(std::filesystem::absolute(path).string()),
      m_handle(dlopen(m_path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!m_handle) throw std::runtime_error(fmt::format("cannot load the library: {}", dlerror()));
}

Library::~Library() {
    dlclose(m_handle);
}

std::string Library::defaultPath() {
    // Beside the folder of the program in a build; installed, where libraries are.
    const auto prefix = programFolder().parent_path();
    const auto built = prefix / VEK_LIBRARY_NAME;
    return (std::filesystem::exists(built) ? built : prefix / VEK_LIBRARY_FOLDER / VEK_LIBRARY_NAME)
        .string();
}

VekExport Library::find(const std::string& name) const {
    const auto function = reinterpret_cast<VekExport>(dlsym(m_handle, name.c_str()));
    if (!function) throw std::runtime_error(fmt::format("{} has no export {}", m_path, name));
    return function;
}
