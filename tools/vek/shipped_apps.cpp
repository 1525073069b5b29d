#include "tools/vek/shipped_apps.h"

#include <algorithm>

#include "tools/vek/program_folder.h"
#include "tools/vek/shared_tree.h"

namespace fs = std::filesystem;

namespace {

// What a build leaves beside the files that ship.
bool isOfTheBuild(const std::string& name) {
    return name == "CMakeFiles" || name == "Makefile" || name == ".DS_Store" ||
           fs::path(name).extension() == ".cmake";
}

}  // namespace

std::string shippedAppsFolder() {
    const fs::path prefix = fs::path(programFolder()).parent_path();
    const fs::path installed = prefix / "share/vek/apps";
    std::error_code error;
    const bool isInstalled =
        fs::is_directory(installed, error) || error == std::errc::permission_denied;
    return (isInstalled ? installed : prefix / "apps").string();
}

std::vector<std::string> shippedApps(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : shippedEntries(folder, error)) {
        std::error_code closed;
        const bool isApp = fs::is_regular_file(entry.path() / kDescriptorName, closed);
        if (isApp || closed == std::errc::permission_denied) {
            names.push_back(entry.path().filename().string());
        }
    }
    return names;
}

std::vector<fs::directory_entry> shippedEntries(const std::string& folder, std::error_code& error) {
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (!isOfTheBuild(it->path().filename().string())) entries.push_back(*it);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::vector<std::string> contentsOf(const std::string& folder) {
    std::vector<std::string> all;
    std::error_code error;
    for (const fs::directory_entry& entry : shippedEntries(folder, error)) {
        const std::string name = entry.path().filename().string();
        all.push_back(name);
        if (entry.is_symlink(error) || !entry.is_directory(error)) continue;
        for (const std::string& inner : contentsOf(entry.path().string())) {
            all.push_back(name + "/" + inner);
        }
    }
    return all;
}

std::vector<std::string> contentsOfApps(const std::string& folder) {
    std::vector<std::string> all;
    std::error_code ignored;
    for (const std::string& app : shippedApps(folder, ignored)) {
        for (const std::string& name : contentsOf(folder + "/" + app)) {
            all.push_back(app + "/" + name);
        }
    }
    return all;
}

mode_t modeForCopyOf(const fs::directory_entry& file) {
    if (contains(appFiles(), file.path().filename().string())) return kSharedFileMode;
    const fs::perms runnable =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    std::error_code ignored;
    const bool isProgram = (file.status(ignored).permissions() & runnable) != fs::perms::none;
    return isProgram ? kShippedProgramMode : kShippedFileMode;
}
