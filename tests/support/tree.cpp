#include "tests/support/tree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "tests/support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

// All but the marker, by which the launcher knows the tree for its own.
void emptyTree() {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(Tree::root(), ignored)) {
        if (entry.path().filename() != ".made-by-vek-tests") fs::remove_all(entry.path(), ignored);
    }
}

}  // namespace

Tree::Tree() {
    if (!getenv("VEK_VIEW")) std::abort();
    emptyTree();
    makeFolders(root() + "/VekHub");
    makeFolders(root() + "/VekApps");
    makeFolders(root() + "/VekProjects/Default");
}

Tree::~Tree() {
    emptyTree();
}

void Tree::addApp(const std::string& id, const std::string& descriptor) const {
    makeFolders(root() + "/VekApps/" + id);
    writeFile(app(id, "Vek_Info.txt"), descriptor);
}
