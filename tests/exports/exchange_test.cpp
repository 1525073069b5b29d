#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

class Exchange : public testing::Test {
protected:
    // Makes the switches of a descriptor those in force.
    void useSwitches(const std::string& descriptor) {
        m_tree.addApp("App", "EXTENSION .vek\n" + descriptor);
        ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 1.0f);
        char prefs[16] = {};
        m_library.call("GetVekAppIOPrefs", 0.0, prefs);
    }

    float texture(double kind, OutText& name, OutText& number) {
        return m_library.call("GetFirstObjectTextureFileName", kind, name.block(), number.block());
    }

    // Lists one object whose exchange file holds these bytes.
    void listObject(const std::string& bytes) {
        writeFile(Tree::project("mesh.vek"), bytes);
        writeFile(Tree::objectList(), Tree::project("mesh") + "\n");
    }

    Tree m_tree;
    TempFolder m_folder;
    LoadedLibrary m_library;
};

std::string sample() {
    return ExchangeFile()
        .vertices({1, 2, 3})
        .map(45001, "maps\\colour\\skin.tif", 1.0f)
        .map(50001, "normal.tif", 2.0f)
        .map(55001, "height.tif", 0.5f)
        .end()
        .bytes();
}

}  // namespace

TEST_F(Exchange, PreparesFilesWithTheExtensionInAnyLetterCase) {
    useSwitches("EXPORT_FLIP_X 1\nIMPORT_FLIP_Y 1\n");
    for (const char* name : {"a.Vek", "a.VEK", "a.vek"}) {
        const std::string file = m_folder / name;
        writeFile(file, ExchangeFile().vertices({1, 2, 3}).end().bytes());
        EXPECT_EQ(m_library.call("VekPostExport", file), 0.0f) << name;
        EXPECT_EQ(floatsAt(readFile(file), 48, 3), (std::vector<float>{-1, 2, 3}));
        EXPECT_EQ(m_library.call("VekPreImport", file), 0.0f) << name;
        EXPECT_EQ(floatsAt(readFile(file), 48, 3), (std::vector<float>{-1, -2, 3}));
    }
}

TEST_F(Exchange, LeavesFilesOfOtherKindsAlone) {
    useSwitches("EXPORT_FLIP_X 1\n");
    const std::string bytes = sample();
    for (const char* name : {"a.obj", "a.Vek.txt", "aVek", "a.ve"}) {
        const std::string file = m_folder / name;
        writeFile(file, bytes);
        EXPECT_EQ(m_library.call("VekPostExport", file), -1.0f) << name;
        EXPECT_EQ(m_library.call("VekPreImport", file), -1.0f) << name;
        EXPECT_EQ(readFile(file), bytes);
    }
}

TEST_F(Exchange, RejectsAMissingFileAFolderAndAForeignOne) {
    const std::string folder = m_folder / "folder.vek";
    makeFolders(folder);
    writeFile(m_folder / "foreign.vek", "something else");
    for (const char* name : {"missing.vek", "folder.vek", "foreign.vek"}) {
        EXPECT_EQ(m_library.call("VekPostExport", m_folder / name), -1.0f) << name;
        EXPECT_EQ(m_library.call("VekPreImport", m_folder / name), -1.0f) << name;
    }
    EXPECT_FALSE(fileIsThere(m_folder / "missing.vek"));
}

TEST_F(Exchange, TakesPathsWithAVolumeInFront) {
    useSwitches("EXPORT_FLIP_X 1\n");
    const std::string file = m_folder / "a.vek";
    writeFile(file, ExchangeFile().vertices({1, 2, 3}).end().bytes());
    EXPECT_EQ(m_library.call("VekPostExport", "Macintosh HD:" + file), 0.0f);
    EXPECT_EQ(floatsAt(readFile(file), 48, 1)[0], -1.0f);
}

TEST_F(Exchange, EmptiesAFileOrCreatesIt) {
    const std::string file = m_folder / "f";
    writeFile(file, "content");
    EXPECT_EQ(m_library.call("VekClearFile", "Disk:" + file), 1.0f);
    EXPECT_EQ(readFile(file), "");
    EXPECT_EQ(m_library.call("VekClearFile", m_folder / "new"), 1.0f);
    EXPECT_EQ(readFile(m_folder / "new"), "");
}

