#include "tools/validate/tree.h"

#include <signal.h>
#include <stdio.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

const char kFullDisk[] = "/full";
constexpr std::size_t kPage = 4096;

// So that what is in it can be removed.
void openUp(const fs::path& folder) {
    std::error_code ignored;
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ignored);
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (entry.is_directory(ignored) && !entry.is_symlink(ignored)) openUp(entry.path());
    }
}

void removeAllIn(const fs::path& folder) {
    std::error_code failed, ignored;
    for (const auto& entry : fs::directory_iterator(folder, failed)) {
        if (entry.path() == tree::kMarker) continue;
        fs::remove_all(entry.path(), failed);
        if (failed) break;
    }
    if (!failed) return;
    openUp(folder);
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (entry.path() != tree::kMarker) fs::remove_all(entry.path(), ignored);
    }
}

void putAlpha() {
    tree::addApp("Alpha",
                 "NAME \"Alpha One\"\nEXTENSION \".vek\"\nTAMPLATE \"alpha.txt\"\n"
                 "IMPORT_FLIP_X 1\nEXPORT_FLIP_X 1\nEXPORT_FLIP_NORMALS 1\n"
                 "INIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\nLOCATE_COMMAND edit.sh\n");
    tree::write(tree::app("Alpha", "Vek_Config.txt"),
                "APPS_UNLOCKED = TRUE\nPATH = \"/Applications/Alpha.app\"\n");
    tree::write(tree::app("Alpha", "Vek_InstallList.txt"), "/Applications/Alpha\n");
    tree::write(tree::app("Alpha", "Vek_InstallLog.txt"), "");
    tree::write(tree::app("Alpha", "init.sh"),
                ": >'" + tree::app("Alpha", "Vek_InstallLog.txt") + "'\n");
    tree::write(tree::app("Alpha", "edit.sh"), ":\n");
}

void populate() {
    tree::makeFolder(tree::hub(""));
    tree::makeFolder(tree::project(""));
    tree::write(tree::hub("Vek_Application.txt"), "Alpha");
    tree::write(tree::hub("Vek_ProjectPath.txt"), "/p/one\n");
    tree::write(tree::hub("Vek_ObjectList.txt"),
                tree::project("mesh") + "\n" + tree::project("second") + "\n");
    tree::write(tree::hub("Vek_Config.txt"), "APPS_UNLOCKED = TRUE\n");
    tree::write(tree::hub("prefs.txt"), "TEXT = some words\nWHOLE = 42\nREAL = 0.5\nYES = TRUE\n");
    putAlpha();
    tree::write(tree::project("mesh.vek"), tree::exchangeFile());
    tree::write(tree::project("scene.ma"), tree::scene());
    tree::write(tree::project("plain.txt"), "plain\n");
    tree::write(tree::project("doomed.txt"), "doomed\n");
}

void fill() {
    populate();
    const std::string object = tree::project("mesh") + "\n";
    tree::write(tree::hub("Vek_ObjectList.txt"),
                object + std::string(kPage - object.size() - 1, 'o') + "\n");
    const std::string prefs = tree::read(tree::hub("prefs.txt"));
    tree::write(tree::hub("prefs.txt"), prefs + std::string(kPage - prefs.size() - 1, '#') + "\n");
}

// The tree lies on the small disk of the private view, and a file takes the room that is left.
void fillTheDisk() {
    tree::remove();
    removeAllIn(kFullDisk);
    fs::create_directory(fs::path(kFullDisk) / "tree");
    fs::create_symlink(fs::path(kFullDisk) / "tree", tree::kRoot);
    fill();
    FILE* const filler = fopen("/full/filler", "wb");
    if (!filler) throw std::runtime_error("the small disk cannot be filled");
    setvbuf(filler, nullptr, _IONBF, 0);
    const std::string block(kPage, 'f');
    while (fwrite(block.data(), 1, block.size(), filler) == block.size()) {
    }
    fclose(filler);
}

// Without such a disk no file may grow past a page, which is the same to who writes those files.
void limitFiles() {
    tree::clear();
    fill();
    signal(SIGXFSZ, SIG_IGN);
    struct rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = kPage;
    setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace

std::string tree::hub(const std::string& name) {
    return std::string(kRoot) + "/VekHub/" + name;
}

std::string tree::app(const std::string& id, const std::string& name) {
    return std::string(kRoot) + "/VekApps/" + id + "/" + name;
}

std::string tree::project(const std::string& name) {
    return std::string(kRoot) + "/VekProjects/Default/" + name;
}

void tree::clear() {
    std::error_code ignored;
    if (fs::is_symlink(kRoot, ignored)) fs::remove(kRoot, ignored);
    fs::create_directories(kRoot);
    removeAllIn(kRoot);
}

void tree::remove() {
    clear();
    std::error_code ignored;
    if (!isThere(kMarker)) fs::remove(kRoot, ignored);
}

void tree::make() {
    clear();
    populate();
}

void tree::makeReadOnly() {
    make();
    std::vector<fs::path> folders = {kRoot};
    for (const auto& entry : fs::recursive_directory_iterator(kRoot)) {
        if (entry.is_directory()) {
            folders.push_back(entry.path());
        } else {
            chmod(entry.path().c_str(), 0444);
        }
    }
    for (const fs::path& folder : folders) chmod(folder.c_str(), 0555);
}

void tree::makeFull() {
    if (fs::exists(kFullDisk) && !isThere(kMarker)) {
        fillTheDisk();
    } else {
        limitFiles();
    }
}

void tree::makeNearlyFull() {
    clear();
    fill();
}

void tree::makeFolder(const std::string& path) {
    fs::create_directories(path);
}

void tree::write(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    if (!file.flush()) throw std::runtime_error("a file for the check cannot be written: " + path);
}

std::string tree::read(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) return "";
    std::string bytes(static_cast<std::size_t>(std::max<std::streamoff>(file.tellg(), 0)), '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

bool tree::isThere(const std::string& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

void tree::addApp(const std::string& id, const std::string& descriptor) {
    makeFolder(app(id, ""));
    write(app(id, "Vek_Info.txt"), descriptor);
}

namespace {

std::string entryOf(const fs::path& path, const struct stat& status) {
    char mode[16];
    snprintf(mode, sizeof mode, " %o\n", static_cast<unsigned int>(status.st_mode & 07777));
    std::error_code ignored;
    if (S_ISLNK(status.st_mode))
        return std::string("link") + mode + fs::read_symlink(path, ignored).string();
    if (S_ISDIR(status.st_mode)) return std::string("folder") + mode;
    if (!S_ISREG(status.st_mode)) return std::string("other") + mode;
    return std::string("file") + mode + tree::read(path.string());
}

}  // namespace

tree::Files tree::snapshot(const std::string& folder) {
    Files found;
    std::error_code ignored;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator it(folder, options, ignored), end; it != end;
         it.increment(ignored)) {
        struct stat status;
        if (lstat(it->path().c_str(), &status) != 0) continue;
        found[it->path().string() + (S_ISDIR(status.st_mode) ? "/" : "")] =
            ::entryOf(it->path(), status);
    }
    return found;
}

std::string tree::kindOf(const std::string& entry) {
    return entry.substr(0, entry.find('\n'));
}

std::vector<std::string> tree::changedFiles(const Files& before, const Files& after) {
    std::vector<std::pair<std::string, std::string>> changes;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(changes));
    std::vector<std::string> paths;
    for (const auto& change : changes) paths.push_back(change.first);
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    return paths;
}
