// Installs the build of which it is a part into an empty folder, and uses what it finds there.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

namespace {

const std::string kConsumer = VEK_SOURCE_DIR "/tests/install/consumer";

std::string run(const std::string& command) {
    std::string said;
    EXPECT_EQ(runProgram(command, said), 0) << command << "\n" << said;
    return said;
}

// The paths of the files below a folder, from there on.
std::set<std::string> filesBelow(const std::string& folder) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_directory()) continue;
        files.insert(std::filesystem::relative(entry.path(), folder).string());
    }
    return files;
}

// Of the tool below a prefix, where the shared tree is the test's own.
void expectDemoRuns(const std::string& prefix, const std::string& out) {
    if (getenv("VEK_VIEW") != std::string("private")) return;
    const std::string share = prefix + "/share/vek";
    const std::string said =
        run("PATH=" + share + "/demo/stand-ins:$PATH " + prefix + "/bin/vek run " + share +
            "/demo/round_trip.lua --faces 1000 --out " + out);
    EXPECT_NE(said.find("0 faces wound wrong, 0 corners lost"), std::string::npos) << said;
    run("rm -rf /Users/Shared/Kelvaro");
}

class Install : public testing::Test {
protected:
    void SetUp() override {
        run(VEK_CMAKE " --install " + shellWord(VEK_BUILD_DIR) + " --prefix " + prefix());
    }

    // Other than where it was installed: nothing may know the place.
    std::string moved() const {
        std::filesystem::rename(prefix(), m_folder / "moved");
        return m_folder / "moved";
    }
    std::string prefix() const { return m_folder / "prefix"; }

    TempFolder m_folder;
};

}  // namespace

TEST_F(Install, PutsFilesWherePeopleExpectThem) {
    const std::set<std::string> files = filesBelow(prefix());
    for (const char* file :
         {"bin/vek", "include/vek.h", "lib/libVek.so", "lib/cmake/Vek/VekConfig.cmake",
          "lib/cmake/Vek/VekConfigVersion.cmake", "lib/pkgconfig/vek.pc", "share/doc/vek/README.md",
          "share/doc/vek/copyright", "share/doc/vek/docs/checking-a-tree.md",
          "share/vek/demo/round_trip.lua", "share/vek/private-view", "bin/vek-validate",
          "share/vek/python/vek_exchange/__init__.py", "share/vek/apps/Example/Vek_Info.txt",
          "share/vek/apps/Example/Example.app/Contents/MacOS/Example"}) {
        EXPECT_EQ(files.count(file), 1u) << file;
    }
    for (const std::string& file : files) {
        EXPECT_EQ(file.find("CMakeFiles"), std::string::npos) << file;
        EXPECT_EQ(file.find("gtest"), std::string::npos) << file;
    }
}

TEST_F(Install, TheToolFindsTheLibraryWhereverThePrefixWasMoved) {
    const std::string tool = moved() + "/bin/vek";
    EXPECT_EQ(run(tool + " call VekSetExportScale --value 2"),
              "VekSetExportScale returned 0 (0)\n");
}

TEST_F(Install, AProjectFindsTheLibraryAsACMakePackage) {
    const std::string build = m_folder / "build";
    run(VEK_CMAKE " -S " + shellWord(kConsumer) + " -B " + build +
        " -DCMAKE_PREFIX_PATH=" + moved());
    run(VEK_CMAKE " --build " + build);
    EXPECT_EQ(run(build + "/consumer"), "-1, started at 0\n");
}

TEST_F(Install, ACMakePackageOfAnotherVersionIsNotTaken) {
    writeFile(m_folder / "CMakeLists.txt",
              "cmake_minimum_required(VERSION 3.22)\nproject(Later C)\n"
              "find_package(Vek 9.0 REQUIRED)\n");
    std::string said;
    EXPECT_NE(runProgram(VEK_CMAKE " -S " + m_folder.path() + " -B " + (m_folder / "build") +
                             " -DCMAKE_PREFIX_PATH=" + prefix(),
                         said),
              0);
    EXPECT_NE(said.find("version: " VEK_VERSION), std::string::npos) << said;
}

TEST_F(Install, AProjectFindsTheLibraryByPkgConfig) {
    const std::string consumer = m_folder / "consumer";
    const std::string pkgConfig =
        "PKG_CONFIG_PATH=" + moved() + "/lib/pkgconfig pkg-config --define-prefix ";
    EXPECT_EQ(run(pkgConfig + "--modversion vek"), VEK_VERSION "\n");
    run("cc " + shellWord(kConsumer + "/consumer.c") + " -o " + consumer + " $(" + pkgConfig +
        "--cflags --libs vek)");
    EXPECT_EQ(run("LD_LIBRARY_PATH=" + (m_folder / "moved/lib") + " " + consumer),
              "-1, started at 0\n");
}