TEST_F(Exchange, ReportsAFileThatCannotBeEmptied) {
    EXPECT_EQ(m_library.call("VekClearFile", m_folder.path()), 0.0f);
    EXPECT_EQ(m_library.call("VekClearFile", m_folder / "no/such"), 0.0f);
    EXPECT_EQ(m_library.call("VekClearFile", ""), 0.0f);
}

TEST_F(Exchange, DeletesAFile) {
    const std::string file = m_folder / "f";
    writeFile(file, "content");
    EXPECT_EQ(m_library.call("VekDeleteFile", file), 1.0f);
    EXPECT_FALSE(fileIsThere(file));
    EXPECT_EQ(m_library.call("VekDeleteFile", file), 0.0f);
    EXPECT_EQ(m_library.call("VekDeleteFile", ""), 0.0f);
}

TEST_F(Exchange, DeletesAnEmptyFolderAndDropsTheVolumeOfAPath) {
    writeFile(m_folder / "f", "content");
    EXPECT_EQ(m_library.call("VekDeleteFile", "Disk:" + (m_folder / "f")), 1.0f);
    EXPECT_FALSE(fileIsThere(m_folder / "f"));
    makeFolders(m_folder / "full/inside");
    EXPECT_EQ(m_library.call("VekDeleteFile", m_folder / "full"), 0.0f);
    EXPECT_EQ(m_library.call("VekDeleteFile", m_folder / "full/inside"), 1.0f);
    EXPECT_EQ(m_library.call("VekDeleteFile", m_folder / "full"), 1.0f);
    EXPECT_FALSE(fileIsThere(m_folder / "full"));
}

TEST_F(Exchange, CleansTheDefaultProjectFolderAndKeepsIt) {
    makeFolders(Tree::project("a/b/c"));
    writeFile(Tree::project("a/b/c/file"), "x");
    writeFile(Tree::project(".hidden"), "x");
    writeFile(Tree::project("mesh.vek"), "x");
    writeFile(Tree::root() + "/VekProjects/other", "x");
    EXPECT_EQ(m_library.call("VekCleanCaches"), 0.0f);
    EXPECT_TRUE(std::filesystem::is_empty(Tree::root() + "/VekProjects/Default"));
    EXPECT_TRUE(fileIsThere(Tree::root() + "/VekProjects/other"));
    EXPECT_EQ(m_library.call("VekCleanCaches"), 0.0f);
}

TEST_F(Exchange, CleansEntriesOfAnyName) {
    for (const char* name : {"x:y", "*", "?", "-n", "a b", "[c]"})
        writeFile(Tree::project(name), "x");
    makeFolders(Tree::project("a:b/c"));
    writeFile(Tree::project("a:b/c/q:r"), "x");
    EXPECT_EQ(m_library.call("VekCleanCaches"), 0.0f);
    EXPECT_TRUE(std::filesystem::is_empty(Tree::root() + "/VekProjects/Default"));
}

TEST_F(Exchange, CleansNothingWhereThereIsNoDefaultProject) {
    std::filesystem::remove(Tree::root() + "/VekProjects/Default");
    EXPECT_EQ(m_library.call("VekCleanCaches"), 0.0f);
    EXPECT_FALSE(std::filesystem::exists(Tree::root() + "/VekProjects/Default"));
}

TEST_F(Exchange, CleansLinksAndNotWhatTheyPointTo) {
    writeFile(m_folder / "kept", "x");
    ASSERT_EQ(symlink(m_folder.path().c_str(), Tree::project("link").c_str()), 0);
    EXPECT_EQ(m_library.call("VekCleanCaches"), 0.0f);
    EXPECT_FALSE(fileIsThere(Tree::project("link")));
    EXPECT_TRUE(fileIsThere(m_folder / "kept"));
}

