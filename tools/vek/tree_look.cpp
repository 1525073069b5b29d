#include "tools/vek/tree_look.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>

#include "os/bx_file.h"
#include "os/bx_folder.h"
#include "tools/vek/real_way.h"
#include "tools/vek/shared_tree.h"

namespace {

using Kind = TreeLook::Kind;

Kind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return Kind::File;
    return S_ISDIR(mode) ? Kind::Folder : Kind::Other;
}

void findBrokenLink(Findings& findings, const std::string& path) {
    findings.add("broken-link", path, 0, "This link leads nowhere.",
                 "Make what it leads to, or remove the link and run vek init.");
}

void checkSharing(Findings& findings, const std::string& path, mode_t mode, mode_t wanted) {
    if ((mode & wanted) == wanted) return;
    const bool isWritten = wanted != kReadFileMode;
    findings.add("file-not-shared", path, 0,
                 fmt::format("Its mode is {}, so not every user's bridge can {} it.",
                             modeText(mode), isWritten ? "read and write" : "read"),
                 fmt::format("Run: chmod {} {}", isWritten ? "a+rw" : "a+r", shellWord(path)));
}

void checkWayBehindLinks(Findings& findings, const std::string& path, const char* code) {
    const std::string closed = closedBehindLinks(path);
    if (closed.empty()) return;
    findings.add(
        code, path, 0,
        fmt::format("It is reached by a link through {}, which is closed to some users.", closed),
        mayBeOpened(closed) ? fmt::format("Run: chmod a+x {}", shellWord(closed))
                            : "Link a place that every user can reach.");
}

bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && c != '\t' && c != '\n' && c != '\r';
}

// Whether the text can be taken for what it says.
bool checkText(Findings& findings, const std::string& path, const std::string& text) {
    const std::string head = text.substr(0, 2);
    if (head == "\xFF\xFE" || head == "\xFE\xFF") {
        findings.add("not-text", path, 0, "This is UTF-16, which the bridge cannot read.",
                     "Save it again as UTF-8 without a mark, or as plain text.");
        return false;
    }
    if (text.rfind("\xEF\xBB\xBF", 0) == 0) {
        findings.add(
            "byte-order-mark", path, 1,
            "The file begins with a byte-order mark, which becomes part of its first line.",
            "Save it again as UTF-8 without a byte-order mark.");
        return false;
    }
    if (text.rfind("{\\rtf", 0) == 0) {
        findings.add("not-text", path, 0, "This is a formatted document (RTF), and no plain text.",
                     "Save it again as plain text.");
        return false;
    }
    if (std::none_of(text.begin(), text.end(), isControl)) return true;
    findings.add("not-text", path, 0, "This holds bytes that are no text.",
                 "Replace it by a text file; vek init makes a missing one anew.");
    return false;
}

}  // namespace

TreeLook lookAt(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) == 0) {
        return {kindOf(status.st_mode), status.st_mode & kModeBits};
    }
    const int error = errno;
    if (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode) && error != EACCES) {
        return {Kind::BrokenLink};
    }
    return {error == EACCES ? Kind::Hidden : Kind::Missing};
}

bool isLink(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::string whatIsNoFolder(const std::string& folder) {
    for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
        const std::string path = folder.substr(0, end);
        const Kind kind = lookAt(path).kind;
        if (kind == Kind::Missing || kind == Kind::Hidden) return "";
        if (kind != Kind::Folder) return path;
        if (end == folder.npos) return "";
    }
}

std::string closedFolderOf(const std::string& path) {
    const std::vector<std::string> folders = foldersOnTheWayTo(path);
    return folders.empty() ? "/" : folders.back();
}

