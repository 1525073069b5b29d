#include "tools/vek/shared_tree.h"

#include <fmt/format.h>

#include <algorithm>

const std::vector<std::string>& treeFolders() {
    static const std::vector<std::string> folders = {"VekHub", "VekApps", "VekProjects",
                                                     "VekProjects/Default"};
    return folders;
}

const std::vector<std::string>& hubFiles() {
    static const std::vector<std::string> files = {"Vek_Application.txt", "Vek_ProjectPath.txt",
                                                   "Vek_ObjectPath.txt", "Vek_ObjectList.txt",
                                                   kConfigName};
    return files;
}

const std::vector<std::string>& appFiles() {
    static const std::vector<std::string> files = {kConfigName, kInstallListName};
    return files;
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string modeText(mode_t mode) {
    return fmt::format("{:04o}", mode & kModeBits);
}

std::string printable(const std::string& text) {
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        shown += byte < 0x20 || byte == 0x7F ? fmt::format("\\x{:02X}", byte) : std::string(1, c);
    }
    return shown;
}
