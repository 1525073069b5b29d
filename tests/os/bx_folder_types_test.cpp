#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <map>
#include <string>

#include "os/bx_folder.h"
#include "tests/support/temp_folder.h"

namespace {

// While this is set, the file system tells no entry's type, as some network ones do.
bool hidesTypes = false;

}  // namespace

// Stands before the C library's function of that name.
extern "C" dirent* readdir(DIR* folder) {
    using Function = dirent* (*)(DIR*);
    static const Function original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "readdir64"));
    dirent* const entry = original(folder);
    if (entry && hidesTypes) entry->d_type = DT_UNKNOWN;
    return entry;
}

TEST(Folder, TellsFoldersWhereTheFileSystemDoesNot) {
    TempFolder folder;
    makeFolders(folder / "below");
    writeFile(folder / "file", "");
    ASSERT_EQ(symlink("below", (folder / "link").c_str()), 0);
    BXFolder entries(folder.path().c_str());
    BXFolder::Entry entry;
    std::map<std::string, bool> found;
    hidesTypes = true;
    while (entries.nextBelow(entry)) found[entry.name] = entry.isFolder;
    hidesTypes = false;
    const std::map<std::string, bool> expected = {
        {"below", true}, {"file", false}, {"link", false}};
    EXPECT_EQ(found, expected);
}
