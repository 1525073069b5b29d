#include "tools/validate/descendants.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#ifdef __linux__

#include <dirent.h>
#include <sys/prctl.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

// False where there is no such process any more.
bool readStatus(pid_t process, pid_t& parent, char& state) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    // The name in front may hold anything.
    const std::size_t end = line.rfind(')');
    return end != std::string::npos &&
           std::sscanf(line.c_str() + end, ") %c %d", &state, &parent) == 2;
}

}  // namespace

bool adoptOrphans() {
    return prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) == 0 && access("/proc/self/stat", R_OK) == 0;
}

namespace {

// Where the system tells the children of each thread; false where it does not.
bool readChildren(pid_t parent, std::vector<ChildProcess>& children) {
    const std::string tasks = "/proc/" + std::to_string(parent) + "/task";
    DIR* const folder = opendir(tasks.c_str());
    bool isTold = folder != nullptr;
    while (const dirent* const entry = folder ? readdir(folder) : nullptr) {
        if (*entry->d_name == '.') continue;
        std::ifstream file(tasks + "/" + entry->d_name + "/children");
        isTold = isTold && file.is_open();
        for (pid_t process = 0; file >> process;) {
            pid_t its = 0;
            char state = 0;
            if (readStatus(process, its, state)) children.push_back({process, state == 'Z'});
        }
    }
    if (folder) closedir(folder);
    return isTold;
}

}  // namespace

std::vector<ChildProcess> childrenOf(pid_t parent) {
    std::vector<ChildProcess> children;
    if (readChildren(parent, children)) return children;
    children.clear();
    DIR* const folder = opendir("/proc");
    while (const dirent* const entry = folder ? readdir(folder) : nullptr) {
        const pid_t process = std::atoi(entry->d_name);
        pid_t its = 0;
        char state = 0;
        if (process > 0 && readStatus(process, its, state) && its == parent)
            children.push_back({process, state == 'Z'});
    }
    if (folder) closedir(folder);
    return children;
}

#else

bool adoptOrphans() {
    return false;
}

std::vector<ChildProcess> childrenOf(pid_t) {
    return {};
}

#endif

std::vector<ChildProcess> without(const std::vector<ChildProcess>& all,
                                  const std::vector<ChildProcess>& others) {
    std::vector<ChildProcess> left;
    for (const ChildProcess& child : all) {
        const auto isChild = [&](const ChildProcess& other) { return other.id == child.id; };
        if (std::none_of(others.begin(), others.end(), isChild)) left.push_back(child);
    }
    return left;
}

void endChildrenBut(const std::vector<ChildProcess>& others) {
    for (;;) {
        const auto left = without(childrenOf(getpid()), others);
        if (left.empty()) return;
        for (const ChildProcess& child : left) kill(child.id, SIGKILL);
        // Theirs become this process's, and are seen next.
        for (const ChildProcess& child : left) waitpid(child.id, nullptr, 0);
    }
}
