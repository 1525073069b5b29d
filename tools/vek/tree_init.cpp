#include "tools/vek/tree_init.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "tools/vek/shared_tree.h"
#include "tools/vek/shipped_apps.h"
#include "tools/vek/tree_folder.h"
#include "tools/vek/tree_look.h"

namespace fs = std::filesystem;

namespace {

using Kind = TreeFolder::Kind;
using Outcome = TreeStep::Outcome;

const char kMoveAway[] = "Move it away and run vek init again.";

std::string adviceFor(int error) {
    if (error == EACCES || error == EPERM)
        return "Run vek init as an administrator (sudo), once for this machine.";
    if (error == ENOSPC || error == EDQUOT) return "Make room on the disk and run vek init again.";
    return "Mend that and run vek init again.";
}

class TreeMaker {
public:
    explicit TreeMaker(const std::string& root) : m_root(root) {}

    TreeReport report;

    // The tree's own folder with those that lead to it; not open when it cannot be had.
    TreeFolder makeRoot() {
        int error = makeParents(m_root);
        if (!error && ::mkdir(m_root.c_str(), kSharedFolderMode) != 0) error = errno;
        TreeFolder folder(m_root);
        if (!folder.isOpen()) {
            failRoot(error == EEXIST || error == 0 ? errno : error);
        } else if (error) {
            keep(".", folder.look("."), kSharedFolderMode);
        } else {
            ::chmod(m_root.c_str(), kSharedFolderMode);
            note(Outcome::Made, ".");
        }
        return folder;
    }

    // The folder of this name, made or found; not open where nothing can be made in it. `contents`
    // is what will be in it.
    TreeFolder folder(const TreeFolder& parent, const std::string& name, const std::string& path,
                      mode_t mode, const std::vector<std::string>& contents) {
        const int error = parent.makeFolder(name, mode);
        if (error && error != EEXIST) {
            fail(path, fmt::format("It cannot be made: {}.", std::strerror(error)),
                 adviceFor(error));
            return TreeFolder();
        }
        const TreeFolder::Entry entry = parent.look(name);
        if (error && !isOfKind(entry, Kind::Folder, path, contents)) return TreeFolder();
        TreeFolder made = parent.enter(name);
        if (!made.isOpen()) {
            failClosed(path, whole(path), errno, mode);
        } else if (error) {
            keep(path, entry, mode);
        } else {
            note(Outcome::Made, path);
        }
        return made;
    }

    void emptyFile(const TreeFolder& parent, const std::string& name, const std::string& path) {
        const int error = parent.makeEmptyFile(name, kSharedFileMode);
        if (error != EEXIST) return tell(error, path);
        const TreeFolder::Entry entry = parent.look(name);
        if (isOfKind(entry, Kind::File, path)) keep(path, entry, kSharedFileMode);
    }

    // All that is in the folder `from`, into `to`.
    void copyContents(const std::string& from, const TreeFolder& to, const std::string& path,
                      const TreeFolder& workshop) {
        std::error_code error;
        std::error_code ignored;
        for (const fs::directory_entry& entry : shippedEntries(from, error)) {
            const std::string name = entry.path().filename().string();
            const std::string source = entry.path().string();
            const std::string target = path + "/" + name;
            const bool isLink = entry.is_symlink(ignored);
            if (!isLink && entry.is_directory(ignored)) {
                const TreeFolder inner =
                    folder(to, name, target, kShippedFolderMode, contentsOf(source));
                if (inner.isOpen()) copyContents(source, inner, target, workshop);
            } else if (!isLink && entry.is_regular_file(ignored)) {
                copyFile(entry, to, name, target, workshop);
            } else {
                fail(target, "The shipped one is neither a file nor a folder.",
                     "Put a file or a folder into its place: " + source);
            }
        }
        if (error) failUnreadable(path, from, "a+rx");
    }

