#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

// Everything below a folder, the folder itself included: by its path, what it is, its mode, and the
// bytes of a file or the goal of a link.
inline std::map<std::string, std::string> snapshotOf(const std::string& root) {
    namespace fs = std::filesystem;
    std::map<std::string, std::string> found;
    const auto add = [&](const fs::path& path, const std::string& name) {
        struct stat status;
        if (lstat(path.c_str(), &status) != 0) return;
        char mode[8];
        std::snprintf(mode, sizeof mode, "%04o ", status.st_mode & 07777);
        if (S_ISLNK(status.st_mode)) {
            found[name] = "link " + fs::read_symlink(path).string();
        } else if (S_ISDIR(status.st_mode)) {
            found[name] = mode + std::string("folder");
        } else if (S_ISREG(status.st_mode)) {
            std::ifstream file(path, std::ios::binary);
            found[name] = mode + std::string(std::istreambuf_iterator<char>(file), {});
        } else {
            found[name] = mode + std::string("other");
        }
    };
    add(root, ".");
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        add(entry.path(), entry.path().lexically_relative(root).string());
    }
    return found;
}
