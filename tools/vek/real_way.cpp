#include "tools/vek/real_way.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "bridge/bx_vek.h"
#include "tools/vek/shared_tree.h"

namespace {

constexpr int kMostLinks = 40;

// Empty where it cannot be told.
std::string realPath(const std::string& path) {
    char* const real = realpath(path.c_str(), nullptr);
    const std::string found = real ? real : "";
    std::free(real);
    return found;
}

std::string targetOf(const std::string& link) {
    std::string target(PATH_MAX, '\0');
    const ssize_t size = readlink(link.c_str(), target.data(), target.size());
    target.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return target;
}

}  // namespace

std::vector<std::string> foldersOnTheWayTo(const std::string& path) {
    std::vector<std::string> folders;
    std::string reached;
    std::string rest = path;
    for (int links = 0; links < kMostLinks;) {
        const std::size_t begin = rest.find_first_not_of('/');
        if (begin == rest.npos) break;
        const std::size_t end = std::min(rest.find('/', begin), rest.size());
        const std::string name = rest.substr(begin, end - begin);
        rest.erase(0, end);
        const std::string folder = reached.empty() ? "/" : reached;
        if (!contains(folders, folder)) folders.push_back(folder);
        if (name == ".") continue;
        if (name == "..") {
            reached.erase(std::min(reached.rfind('/'), reached.size()));
            continue;
        }
        struct stat status;
        const std::string next = reached + "/" + name;
        if (lstat(next.c_str(), &status) != 0) {
            // What ends the way comes last, though it was gone through before.
            folders.erase(std::find(folders.begin(), folders.end(), folder));
            folders.push_back(folder);
            break;
        }
        if (S_ISLNK(status.st_mode)) {
            ++links;
            const std::string target = targetOf(next);
            if (target.empty()) break;
            if (target[0] == '/') reached.clear();
            rest = target + "/" + rest;
        } else {
            reached = next;
        }
    }
    return folders;
}

bool mayBeOpened(const std::string& folder) {
    const std::string real = realPath(folder);
    const std::string tree = realPath(BXVek::s_publicFolder.c_str());
    if (real.empty()) return false;
    if (!tree.empty() && (real == tree || real.rfind(tree + "/", 0) == 0)) return true;
    struct stat status;
    return stat(real.c_str(), &status) == 0 && status.st_uid != 0 && status.st_uid == geteuid();
}

std::string closedBehindLinks(const std::string& path) {
    constexpr mode_t kPassable = 0111;
    for (const std::string& folder : foldersOnTheWayTo(path)) {
        const bool isNamed = folder == "/" || path.rfind(folder + "/", 0) == 0;
        struct stat status;
        if (isNamed || stat(folder.c_str(), &status) != 0) continue;
        if ((status.st_mode & kPassable) != kPassable) return folder;
    }
    return "";
}

std::string closedOnTheWayFrom(const std::string& folder, const std::string& path) {
    return closedBehindLinks(folder).empty() ? closedBehindLinks(path) : "";
}

std::string closedByRoot(const std::string& path) {
    for (const std::string& folder : foldersOnTheWayTo(path)) {
        struct stat status;
        if (stat(folder.c_str(), &status) != 0 || status.st_uid != 0) continue;
        if ((status.st_mode & (S_IXGRP | S_IXOTH)) == 0) return folder;
    }
    return "";
}