    // Of a shipped file or folder.
    void failUnreadable(const std::string& path, const std::string& from, const char* change) {
        fail(path, fmt::format("The shipped one cannot be read: {}.", from),
             fmt::format("Make it readable (chmod {} {}) and run vek init again.", change,
                         shellWord(from)));
    }

    // A link to an application's folder, which the bridge passes over.
    bool failLinkedApp(const TreeFolder& apps, const std::string& name, const std::string& path) {
        if (apps.look(name).kind != Kind::Link) return false;
        fail(path, "It is a link, and the bridge passes links to applications over.",
             "Put the folder itself there, or remove the link, and run vek init again.");
        return true;
    }

private:
    // Every user has to get through them, whatever the mask of this one says. 0, or what failed.
    static int makeParents(const fs::path& root) {
        std::vector<fs::path> missing;
        std::error_code ignored;
        for (fs::path at = root.parent_path(); !at.empty() && !fs::exists(at, ignored);
             at = at.parent_path()) {
            missing.push_back(at);
        }
        for (auto at = missing.rbegin(); at != missing.rend(); ++at) {
            if (::mkdir(at->c_str(), kShippedFolderMode) == 0) {
                ::chmod(at->c_str(), kShippedFolderMode);
            } else if (errno != EEXIST) {
                return errno;
            }
        }
        return 0;
    }

    void failRoot(int error) {
        report.hasNoTree = true;
        const std::string inTheWay = whatIsNoFolder(m_root);
        if (!inTheWay.empty()) {
            const bool isBroken = lookAt(inTheWay).kind == TreeLook::Kind::BrokenLink;
            fail(inTheWay,
                 isBroken ? "It is a link that leads to no folder."
                          : "A file stands where a folder should be.",
                 kMoveAway);
        } else if (lookAt(m_root).kind == TreeLook::Kind::Folder) {
            failClosed(m_root, m_root, error, kSharedFolderMode);
        } else {
            fail(m_root, fmt::format("It cannot be made: {}.", std::strerror(error)),
                 adviceFor(error));
        }
    }

    void failClosed(const std::string& path, const std::string& folder, int error, mode_t mode) {
        fail(path, fmt::format("It cannot be looked into: {}.", std::strerror(error)),
             fmt::format("As its owner or an administrator, run: chmod {} {}, and vek init again.",
                         mode == kSharedFolderMode ? "a+rwx" : "a+rx", shellWord(folder)));
    }

    void copyFile(const fs::directory_entry& from, const TreeFolder& to, const std::string& name,
                  const std::string& path, const TreeFolder& workshop) {
        const std::string source = from.path().string();
        if (TreeFolder::whyUnreadable(source) != 0) return failUnreadable(path, source, "a+r");
        const mode_t mode = modeForCopyOf(from);
        const int error = to.copyFile(source, name, mode, workshop);
        if (error != EEXIST) return tell(error, path);
        const TreeFolder::Entry entry = to.look(name);
        if (!isOfKind(entry, Kind::File, path)) return;
        keep(path, entry, mode);
        // The bridge's own files are there to be changed.
        if (contains(appFiles(), name) || to.isSameFile(name, source)) return;
        std::string& note = report.steps.back().note;
        note = (to.canRead(name) ? "it differs from the shipped one" : "it cannot be read") +
               (note.empty() ? "" : "; " + note);
    }

    // Whether what is there is of the kind that it should be. What is said of it otherwise is
    // noted.
    bool isOfKind(const TreeFolder::Entry& entry, Kind kind, const std::string& path,
                  const std::vector<std::string>& contents = {}) {
        if (entry.kind == kind) return true;
        if (entry.kind == Kind::Link) {
            noteLink(path, kind, contents);
        } else {
            fail(path,
                 kind == Kind::Folder ? "Something else stands where a folder should be."
                                      : "Something else stands where a file should be.",
                 kMoveAway);
        }
        return false;
    }

