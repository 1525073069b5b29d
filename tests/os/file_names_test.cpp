// BXDiskServer: editing file names.

#include <gtest/gtest.h>

#include "os/bx_disk_server.h"

namespace {

struct Edited {
    bool result;
    std::string name;
};

template <class Edit>
Edited edited(const char* name, Edit edit) {
    BXString text(name);
    const bool result = edit(text);
    return {result, text.c_str()};
}

Edited withExt(const char* name, const char* ext) {
    return edited(name,
                  [&](BXString& text) { return BXDiskServer::makeFilenameWithExt(text, ext); });
}

Edited withoutExt(const char* name, const char* ext) {
    return edited(name,
                  [&](BXString& text) { return BXDiskServer::makeFilenameWithoutExt(text, ext); });
}

Edited withoutPath(const char* path) {
    return edited(path, [](BXString& text) { return BXDiskServer::removePathFromFilename(text); });
}

Edited pathOf(const char* path) {
    return edited(path, [](BXString& text) { return BXDiskServer::extractPathFromFilename(text); });
}

bool operator==(const Edited& a, const Edited& b) {
    return a.result == b.result && a.name == b.name;
}

std::ostream& operator<<(std::ostream& out, const Edited& edit) {
    return out << (edit.result ? "true, \"" : "false, \"") << edit.name << '"';
}

const Edited kUnchangedObj = {false, "a.obj"};

}  // namespace

TEST(FileNameHasExtension, TakesItWithAndWithoutItsDot) {
    EXPECT_TRUE(BXDiskServer::fileNameHasExtension("a.obj", "obj"));
    EXPECT_TRUE(BXDiskServer::fileNameHasExtension("a.obj", ".obj"));
    EXPECT_TRUE(BXDiskServer::fileNameHasExtension(".obj", "obj"));
    EXPECT_FALSE(BXDiskServer::fileNameHasExtension("aobj", "obj"));
    EXPECT_FALSE(BXDiskServer::fileNameHasExtension("obj", "obj"));
    EXPECT_FALSE(BXDiskServer::fileNameHasExtension(BXString(), "obj"));
}

TEST(FileNameHasExtension, HeedsLetterCase) {
    EXPECT_FALSE(BXDiskServer::fileNameHasExtension("a.OBJ", "obj"));
}

TEST(MakeFilenameWithExt, LeavesANameThatHasIt) {
    EXPECT_EQ(withExt("a.obj", "obj"), kUnchangedObj);
    EXPECT_EQ(withExt("a.obj", ".obj"), kUnchangedObj);
}

TEST(MakeFilenameWithExt, AppendsItWhereItIsMissing) {
    EXPECT_EQ(withExt("a", ".obj"), (Edited{true, "a.obj"}));
    EXPECT_EQ(withExt("a", "obj"), (Edited{true, "a.obj"}));
    EXPECT_EQ(withExt("a.OBJ", "obj"), (Edited{true, "a.OBJ.obj"}));
    EXPECT_EQ(withExt("", "obj"), (Edited{true, ".obj"}));
}

// Required(R21)
TEST(MakeFilenameWithoutExt, CutsTheNamesThatDoNotHaveIt) {
    EXPECT_EQ(withoutExt("a.obj", "obj"), kUnchangedObj);
    EXPECT_EQ(withoutExt("abcdef", "obj"), (Edited{true, "ab"}));
    EXPECT_EQ(withoutExt("abcdef", ".obj"), (Edited{true, "ab"}));
    EXPECT_EQ(withoutExt("a.OBJ", "obj"), (Edited{true, "a"}));
}

TEST(MakeFilenameWithoutExt, LeavesNamesThatAreTooShortToCut) {
    EXPECT_EQ(withoutExt("abcd", "obj"), (Edited{true, ""}));
    EXPECT_EQ(withoutExt("abc", "obj"), (Edited{true, "abc"}));
    EXPECT_EQ(withoutExt("", "obj"), (Edited{true, ""}));
}

TEST(RemovePathFromFilename, KeepsWhatFollowsTheLastSeparator) {
    EXPECT_EQ(withoutPath("/x/y.txt"), (Edited{true, "y.txt"}));
    EXPECT_EQ(withoutPath("C:\\x\\y.txt"), (Edited{true, "y.txt"}));
    EXPECT_EQ(withoutPath("/x\\y/z"), (Edited{true, "z"}));
    EXPECT_EQ(withoutPath("y.txt"), (Edited{true, "y.txt"}));
    EXPECT_EQ(withoutPath("/x/"), (Edited{true, ""}));
    EXPECT_EQ(withoutPath(""), (Edited{true, ""}));
}

TEST(ExtractPathFromFilename, KeepsTheFolderWithItsSeparator) {
    EXPECT_EQ(pathOf("/x/y.txt"), (Edited{true, "/x/"}));
    EXPECT_EQ(pathOf("/y.txt"), (Edited{true, "/"}));
    EXPECT_EQ(pathOf("/x/"), (Edited{true, "/x/"}));
    EXPECT_EQ(pathOf("y.txt"), (Edited{true, ""}));
    EXPECT_EQ(pathOf(""), (Edited{true, ""}));
}

// Required(R22)
TEST(ExtractPathFromFilename, CountsOnlyTheForwardSeparator) {
    EXPECT_EQ(pathOf("C:\\x\\y.txt"), (Edited{true, ""}));
    EXPECT_EQ(pathOf("/x/y\\z"), (Edited{true, "/x/"}));
    EXPECT_EQ(withoutPath("/x/y\\z"), (Edited{true, "z"}));
}

TEST(ExtractPathFromFilename, TakesOneTextForBoth) {
    BXString path("/x/y.txt");
    EXPECT_TRUE(BXDiskServer::extractPathFromFilename(path, path));
    EXPECT_STREQ(path.c_str(), "/x/");
}

TEST(ExtractPathFromFilename, LeavesTheNameThatItIsGivenApart) {
    const BXString path("/x/y.txt");
    BXString folder("old");
    EXPECT_TRUE(BXDiskServer::extractPathFromFilename(folder, path));
    EXPECT_STREQ(folder.c_str(), "/x/");
    EXPECT_STREQ(path.c_str(), "/x/y.txt");
}
