#include "os/bx_folder.h"

#include <sys/stat.h>

#include <cstring>

bool BXFolder::Entry::isDots() const noexcept {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

BXFolder::BXFolder(const char* path) : m_path(path), m_folder(path ? opendir(path) : nullptr) {}

BXFolder::~BXFolder() {
    if (m_folder) closedir(m_folder);
}

bool BXFolder::isFolder(const dirent& entry) const {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    // By its path: to ask by the open folder is newer than the oldest Mac that loads the library.
    struct stat status;
    if (lstat((m_path + "/" + entry.d_name).c_str(), &status) != 0) return false;
    return S_ISDIR(status.st_mode);
}

bool BXFolder::next(Entry& entry) {
    if (!m_folder) return false;
    const dirent* const found = readdir(m_folder);
    if (!found) return false;
    entry = {found->d_name, isFolder(*found)};
    return true;
}

bool BXFolder::nextBelow(Entry& entry) {
    while (next(entry)) {
        if (!entry.isDots()) return true;
    }
    return false;
}
