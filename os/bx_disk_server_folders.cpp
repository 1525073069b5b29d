// The operations on whole folders, and copying.

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <utility>

#include "os/bx_disk_server.h"
#include "os/bx_file.h"
#include "os/bx_folder.h"
#include "os/file_name_filter.h"

namespace {

constexpr std::size_t kListCapacity = 1024;
constexpr std::size_t kCopyBlock = 1048576;

BXString joined(const BXString& folder, const char* name) {
    const auto folderLength = static_cast<std::size_t>(folder.length());
    const std::size_t nameLength = std::strlen(name);
    BXString path;
    path.create(static_cast<int>(folderLength + 1 + nameLength), '/');
    std::memcpy(path.data(), folder.c_str(), folderLength);
    std::memcpy(path.data() + folderLength + 1, name, nameLength);
    return path;
}

struct Doomed {
    BXString path;
    bool isFolder;
};

bool removeDoomed(const Doomed& doomed) {
    return (doomed.isFolder ? rmdir(doomed.path.c_str()) : unlink(doomed.path.c_str())) == 0;
}

// What deleteDirectory scans and what it looks for there.
struct DeletePlan {
    enum Kind { WholeFolder, Link, Matches };

    Kind kind;
    BXString path;    // the folder to scan, empty for the root; or the link
    BXString filter;  // of Matches
};

DeletePlan planForEntry(const BXString& path) {
    const int separator = path.findLastCharOf("/\\");
    const BXString last = path.subString(separator + 1);
    // Required(R29): a path that is no folder is a filter like any other, so it matches in any
    // letter case and, recursively, also further down.
    const BXString folder = separator < 0 ? BXString(".") : path.subString(0, separator);
    return {DeletePlan::Matches, folder, last};
}

DeletePlan planOf(const BXString& path) {
    DeletePlan entry = planForEntry(path);
    if (entry.filter.findFirstCharOf("*?") >= 0) return entry;
    int end = path.length();
    while (end > 1 && path[end - 1] == '/') --end;
    // With a separator behind it a link would stand for what it leads to.
    const BXString named = path.subString(0, end);
    struct stat status;
    if (lstat(named.c_str(), &status) != 0) return entry;
    if (S_ISDIR(status.st_mode)) return {DeletePlan::WholeFolder, path, BXString()};
    // Not by a filter: the name of a link can look like one.
    if (S_ISLNK(status.st_mode)) return {DeletePlan::Link, named, BXString()};
    return entry;
}

// Everything that the plan dooms, folders before what is in them.
BXArray<Doomed> findDoomed(const DeletePlan& plan, bool recursive) {
    if (plan.kind == DeletePlan::Link) return {{plan.path, false}};
    const bool all = plan.kind == DeletePlan::WholeFolder;
    BXArray<Doomed> doomed;
    BXArray<BXString> folders;
    doomed.reserve(kListCapacity);
    folders.reserve(kListCapacity);
    if (all) doomed.push_back({plan.path, true});
    folders.push_back(plan.path);
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const BXString scanned(std::move(folders[i]));
        BXFolder folder(scanned.isEmpty() ? "/" : scanned.c_str());
        BXFolder::Entry entry;
        while (folder.nextBelow(entry)) {
            const bool enter = recursive && entry.isFolder;
            const bool remove = all || fileNameMatchFilter(entry.name, plan.filter.c_str());
            if (enter) folders.push_back(joined(scanned, entry.name));
            if (remove) doomed.push_back({joined(scanned, entry.name), entry.isFolder});
        }
    }
    return doomed;
}

// Makes a folder writable while it lives, and puts the mode back.
class WritableFolder {
public:
    explicit WritableFolder(const BXString& path) : m_path(path) {
        struct stat status;
        if (stat(m_path.c_str(), &status) != 0) return;
        m_mode = status.st_mode & 07777;
        m_changed = chmod(m_path.c_str(), m_mode | 0222) == 0;
    }
    WritableFolder(const WritableFolder&) = delete;
    WritableFolder& operator=(const WritableFolder&) = delete;
    ~WritableFolder() {
        if (m_changed) chmod(m_path.c_str(), m_mode);
    }

private:
    const BXString m_path;
    mode_t m_mode = 0;
    bool m_changed = false;
};

