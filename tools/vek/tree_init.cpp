#include "tools/vek/tree_init.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "tools/vek/program_folder.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_folder.h"

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

// What a build leaves beside the files that ship.
bool isOfTheBuild(const std::string& name) {
    return name == "CMakeFiles" || name == "Makefile" || name == ".DS_Store" ||
           fs::path(name).extension() == ".cmake";
}

mode_t modeForCopyOf(const fs::directory_entry& file) {
    if (contains(appFiles(), file.path().filename().string())) return kSharedFileMode;
    const fs::perms runnable =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    const bool isProgram = (file.status().permissions() & runnable) != fs::perms::none;
    return isProgram ? kShippedProgramMode : kShippedFileMode;
}

std::vector<fs::directory_entry> entriesOf(const std::string& folder, std::error_code& error) {
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (!isOfTheBuild(it->path().filename().string())) entries.push_back(*it);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

class TreeMaker {
public:
    TreeReport report;

    // The tree's own folder with those that lead to it; not open when it cannot be had.
    TreeFolder makeRoot(const std::string& root) {
        int error = makeParents(root);
        if (!error && ::mkdir(root.c_str(), kSharedFolderMode) != 0) error = errno;
        TreeFolder folder(root);
        if (!folder.isOpen()) {
            failRoot(root, error == EEXIST || error == 0 ? errno : error);
        } else if (error) {
            keep(".", folder.look("."), kSharedFolderMode);
        } else {
            ::chmod(root.c_str(), kSharedFolderMode);
            note(Outcome::Made, ".");
        }
        return folder;
    }

    // The folder of this name, made or found; not open where nothing can be made in it.
    TreeFolder folder(const TreeFolder& parent, const std::string& name, const std::string& path,
                      mode_t mode) {
        const int error = parent.makeFolder(name, mode);
        if (error && error != EEXIST) {
            fail(path, fmt::format("It cannot be made: {}.", std::strerror(error)),
                 adviceFor(error));
            return TreeFolder();
        }
        if (!error) {
            note(Outcome::Made, path);
        } else if (!keepOf(parent.look(name), Kind::Folder, path, mode)) {
            return TreeFolder();
        }
        TreeFolder made = parent.enter(name);
        if (!made.isOpen() && parent.look(name).kind == Kind::Folder) {
            const int why = errno;
            fail(path, fmt::format("It cannot be read: {}.", std::strerror(why)), adviceFor(why));
        }
        return made;
    }

    void emptyFile(const TreeFolder& parent, const std::string& name, const std::string& path) {
        const int error = parent.makeEmptyFile(name, kSharedFileMode);
        if (error == EEXIST) {
            keepOf(parent.look(name), Kind::File, path, kSharedFileMode);
        } else {
            tell(error, path);
        }
    }

    // All that is in the folder `from`, into `to`.
    void copyContents(const std::string& from, const TreeFolder& to, const std::string& path,
                      const TreeFolder& workshop) {
        std::error_code error;
        for (const fs::directory_entry& entry : entriesOf(from, error)) {
            const std::string name = entry.path().filename().string();
            const std::string target = path + "/" + name;
            if (entry.is_symlink() || !(entry.is_directory() || entry.is_regular_file())) {
                fail(target, "The shipped one is neither a file nor a folder.",
                     "Put a file or a folder into its place: " + entry.path().string());
            } else if (entry.is_directory()) {
                const TreeFolder inner = folder(to, name, target, kShippedFolderMode);
                if (inner.isOpen()) copyContents(entry.path().string(), inner, target, workshop);
            } else {
                copyFile(entry, to, name, target, workshop);
            }
        }
        if (!error) return;
        fail(path, "The shipped folder cannot be read: " + from + ".", adviceFor(error.value()));
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

    void failRoot(const std::string& root, int error) {
        report.hasNoTree = true;
        std::error_code ignored;
        if (fs::is_symlink(fs::symlink_status(root, ignored)) && error != EACCES) {
            fail(".", "It is a link that leads to no folder.", kMoveAway);
        } else if (error == ENOTDIR) {
            fail(".", "A file stands where a folder should be.", kMoveAway);
        } else if (fs::exists(root, ignored)) {
            fail(".", fmt::format("It cannot be looked into: {}.", std::strerror(error)),
                 adviceFor(error));
        } else {
            fail(".", fmt::format("It cannot be made: {}.", std::strerror(error)),
                 adviceFor(error));
        }
    }

    void copyFile(const fs::directory_entry& from, const TreeFolder& to, const std::string& name,
                  const std::string& path, const TreeFolder& workshop) {
        const std::string source = from.path().string();
        const mode_t mode = modeForCopyOf(from);
        const int error = to.copyFile(source, name, mode, workshop);
        if (error != EEXIST) return tell(error, path);
        const TreeFolder::Entry entry = to.look(name);
        if (!keepOf(entry, Kind::File, path, mode)) return;
        // The bridge's own files are there to be changed.
        if (contains(appFiles(), name) || to.isSameFile(name, source)) return;
        std::string& note = report.steps.back().note;
        note = "it differs from the shipped one" + (note.empty() ? "" : "; " + note);
    }

    // Whether what is there is of the kind that it should be. A link is the user's own arrangement.
    bool keepOf(const TreeFolder::Entry& entry, Kind kind, const std::string& path, mode_t mode) {
        if (entry.kind == Kind::Link) {
            note(Outcome::Kept, path, "it is a link, which is not followed");
            return false;
        }
        if (entry.kind != kind) {
            fail(path,
                 kind == Kind::Folder ? "Something else stands where a folder should be."
                                      : "Something else stands where a file should be.",
                 kMoveAway);
            return false;
        }
        keep(path, entry, mode);
        return true;
    }

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
};

void addApp(TreeMaker& maker, const TreeFolder& apps, const std::string& name,
            const std::string& from) {
    const std::string path = "VekApps/" + name;
    const TreeFolder folder = maker.folder(apps, name, path, kSharedFolderMode);
    if (!folder.isOpen()) return;
    maker.copyContents(from, folder, path, folder);
    for (const std::string& file : appFiles()) {
        if (!fs::exists(from + "/" + file)) maker.emptyFile(folder, file, path + "/" + file);
    }
}

}  // namespace

std::size_t TreeReport::count(TreeStep::Outcome outcome) const {
    return static_cast<std::size_t>(std::count_if(
        steps.begin(), steps.end(), [&](const TreeStep& step) { return step.outcome == outcome; }));
}

std::string shippedAppsFolder() {
    const fs::path prefix = fs::path(programFolder()).parent_path();
    const fs::path installed = prefix / "share/vek/apps";
    return (fs::is_directory(installed) ? installed : prefix / "apps").string();
}

std::vector<std::string> shippedApps(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (const fs::directory_entry& entry : entriesOf(folder, error)) {
        if (fs::is_regular_file(entry.path() / kDescriptorName, error)) {
            names.push_back(entry.path().filename().string());
        }
        error.clear();
    }
    return names;
}

TreeReport makeTree(const std::string& root, const std::string& apps) {
    TreeMaker maker;
    const TreeFolder tree = maker.makeRoot(root);
    if (!tree.isOpen()) return maker.report;
    const TreeFolder hub = maker.folder(tree, "VekHub", "VekHub", kSharedFolderMode);
    if (hub.isOpen()) {
        for (const std::string& file : hubFiles()) maker.emptyFile(hub, file, "VekHub/" + file);
    }
    const TreeFolder projects = maker.folder(tree, "VekProjects", "VekProjects", kSharedFolderMode);
    if (projects.isOpen()) {
        maker.folder(projects, "Default", "VekProjects/Default", kSharedFolderMode);
    }
    const TreeFolder appsFolder = maker.folder(tree, "VekApps", "VekApps", kSharedFolderMode);
    if (!appsFolder.isOpen()) return maker.report;
    for (const std::string& name : shippedApps(apps)) {
        addApp(maker, appsFolder, name, apps + "/" + name);
    }
    return maker.report;
}
