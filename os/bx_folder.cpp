#include "os/bx_folder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstring>

namespace {

// Most file systems tell the type with the name; some leave it to be asked for.
bool isFolder(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat status;
    if (fstatat(dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return false;
    return S_ISDIR(status.st_mode);
}

}  // namespace

bool BXFolder::Entry::isDots() const noexcept {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

BXFolder::BXFolder(const char* path) noexcept : m_folder(path ? opendir(path) : nullptr) {}

BXFolder::~BXFolder() {
    if (m_folder) closedir(m_folder);
}

bool BXFolder::next(Entry& entry) noexcept {
    if (!m_folder) return false;
    const dirent* const found = readdir(m_folder);
    if (!found) return false;
    entry = {found->d_name, isFolder(m_folder, *found)};
    return true;
}

bool BXFolder::nextBelow(Entry& entry) noexcept {
    while (next(entry)) {
        if (!entry.isDots()) return true;
    }
    return false;
}
