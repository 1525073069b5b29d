#include "tools/validate/view.h"

#include <stdlib.h>

#include "tools/validate/tree.h"

namespace {

bool saysView(const char* kind) {
    const char* const view = getenv("VEK_VIEW");
    return view && std::string(view) == kind;
}

bool isMarkedTree() {
    return saysView("shared") && tree::isThere(tree::kMarker);
}

}  // namespace

#ifdef __linux__

#include <fcntl.h>
#include <linux/magic.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

// The variable can be set by mistake: a folder of somebody's is on no disk in memory. A tree that
// is there already is the caller's.
bool isPrivateAlready() {
    struct statfs status;
    return saysView("private") && !tree::isThere(tree::kRoot) && statfs("/Users", &status) == 0 &&
           status.f_type == TMPFS_MAGIC;
}

bool writeText(const char* path, const std::string& text) {
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0) return false;
    const ssize_t written = write(file, text.data(), text.size());
    close(file);
    return written == static_cast<ssize_t>(text.size());
}

// A mount table of this process's own; for an ordinary user together with a user table in which it
// is itself and may change mounts.
bool leaveMounts() {
    if (geteuid() == 0 && unshare(CLONE_NEWNS) == 0) return true;
    const std::string user = std::to_string(geteuid()), group = std::to_string(getegid());
    if (unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) return false;
    return writeText("/proc/self/setgroups", "deny") &&
           writeText("/proc/self/uid_map", user + " " + user + " 1") &&
           writeText("/proc/self/gid_map", group + " " + group + " 1");
}

bool isOfTheView(const fs::path& name) {
    return name == "Users" || name == "full";
}

// The entry of the old root at the same place in the new one.
bool carryOver(const fs::path& old, const fs::path& place) {
    std::error_code failed;
    if (fs::is_symlink(old)) {
        fs::copy_symlink(old, place, failed);
        return !failed;
    }
    if (fs::is_directory(old, failed)) {
        fs::create_directory(place, failed);
    } else {
        close(open(place.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    }
    return mount(old.c_str(), place.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0;
}

// A new root in memory, with everything of the old one in its place but for the folders of the
// view.
bool changeRoot() {
    const fs::path base = "/tmp", old = "/.old";
    if (mount(nullptr, "/", nullptr, MS_REC | MS_SLAVE, nullptr) != 0) return false;
    if (mount("tmpfs", base.c_str(), "tmpfs", 0, "mode=0755") != 0) return false;
    const fs::path behind = base / ".old";
    if (mkdir(behind.c_str(), 0700) != 0) return false;
    if (syscall(SYS_pivot_root, base.c_str(), behind.c_str()) != 0) return false;
    if (chdir("/") != 0) return false;
    for (const auto& entry : fs::directory_iterator(old)) {
        const fs::path name = entry.path().filename();
        if (!isOfTheView(name) && !carryOver(entry.path(), "/" / name)) return false;
    }
    return mkdir("/Users", 0755) == 0 && mkdir("/full", 0755) == 0 &&
           mount("tmpfs", "/full", "tmpfs", 0, "size=65536,mode=0755") == 0 &&
           umount2(old.c_str(), MNT_DETACH) == 0;
}

// In a child first: what fails half way must not be this process's.
bool canEnter() {
    const pid_t child = fork();
    if (child == 0) {
        bool entered = false;
        try {
            entered = leaveMounts() && changeRoot();
        } catch (const std::exception&) {
        }
        _exit(entered ? 0 : 1);
    }
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

bool enterOwnView() {
    std::error_code ignored;
    const fs::path here = fs::current_path(ignored);
    if (!canEnter() || !leaveMounts() || !changeRoot()) return false;
    fs::current_path(here, ignored);
    setenv("VEK_VIEW", "private", 1);
    return true;
}

// Returns only where bwrap cannot be started, or cannot make a view.
void enterByBwrap(char** arguments) {
    std::vector<std::string> command = {"bwrap"};
    const auto add = [&](std::initializer_list<std::string> words) {
        command.insert(command.end(), words);
    };
    for (const auto& entry : fs::directory_iterator("/")) {
        const std::string path = entry.path().string();
        if (isOfTheView(entry.path().filename())) continue;
        if (entry.is_symlink()) {
            add({"--symlink", fs::read_symlink(entry.path()).string(), path});
        } else {
            add({"--dev-bind", path, path});
        }
    }
    std::error_code ignored;
    add({"--dir", "/Users", "--size", "65536", "--tmpfs", "/full", "--chdir",
         fs::current_path(ignored).string()});
    const auto run = [&](const std::vector<std::string>& words) {
        std::vector<char*> pointers;
        pointers.reserve(words.size() + 1);
        for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
        pointers.push_back(nullptr);
        execvp("bwrap", pointers.data());
    };
    const pid_t child = fork();
    if (child == 0) {
        std::vector<std::string> trial = command;
        trial.push_back("true");
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDERR_FILENO);
        run(trial);
        _exit(1);
    }
    int status = 1;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) return;
    setenv("VEK_VIEW", "private", 1);
    add({"--", fs::read_symlink("/proc/self/exe", ignored).string()});
    for (char** argument = arguments + 1; *argument; ++argument) add({*argument});
    run(command);
}

}  // namespace

View enterView(char** arguments, std::string& why) {
    if (enterOwnView() || isPrivateAlready()) return View::Private;
    if (isMarkedTree()) return View::Marked;
    // What bwrap started has no second try.
    if (!saysView("private")) enterByBwrap(arguments);
    why =
        "the checks need a private view of the file system, so that nobody's tree is touched, and "
        "none can be had here: allow user namespaces, or install bubblewrap, or run as root";
    return View::None;
}

#else

View enterView(char**, std::string& why) {
    if (isMarkedTree()) return View::Marked;
    why =
        "this system has no private view of the file system, and nobody's tree may be touched: "
        "where there is no tree, start this with scripts/private-view in front, which makes one "
        "for the time of the command";
    return View::None;
}

#endif
