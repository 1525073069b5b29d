// What "make package" does on a Mac, with stand-ins for the programs that it calls: they write down
// how they were called.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

namespace {

class MacPackage : public testing::Test {
protected:
    void SetUp() override {
        makeFolders(m_folder / "bin");
        writeFile(m_folder / "Makefile", readFile(VEK_SOURCE_DIR "/Makefile"));
        makeFolders(m_folder / "scripts");
        makeFolders(m_folder / "build");
        standIn("bin/uname", "echo Darwin");
        standIn("scripts/install-packages", "exit 0");
        standIn("bin/cpack", "echo cpack $* >>" + calls() + "; echo generated");
        standIn("bin/cmake", "echo cmake $* >>" + calls());
    }

    void standIn(const std::string& name, const std::string& body) {
        writeFile(m_folder / name, "#!/bin/sh\n" + body + "\n");
        ASSERT_EQ(chmod((m_folder / name).c_str(), 0755), 0);
    }

    int make(const std::string& words) {
        return runProgram("cd " + m_folder.path() + " && PATH=" + (m_folder / "bin") +
                              ":$PATH make --no-print-directory package JOBS=2 " + words,
                          m_said);
    }

    std::string calls() const { return m_folder / "calls"; }

    TempFolder m_folder;
    std::string m_said;
};

}  // namespace

TEST_F(MacPackage, BuildsTheHalvesApartAndPacksThemAsOne) {
    ASSERT_EQ(make("I386_HEADERS=/older/headers"), 0) << m_said;
    const std::string half = m_folder / "build/macos-i386/libVek.dylib";
    EXPECT_EQ(readFile(calls()),
              "cmake --preset macos-i386 -DCMAKE_OSX_SYSROOT=/older/headers\n"
              "cmake --build --preset macos-i386 -j 2 --target Vek\n"
              "cmake --preset macos-package -DVEK_I386_LIBRARY=" +
                  half +
                  "\n"
                  "cmake --build --preset macos-package -j 2\n"
                  "cpack --config macos-package/CPackConfig.cmake\n");
}

TEST_F(MacPackage, LeavesThe32BitHalfOutWhenAskedTo) {
    ASSERT_EQ(make("FAMILIES=x86_64"), 0) << m_said;
    EXPECT_EQ(readFile(calls()),
              "cmake --preset macos-package -DVEK_I386_LIBRARY=\n"
              "cmake --build --preset macos-package -j 2\n"
              "cpack --config macos-package/CPackConfig.cmake\n");
}

TEST_F(MacPackage, SaysWhatToDoWhereTheHeadersAreTooNewForThe32BitHalf) {
    standIn("bin/cmake", "exit 1");
    EXPECT_NE(make(""), 0);
    EXPECT_NE(m_said.find("make package I386_HEADERS=FOLDER"), std::string::npos) << m_said;
    EXPECT_NE(m_said.find("make package FAMILIES=x86_64"), std::string::npos) << m_said;
}