TEST_F(Install, AnInstalledToolRunsTheInstalledDemo) {
    if (getenv("VEK_VIEW") != std::string("private")) GTEST_SKIP() << "the tree is not its own";
    expectDemoRuns(moved(), m_folder / "out");
}

TEST_F(Install, LeavesAFolderThatIsThereAsItsOwnerKeepsIt) {
    const std::string closed = m_folder / "closed";
    ASSERT_EQ(mkdir(closed.c_str(), 0700), 0);
    ASSERT_EQ(mkdir((closed + "/share").c_str(), 0750), 0);
    run(VEK_CMAKE " --install " + shellWord(VEK_BUILD_DIR) + " --prefix " + closed);
    EXPECT_EQ(run("stat -c %a " + closed + " " + closed + "/share " + closed + "/share/vek"),
              "700\n750\n755\n");
}

TEST_F(Install, EverybodyCanReadTheFilesWhateverTheMask) {
    const std::string prefix = m_folder / "masked";
    run("umask 077; " VEK_CMAKE " --install " + shellWord(VEK_BUILD_DIR) + " --prefix " + prefix);
    EXPECT_EQ(run("find " + prefix + " -type f ! -perm -444"), "");
    EXPECT_EQ(run("find " + prefix + " -type d ! -perm -555"), "");
    const std::string programs =
        run("cd " + prefix + " && find . -type f -perm -555 ! -name '*.so' | sort");
    for (const char* program :
         {"./bin/vek\n", "/Example/edit.sh\n", "/MacOS/Example\n", "/stand-ins/osascript\n"}) {
        EXPECT_NE(programs.find(program), std::string::npos) << programs;
    }
    EXPECT_EQ(programs.find("Vek_Info.txt"), std::string::npos) << programs;
}

// A machine's package manager takes the package in and out again, in a folder that stands for the
// machine; what it depends on is not there.
TEST(Package, IsInstalledAndTakenAwayWithoutATrace) {
    const TempFolder folder;
    run("cd " + folder.path() + " && " VEK_CPACK " --config " +
        shellWord(VEK_BUILD_DIR "/CPackConfig.cmake"));
    std::filesystem::create_directories(folder / "machine/var/lib/dpkg/info");
    std::filesystem::create_directories(folder / "machine/var/lib/dpkg/updates");
    writeFile(folder / "machine/var/lib/dpkg/status", "");
    // Its scripts run on this machine, where there is nothing to do for ldconfig.
    makeFolders(folder / "bin");
    writeFile(folder / "bin/ldconfig", "#!/bin/sh\n");
    ASSERT_EQ(chmod((folder / "bin/ldconfig").c_str(), 0755), 0);
    // In a private view of an ordinary user there is no other user to give a file to.
    const std::string dpkg = "PATH=" + (folder / "bin") + ":$PATH:/usr/sbin:/sbin " +
                             "FAKEROOTDONTTRYCHOWN=1 fakeroot dpkg " +
                             "--force-not-root --force-depends --force-script-chrootless " +
                             "--log=/dev/null --root=" + (folder / "machine") + " ";
    const auto ours = [&] {
        std::set<std::string> files;
        for (const std::string& file : filesBelow(folder / "machine")) {
            if (file.compare(0, 13, "var/lib/dpkg/") != 0) files.insert(file);
        }
        return files;
    };

    run(dpkg + "--install " + (folder / "vek_" VEK_VERSION "_*.deb"));
    EXPECT_EQ(ours().count("usr/bin/vek"), 1u);
    EXPECT_EQ(ours().count("usr/share/vek/apps/Example/Vek_Info.txt"), 1u);
    expectDemoRuns(folder / "machine/usr", folder / "out");
    run(dpkg + "--purge vek");
    EXPECT_EQ(ours(), std::set<std::string>{});
    EXPECT_FALSE(std::filesystem::exists(folder / "machine/usr"));
}

TEST(Package, NamesTheLibrariesThatTheToolNeeds) {
    const TempFolder folder;
    run("cd " + folder.path() + " && " VEK_CPACK " --config " +
        shellWord(VEK_BUILD_DIR "/CPackConfig.cmake"));
    const std::string fields =
        run("dpkg-deb --field " + (folder / "vek_" VEK_VERSION "_*.deb") + " Depends");
    for (const char* name : {"libc6", "libstdc++6", "liblua5.4-0", "libtinyobjloader"}) {
        EXPECT_NE(fields.find(name), std::string::npos) << fields;
    }
}