bool isSameFile(const char* one, const char* other) {
    struct stat a, b;
    if (stat(one, &a) != 0 || stat(other, &b) != 0) return false;
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, StreamCloser>;

// `block` holds kCopyBlock bytes.
bool copyBlocks(const BXFile& source, std::FILE* target, char* block) {
    std::setvbuf(target, nullptr, _IONBF, 0);
    const std::int64_t size = source.size();
    std::int64_t done = 0;
    while (const std::size_t came = source.readAt(done, block, kCopyBlock)) {
        if (std::fwrite(block, 1, came, target) != came) return false;
        done += static_cast<std::int64_t>(came);
    }
    return done >= size;
}

bool copyTo(const BXFile& source, Stream target, const char* path, char* block) {
    if (!target) return false;
    const bool copied = copyBlocks(source, target.get(), block);
    const bool closed = std::fclose(target.release()) == 0;
    if (copied && closed) return true;
    std::remove(path);
    return false;
}

// As BXDiskServer::searchFileList; `filter` and `folder` are not in `found`.
bool search(BXArray<BXString>& found, const BXString& filter, const BXString& folder, int depth,
            int stopLevels) {
    BXArray<BXString> below;
    below.reserve(kListCapacity);
    bool any = false;
    {
        BXFolder entries(folder.c_str());
        BXFolder::Entry entry;
        while (entries.next(entry)) {
            // Required(R25): asked before anything else, so "." and ".." match "*" too.
            // Required(R27): a folder that matches is reported and not entered, for an application
            // bundle is one.
            if (fileNameMatchFilter(entry.name, filter.c_str())) {
                found.push_back(joined(folder, entry.name));
                any = true;
            } else if (depth >= 1 && entry.isFolder && !entry.isDots()) {
                below.push_back(joined(folder, entry.name));
            }
        }
    }
    if (any && stopLevels > 0) return true;
    for (const BXString& next : below) {
        if (!search(found, filter, next, depth - 1, stopLevels > 0 ? stopLevels - 1 : 0)) continue;
        any = true;
        if (stopLevels > 0) return true;
    }
    return any;
}

}  // namespace

bool BXDiskServer::searchFileList(BXArray<BXString>& found, const BXString& filter,
                                  const BXString& folder, int depth, int stopLevels) {
    // Copies, for the caller may go on from what was found before.
    return search(found, BXString(filter), BXString(folder), depth, stopLevels);
}

bool BXDiskServer::deleteDirectory(const BXString& path, bool recursive, bool) {
    const BXArray<Doomed> doomed = findDoomed(planOf(path), recursive);
    bool all = !doomed.empty();
    for (std::size_t i = doomed.size(); i-- > 0;) all = removeDoomed(doomed[i]) && all;
    return all;
}

bool BXDiskServer::copyFile(const BXString& from, const BXString& to) {
    const char* const source = from.getValidFilePath();
    const char* const target = to.getValidFilePath();
    const BXFile file(source, BXFile::Access::Read);
    // Opening the target would empty the source.
    if (!file.isOpen() || !target || isSameFile(source, target)) return false;
    // Taken before the target is emptied, so that a copy that has no memory changes nothing.
    const std::unique_ptr<char[]> block(new char[kCopyBlock]);
    Stream stream(BXFile::openStream(target, "wb"));
    if (stream) return copyTo(file, std::move(stream), target, block.get());
    const int separator = to.findLastCharOf("/\\");
    if (separator < 1) return false;
    const WritableFolder folder(to.subString(0, separator));
    return copyTo(file, Stream(BXFile::openStream(target, "wb")), target, block.get());
}