TEST_F(Exchange, FindsTheMapOfEachKindWithForwardSlashes) {
    listObject(sample());
    OutText name, number;
    EXPECT_EQ(texture(0.0, name, number), 0.0f);
    EXPECT_EQ(name.text(), "maps/colour/skin.tif");
    EXPECT_EQ(texture(1.0, name, number), 0.0f);
    EXPECT_EQ(name.text(), "normal.tif");
    EXPECT_TRUE(number.untouched());
    EXPECT_EQ(texture(2.0, name, number), 0.0f);
    EXPECT_EQ(name.text(), "height.tif");
    EXPECT_EQ(number.text(), "0.500000");
}

TEST_F(Exchange, FindsNoMapForAnotherNumber) {
    listObject(sample());
    OutText name, number;
    for (const double kind : {3.0, -1.0, 0.5, 1.0000001}) {
        EXPECT_EQ(texture(kind, name, number), -1.0f) << kind;
    }
    EXPECT_TRUE(name.untouched() && number.untouched());
}

TEST_F(Exchange, FindsAMapWithoutBlocksToWriteTo) {
    listObject(sample());
    EXPECT_EQ(m_library.call("GetFirstObjectTextureFileName", 2.0), 0.0f);
}

TEST_F(Exchange, WritesTheMapsNumberUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    listObject(sample());
    OutText name, number;
    EXPECT_EQ(texture(2.0, name, number), 0.0f);
    EXPECT_EQ(number.text(), "0.500000");
}

TEST_F(Exchange, FindsNoMapWithoutObjectFileOrMagic) {
    OutText name, number;
    EXPECT_EQ(texture(0.0, name, number), -1.0f);
    writeFile(Tree::objectList(), Tree::project("mesh") + "\n");
    EXPECT_EQ(texture(0.0, name, number), -1.0f);
    std::string bytes = sample();
    bytes.replace(0, 4, "VEKB");
    listObject(bytes);
    EXPECT_EQ(texture(0.0, name, number), -1.0f);
    EXPECT_TRUE(name.untouched());
}

TEST_F(Exchange, FindsNoMapWithAnEmptyName) {
    listObject(ExchangeFile().map(45001, "").end().bytes());
    OutText name, number;
    EXPECT_EQ(texture(0.0, name, number), -1.0f);
    listObject(ExchangeFile().block(45001, 0, "").end().bytes());
    EXPECT_EQ(texture(0.0, name, number), -1.0f);
    EXPECT_TRUE(name.untouched());
}

TEST_F(Exchange, WritesTheNumberOfAMapThoughItsNameIsEmpty) {
    listObject(ExchangeFile().map(55001, "", 0.5f).end().bytes());
    OutText name, number;
    EXPECT_EQ(texture(2.0, name, number), -1.0f);
    EXPECT_TRUE(name.untouched());
    EXPECT_EQ(number.text(), "0.500000");
}

TEST_F(Exchange, LooksForNoMapBehindTheEndBlock) {
    listObject(ExchangeFile().vertices({1, 2, 3}).end().map(45001, "late.tif").end().bytes());
    OutText name, number;
    EXPECT_EQ(texture(0.0, name, number), -1.0f);
    EXPECT_TRUE(name.untouched());
}

TEST_F(Exchange, LooksForAMapInTheFirstListedObject) {
    writeFile(Tree::project("one.vek"), ExchangeFile().map(45001, "one.tif").end().bytes());
    writeFile(Tree::project("two.vek"), ExchangeFile().map(45001, "two.tif").end().bytes());
    writeFile(Tree::objectList(), Tree::project("one") + "\n" + Tree::project("two") + "\n");
    OutText name, number;
    EXPECT_EQ(texture(0.0, name, number), 0.0f);
    EXPECT_EQ(name.text(), "one.tif");
}

TEST_F(Exchange, TakesTheFirstMapOfAKind) {
    listObject(ExchangeFile().map(45001, "one.tif").map(45001, "two.tif").end().bytes());
    OutText name, number;
    EXPECT_EQ(texture(0.0, name, number), 0.0f);
    EXPECT_EQ(name.text(), "one.tif");
}

TEST_F(Exchange, ReadsTheObjectListAnewForAMap) {
    writeFile(Tree::objectList(), "/elsewhere/other\n/elsewhere/third\n");
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 2.0f);
    listObject(sample());
    EXPECT_EQ(m_library.call("GetFirstObjectTextureFileName", 0.0), 0.0f);
    OutText object;
    m_library.call("GetVekObjectPath", 0.0, object.block());
    EXPECT_EQ(object.text(), Tree::project("mesh"));
}

