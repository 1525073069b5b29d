#include "os/process_table.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "os/bundle_folder.h"
#include "os/bx_file.h"
#include "os/bx_folder.h"

namespace {

std::string procFile(std::uint32_t id, const char* name) {
    return "/proc/" + std::to_string(id) + "/" + name;
}

// 0 for a name that is no process id.
std::uint32_t idOf(const char* name) {
    std::uint32_t id = 0;
    for (; *name >= '0' && *name <= '9'; ++name) {
        if (id > 100000000) return 0;
        id = id * 10 + static_cast<std::uint32_t>(*name - '0');
    }
    return *name ? 0 : id;
}

std::string linkTarget(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    return length <= 0 ? std::string() : std::string(target, static_cast<std::size_t>(length));
}

// The first bytes of a regular file; none of anything else.
std::string headOf(const std::string& path, std::size_t limit) {
    std::string head(limit, '\0');
    head.resize(BXFile(path.c_str(), BXFile::Access::Read).readAt(0, head.data(), limit));
    return head;
}

// The arguments of a process, as far as its first 16 KiB of them go: a script's path is among them.
std::vector<std::string> argumentsOf(std::uint32_t id) {
    const std::string whole = headOf(procFile(id, "cmdline"), std::size_t{4} * PATH_MAX);
    std::vector<std::string> arguments;
    for (std::size_t at = 0; at < whole.size();) {
        const std::size_t end = std::min(whole.find('\0', at), whole.size());
        arguments.push_back(whole.substr(at, end - at));
        at = end + 1;
    }
    return arguments;
}

// The words of a script's first line behind "#!"; none for what is no script.
std::vector<std::string> interpreterOf(const std::string& script) {
    const std::string head = headOf(script, 256);
    std::vector<std::string> words;
    if (head.compare(0, 2, "#!") != 0) return words;
    const std::string line = head.substr(2, head.find('\n') - 2);
    for (std::size_t at = 0; (at = line.find_first_not_of(" \t\r", at)) != line.npos;) {
        const std::size_t end = std::min(line.find_first_of(" \t\r", at), line.size());
        words.push_back(line.substr(at, end - at));
        at = end;
    }
    return words;
}

std::string lastComponent(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string resolved(const std::string& path) {
    char target[PATH_MAX];
    return realpath(path.c_str(), target) ? target : path;
}

// Whether `program` is what the script's first line asks for, so that the process runs the script
// and does not merely have its name as an argument, as an editor has.
bool runs(const std::string& script, const std::string& program,
          const std::vector<std::string>& arguments) {
    const std::vector<std::string> interpreter = interpreterOf(script);
    if (interpreter.empty()) return false;
    if (resolved(interpreter[0]) == program) return true;
    return interpreter.size() > 1 && lastComponent(interpreter[0]) == "env" &&
           interpreter.back() == arguments[0];
}

// A path as the process means it; empty where that cannot be told.
std::string seenFrom(std::uint32_t id, const std::string& path) {
    if (path[0] == '/') return path;
    const std::string folder = linkTarget(procFile(id, "cwd"));
    return folder.empty() ? std::string() : folder + "/" + path;
}

// An interpreter's script follows at most one argument of its own. Only scripts of bundles are
// looked at. A process that has left the folder in which it was started has a script that cannot be
// told.
std::string scriptOf(std::uint32_t id, const std::string& program) {
    const std::vector<std::string> arguments = argumentsOf(id);
    for (std::size_t i = 1; i < arguments.size() && i <= 2; ++i) {
        if (bxBundleOfExecutable(arguments[i].c_str()).isEmpty()) continue;
        std::string script = seenFrom(id, arguments[i]);
        if (runs(script, program, arguments)) return script;
    }
    return std::string();
}

}  // namespace

BXArray<std::uint32_t> bxProcessIds() {
    BXArray<std::uint32_t> ids;
    BXFolder folder("/proc");
    BXFolder::Entry entry;
    while (folder.nextBelow(entry)) {
        if (const std::uint32_t id = idOf(entry.name)) ids.push_back(id);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

BXString bxExecutableOfProcess(std::uint32_t id) {
    const std::string program = linkTarget(procFile(id, "exe"));
    if (program.empty()) return BXString();
    if (!bxBundleOfExecutable(program.c_str()).isEmpty()) return BXString(program.c_str());
    const std::string script = scriptOf(id, program);
    return BXString(script.empty() ? program.c_str() : script.c_str());
}