std::string shellWord(const std::string& path) {
    if (path.find_first_of(" '\"\\$`*?[&;()<>|#~\n\t") == path.npos) return path;
    std::string word = "'";
    for (const char c : path) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

bool isThere(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

bool canLookInto(const std::string& path) {
    return BXFolder(path.c_str()).isOpen() && isThere(path + "/.");
}

std::vector<std::string> namesIn(const std::string& path, std::vector<std::string>* folders) {
    std::vector<std::string> names;
    BXFolder folder(path.c_str());
    BXFolder::Entry entry;
    while (folder.nextBelow(entry)) {
        names.emplace_back(entry.name);
        if (folders && entry.isFolder) folders->emplace_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    if (folders) std::sort(folders->begin(), folders->end());
    return names;
}

bool checkFolder(Findings& findings, const std::string& path) {
    const TreeLook look = lookAt(path);
    if (look.kind == Kind::BrokenLink) {
        findBrokenLink(findings, path);
        return false;
    }
    if (look.kind == Kind::Missing) {
        findings.add("folder-missing", path, 0, "This folder is not there.",
                     "Run vek init, which makes it.");
        return false;
    }
    if (look.kind == Kind::File || look.kind == Kind::Other) {
        findings.add("not-a-folder", path, 0, "This should be a folder, and is none.",
                     "Move it away and run vek init.");
        return false;
    }
    if (look.kind == Kind::Hidden && isLink(path)) {
        findings.add("folder-unreadable", path, 0, kHiddenLink,
                     "Put a folder into its place, or link one that every user can reach.");
        return false;
    }
    if (look.kind == Kind::Hidden || !canLookInto(path)) {
        findings.add(
            "folder-unreadable", path, 0, "This user cannot look into this folder.",
            fmt::format("As its owner or an administrator, run: chmod a+rwx {}", shellWord(path)));
        return false;
    }
    if ((look.mode & kSharedFolderMode) != kSharedFolderMode) {
        findings.add("folder-not-shared", path, 0,
                     fmt::format("Its mode is {}, so not every user's bridge can work in it.",
                                 modeText(look.mode)),
                     fmt::format("Run: chmod a+rwx {}", shellWord(path)));
    }
    if (isLink(path)) checkWayBehindLinks(findings, path, "folder-not-shared");
    if (look.mode & S_ISVTX) {
        findings.add("folder-sticky", path, 0,
                     fmt::format("Its mode is {}: users cannot replace each other's files in it.",
                                 modeText(look.mode)),
                     fmt::format("Run: chmod -t {}", shellWord(path)));
    }
    return true;
}

bool readText(Findings& findings, const std::string& path, mode_t wanted, std::int64_t limit,
              std::string& text, TextEnd end) {
    const TreeLook look = lookAt(path);
    if (look.kind == Kind::Missing) return false;
    if (look.kind == Kind::BrokenLink) {
        findBrokenLink(findings, path);
        return false;
    }
    if (look.kind == Kind::Folder || look.kind == Kind::Other) {
        findings.add("not-a-file", path, 0, "This should be a text file, and is none.",
                     "Move it away and run vek init.");
        return false;
    }
    if (look.kind == Kind::Hidden && isLink(path)) {
        findings.add("file-unreadable", path, 0, kHiddenLink,
                     "Put a file into its place, or link one that every user can reach.");
        return false;
    }
    const BXFile file(path.c_str(), BXFile::Access::Read);
    if (!file.isOpen()) {
        findings.add("file-unreadable", path, 0, "This user cannot read this file.",
                     fmt::format("As its owner or an administrator, run: chmod {} {}",
                                 wanted == kReadFileMode ? "a+r" : "a+rw", shellWord(path)));
        return false;
    }
    checkSharing(findings, path, look.mode, wanted);
    if (isLink(path)) checkWayBehindLinks(findings, path, "file-not-shared");
    if (file.size() > limit) {
        findings.add(
            "file-too-large", path, 0,
            fmt::format("This has {} bytes; {}.", file.size(),
                        limit == kLargestPath
                            ? fmt::format("with more than {} the bridge takes it for empty", limit)
                            : fmt::format("no more than {} make sense here", limit)),
            "See what has been written into it, and put a text of a few lines there.");
        return false;
    }
    text.clear();
    BXFile::readWhole(path.c_str(), text, limit);
    const bool mayEndWithNul = end == TextEnd::MayBeNul && text.size() > 1;
    if (mayEndWithNul && text.back() == '\0') text.pop_back();
    return checkText(findings, path, text);
}

std::vector<TextLine> linesOf(const std::string& text) {
    std::vector<TextLine> lines;
    int number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        const std::size_t begin = text.find_first_not_of(" \t", at);
        if (begin < end) {
            const std::size_t last = text.find_last_not_of(" \t", end - 1);
            lines.push_back({number, text.substr(begin, last + 1 - begin)});
        }
        at = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    return lines;
}