TEST_F(Exchange, SurvivesEveryPrefixOfAFileWithMaps) {
    const std::string whole = sample();
    int found = 0;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        listObject(whole.substr(0, size));
        OutText name, number;
        found += texture(2.0, name, number) == 0.0f;
    }
    // Only from the end of the last map's block on.
    EXPECT_EQ(found, 17);
}

TEST_F(Exchange, EndsTheSearchAtABlockSizeThatLeadsBackwards) {
    for (const char size : {'\0', '\x01', '\x0F'}) {
        std::string bytes = ExchangeFile().block(777, 0, "").map(45001, "x").end().bytes();
        bytes[36] = size;
        listObject(bytes);
        OutText name, number;
        EXPECT_EQ(texture(0.0, name, number), -1.0f);
    }
}

TEST_F(Exchange, RejectsAMapThatClaimsMoreThanTheFileHolds) {
    std::string bytes = ExchangeFile().map(55001, "name", 1.0f).end().bytes();
    bytes.replace(36, 4, "\xFC\xFF\xFF\xFF");
    listObject(bytes);
    OutText name, number;
    EXPECT_EQ(texture(2.0, name, number), -1.0f);
    EXPECT_TRUE(name.untouched() && number.untouched());
}

TEST_F(Exchange, CallsAFileValidThatCanBeReadAndIsNotEmpty) {
    const std::string file = m_folder / "f";
    EXPECT_EQ(m_library.call("IsVekFilePathValid", file), 0.0f);
    writeFile(file, "");
    EXPECT_EQ(m_library.call("IsVekFilePathValid", file), 0.0f);
    writeFile(file, "x");
    EXPECT_EQ(m_library.call("IsVekFilePathValid", file), 1.0f);
    EXPECT_EQ(m_library.call("IsVekFilePathValid", "Disk:" + file), 1.0f);
    EXPECT_EQ(m_library.call("IsVekFilePathValid"), 0.0f);
    EXPECT_EQ(m_library.call("IsVekFilePathValid", m_folder.path()), 0.0f);
}

TEST_F(Exchange, ReadsTheProjectPathUpToItsLastLineBreak) {
    const struct {
        const char* file;
        const char* path;
    } cases[] = {
        {"/p/one\n", "/p/one"},       {"/p/one\n/p/two", "/p/one"},
        {"/p/one", "/p/one"},         {"/p/one\r\n", "/p/one"},
        {"/a\n/b\n/c\n", "/a\n/b"},   {"/with blank \n", "/with blank "},
        {"/p/one\t\r\n\t", "/p/one"}, {"/p/one\r\n/p/two", "/p/one\r"},
    };
    for (const auto& it : cases) {
        writeFile(Tree::hub("Vek_ProjectPath.txt"), it.file);
        OutText out;
        EXPECT_EQ(m_library.call("ReadVekProjectPath", 0.0, out.block()), 0.0f);
        EXPECT_EQ(out.text(), it.path) << it.file;
    }
}

TEST_F(Exchange, LeavesTheBlockWithoutAProjectPath) {
    OutText out;
    EXPECT_EQ(m_library.call("ReadVekProjectPath", 0.0, out.block()), 0.0f);
    writeFile(Tree::hub("Vek_ProjectPath.txt"), "\n");
    EXPECT_EQ(m_library.call("ReadVekProjectPath", 0.0, out.block()), 0.0f);
    writeFile(Tree::hub("Vek_ProjectPath.txt"), std::string(4097, 'p'));
    EXPECT_EQ(m_library.call("ReadVekProjectPath", 0.0, out.block()), 0.0f);
    writeFile(Tree::hub("Vek_ProjectPath.txt"), "\n/p");
    EXPECT_EQ(m_library.call("ReadVekProjectPath", 0.0, out.block()), 0.0f);
    EXPECT_TRUE(out.untouched());
    writeFile(Tree::hub("Vek_ProjectPath.txt"), "/p");
    EXPECT_EQ(m_library.call("ReadVekProjectPath"), 0.0f);
}