    // A link is the user's own arrangement as long as all is there that should be.
    void noteLink(const std::string& path, Kind kind, const std::vector<std::string>& contents) {
        const TreeLook::Kind goal = lookAt(whole(path)).kind;
        if (goal != (kind == Kind::Folder ? TreeLook::Kind::Folder : TreeLook::Kind::File)) {
            fail(path,
                 fmt::format("It is a link that leads to no {}.",
                             kind == Kind::Folder ? "folder" : "file"),
                 kMoveAway);
            return;
        }
        for (const std::string& name : contents) {
            if (isThere(whole(path) + "/" + name)) continue;
            fail(path, fmt::format("It is a link, and what it leads to lacks {}.", name),
                 "Put that there yourself, or remove the link and run vek init again.");
            return;
        }
        note(Outcome::Kept, path, "it is a link, which is not followed");
    }

    std::string whole(const std::string& path) const { return m_root + "/" + path; }

    void keep(const std::string& path, const TreeFolder::Entry& entry, mode_t mode) {
        const bool isTighter = (entry.mode & mode) != mode;
        note(Outcome::Kept, path,
             isTighter ? fmt::format("its mode is {}, not {}", modeText(entry.mode), modeText(mode))
                       : "");
    }

    void tell(int error, const std::string& path) {
        if (!error) return note(Outcome::Made, path);
        fail(path, fmt::format("It cannot be made: {}.", std::strerror(error)), adviceFor(error));
    }

    void note(Outcome outcome, const std::string& path, const std::string& words = "") {
        report.steps.push_back({outcome, path, words, ""});
    }

    void fail(const std::string& path, const std::string& why, const std::string& advice) {
        report.steps.push_back({Outcome::Failed, path, why, advice});
    }

    const std::string& m_root;
};

void addApp(TreeMaker& maker, const TreeFolder& apps, const std::string& name,
            const std::string& from) {
    const std::string path = "VekApps/" + name;
    std::error_code error;
    shippedEntries(from, error);
    if (error) return maker.failUnreadable(path, from, "a+rx");
    if (maker.failLinkedApp(apps, name, path)) return;
    const TreeFolder folder = maker.folder(apps, name, path, kSharedFolderMode, {});
    if (!folder.isOpen()) return;
    maker.copyContents(from, folder, path, folder);
    for (const std::string& file : appFiles()) {
        if (!fs::exists(from + "/" + file, error)) maker.emptyFile(folder, file, path + "/" + file);
    }
}

}  // namespace

std::size_t TreeReport::count(TreeStep::Outcome outcome) const {
    return static_cast<std::size_t>(std::count_if(
        steps.begin(), steps.end(), [&](const TreeStep& step) { return step.outcome == outcome; }));
}

TreeReport makeTree(const std::string& root, const std::string& apps) {
    TreeMaker maker(root);
    const TreeFolder tree = maker.makeRoot();
    if (!tree.isOpen()) return maker.report;
    const TreeFolder hub = maker.folder(tree, "VekHub", "VekHub", kSharedFolderMode, hubFiles());
    if (hub.isOpen()) {
        for (const std::string& file : hubFiles()) maker.emptyFile(hub, file, "VekHub/" + file);
    }
    const TreeFolder projects =
        maker.folder(tree, "VekProjects", "VekProjects", kSharedFolderMode, {"Default"});
    if (projects.isOpen()) {
        maker.folder(projects, "Default", "VekProjects/Default", kSharedFolderMode, {});
    }
    const TreeFolder appsFolder =
        maker.folder(tree, "VekApps", "VekApps", kSharedFolderMode, contentsOfApps(apps));
    if (!appsFolder.isOpen()) return maker.report;
    std::error_code ignored;
    for (const std::string& name : shippedApps(apps, ignored)) {
        addApp(maker, appsFolder, name, apps + "/" + name);
    }
    return maker.report;
}
