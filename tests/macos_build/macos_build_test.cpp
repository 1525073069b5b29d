// Builds for the Mac with cmake/toolchains/macos-cross.cmake. Where only the C library's headers
// are at hand, that is everything but the platform's side of the seam: all of it is compiled for
// both processor families, and linked for the 64-bit one. Each test skips where its headers are not
// there.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

namespace {

const std::string kToolchain = VEK_SOURCE_DIR "/cmake/toolchains/macos-cross.cmake";

std::string run(const std::string& command) {
    std::string said;
    EXPECT_EQ(runProgram(command, said), 0) << command << "\n" << said;
    return said;
}

// The command that configures a build of the library in `folder`.
std::string configure(const std::string& folder, const std::string& options) {
    return VEK_CMAKE " -G Ninja -S " + shellWord(VEK_SOURCE_DIR) + " -B " + shellWord(folder) +
           " -DCMAKE_TOOLCHAIN_FILE=" + shellWord(kToolchain) + " -DVEK_TESTS=OFF -DVEK_TOOL=OFF " +
           options;
}

std::string portable(const std::string& family) {
    return "-DVEK_PORTABLE_ONLY=ON -DVEK_MACOS_SDK=" + shellWord(VEK_MACOS_HEADERS) +
           " -DVEK_MACOS_ARCH=" + family;
}

std::string build(const std::string& folder, const std::string& targets) {
    return run(VEK_CMAKE " --build " + shellWord(folder) + " --target " + targets);
}

// What one of LLVM's tools says of a file.
std::string ask(const std::string& tool, const std::string& file) {
    return run("\"$(clang -print-resource-dir)/../../../bin/\"" + tool + " " + shellWord(file));
}

// The names that the header declares, and the two data symbols, as the Mac's linker spells them.
std::set<std::string> promisedSymbols() {
    const std::string header = readFile(VEK_SOURCE_DIR "/exports/vek.h");
    const std::regex declared("\nVEK_EXPORT\\((\\w+)\\);");
    std::set<std::string> symbols = {"_s_startTimeVal", "_s_table2"};
    for (std::sregex_iterator it(header.begin(), header.end(), declared), end; it != end; ++it) {
        symbols.insert("_" + it->str(1));
    }
    return symbols;
}

std::set<std::string> shownSymbols(const std::string& library) {
    std::istringstream lines(ask("llvm-nm -gU", library));
    std::set<std::string> symbols;
    for (std::string address, kind, name; lines >> address >> kind >> name;) symbols.insert(name);
    return symbols;
}

// What the library wants from elsewhere, and no library that was linked has.
std::vector<std::string> openSymbols(const std::string& library) {
    std::istringstream lines(ask("llvm-nm -m -u", library));
    std::vector<std::string> symbols;
    const std::regex open("external (\\S+) \\(dynamically looked up\\)");
    std::smatch found;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_search(line, found, open)) symbols.push_back(found.str(1));
    }
    return symbols;
}

// Those of the C++ library: in the namespace std, its new and delete, and its run time.
bool isOfCppLibrary(const std::string& symbol) {
    static const std::regex shapes(
        "__Z(N|NK|TI|TV|TS)*(S[ta-z]|9__cxxabi|N10__cxxabi).*|__Z(da|dl|na|nw).*|___(cxa|gxx)_.*|"
        "__ZTVN10__cxxabiv1.*|__ZNKS.*|__ZNS.*");
    return std::regex_match(symbol, shapes);
}

// The 64-bit library, linked to the C library alone; in the same file the 32-bit one of that path.
std::string portableLibrary(const std::string& half = "") {
    const std::string folder = VEK_BUILD_DIR "/macos-x86_64";
    run(configure(folder, portable("x86_64") + " -DVEK_I386_LIBRARY=" + half));
    build(folder, "Vek");
    return folder + "/libVek.dylib";
}

class MacBuild : public testing::Test {
protected:
    void SetUp() override {
        if (std::filesystem::exists(VEK_MACOS_HEADERS "/usr/include/math.h")) return;
        GTEST_SKIP() << "the C library's headers of macOS are not at " VEK_MACOS_HEADERS
                        ": scripts/fetch-macos-headers brings them";
    }
};

class WholeMacBuild : public testing::Test {
protected:
    void SetUp() override {
        if (std::string(VEK_MACOS_SDK).empty()) GTEST_SKIP() << "VEK_MACOS_SDK is not set";
    }
};

void expectMacLibrary(const std::string& library) {
    EXPECT_EQ(promisedSymbols().size(), 51u);
    EXPECT_EQ(shownSymbols(library), promisedSymbols());
    EXPECT_NE(ask("llvm-otool -D", library).find("\n@rpath/libVek.dylib\n"), std::string::npos);
    const std::regex oldest("LC_VERSION_MIN_MACOSX\n +cmdsize 16\n +version 10.9\n");
    EXPECT_TRUE(std::regex_search(ask("llvm-otool -l", library), oldest));
}

}  // namespace

TEST_F(MacBuild, CompilesEverythingButThePlatformsSideFor32Bits) {
    const std::string folder = VEK_BUILD_DIR "/macos-i386";
    run(configure(folder, portable("i386")));
    build(folder, "vek_core vek_exports");
    EXPECT_NE(ask("llvm-nm -g", folder + "/libvek_core.a").find(" T "), std::string::npos);
    EXPECT_NE(ask("llvm-otool -h", folder + "/libvek_core.a").find("0xfeedface"),
              std::string::npos);
}

TEST_F(MacBuild, LinksA64BitLibraryThatShowsTheHeadersSymbolsAndNoOther) {
    expectMacLibrary(portableLibrary());
}

TEST_F(MacBuild, NeedsThePlatformsSideOfTheSeamAndTheStandardLibrariesAlone) {
    std::vector<std::string> others;
    const std::vector<std::string> open = openSymbols(portableLibrary());
    EXPECT_GT(open.size(), 10u);
    for (const std::string& symbol : open) {
        if (!isOfCppLibrary(symbol)) others.push_back(symbol);
    }
    EXPECT_EQ(others, std::vector<std::string>{"__ZN10BXPlatform6nativeEv"});
}

// Nothing here links the 32-bit half, so that one of its objects stands for it.
TEST_F(MacBuild, PutsAHalfThatWasBuiltApartIntoTheSameFile) {
    const TempFolder folder;
    writeFile(folder / "half.c", "int half(void) { return 32; }\n");
    run("clang -target i386-apple-macos10.9 -c " + (folder / "half.c") + " -o " +
        (folder / "half.dylib"));
    const std::string families = "x86_64 i386 \n";
    EXPECT_EQ(ask("llvm-lipo -archs", portableLibrary(folder / "half.dylib")), families);
    EXPECT_EQ(ask("llvm-lipo -archs", portableLibrary(folder / "half.dylib")), families);
    run("touch " + (folder / "half.dylib"));
    EXPECT_EQ(ask("llvm-lipo -archs", portableLibrary(folder / "half.dylib")), families);
    EXPECT_EQ(ask("llvm-lipo -archs", portableLibrary()), "x86_64 \n");
}

TEST_F(MacBuild, RefusesWhatTheOldestMacDoesNotHave) {
    const TempFolder folder;
    writeFile(folder / "CMakeLists.txt",
              "cmake_minimum_required(VERSION 3.22)\nproject(Newer CXX)\n"
              "include(" VEK_SOURCE_DIR
              "/cmake/compiler.cmake)\n"
              "include(" VEK_SOURCE_DIR
              "/cmake/layer.cmake)\n"
              "set(VEK_WERROR ON)\nvek_add_layer(newer SOURCES newer.cpp)\n");
    writeFile(folder / "newer.cpp",
              "#include <fcntl.h>\nint open(const char* name) { return openat(0, name, 0); }\n");
    std::string said;
    ASSERT_EQ(runProgram(VEK_CMAKE " -G Ninja -S " + folder.path() + " -B " + (folder / "build") +
                             " -DCMAKE_TOOLCHAIN_FILE=" + shellWord(kToolchain) + " " +
                             portable("x86_64"),
                         said),
              0)
        << said;
    EXPECT_NE(runProgram(VEK_CMAKE " --build " + (folder / "build"), said), 0);
    EXPECT_NE(said.find("'openat' is only available on macOS 10.10 or newer"), std::string::npos)
        << said;
}

TEST_F(WholeMacBuild, LinksThe64BitLibraryWithNothingLeftOpen) {
    const std::string folder = VEK_BUILD_DIR "/macos-whole";
    // A path as people have them.
    const TempFolder outside;
    const std::string sdk = outside / "the platform's headers";
    std::filesystem::create_directory_symlink(VEK_MACOS_SDK, sdk);
    run("rm -rf " + shellWord(folder));
    run(configure(folder, "-DVEK_MACOS_SDK=" + shellWord(sdk)));
    build(folder, "Vek");
    expectMacLibrary(folder + "/libVek.dylib");
    EXPECT_EQ(openSymbols(folder + "/libVek.dylib"), std::vector<std::string>{});
}

TEST(MacFamilies, SaysThatNewHeadersLinkNo32BitPrograms) {
    const TempFolder sdk;
    makeFolders(sdk / "usr/lib");
    writeFile(sdk / "script.cmake",
              "cmake_minimum_required(VERSION 3.22)\n"
              "include(" VEK_SOURCE_DIR
              "/cmake/macos.cmake)\n"
              "vek_check_macos_families(\"${FAMILIES}\" " +
                  sdk.path() + ")\n");
    const auto checks = [&](const std::string& families, std::string& said) {
        return runProgram(VEK_CMAKE " -DFAMILIES='" + families + "' -P " + (sdk / "script.cmake"),
                          said) == 0;
    };
    std::string said;
    writeFile(sdk / "usr/lib/libSystem.tbd", "targets: [ x86_64-macos, arm64-macos ]\n");
    EXPECT_FALSE(checks("i386;x86_64", said));
    EXPECT_NE(said.find("cannot link 32-bit programs"), std::string::npos) << said;
    EXPECT_TRUE(checks("x86_64", said)) << said;
    writeFile(sdk / "usr/lib/libSystem.tbd", "archs: [ i386, x86_64 ]\n");
    EXPECT_TRUE(checks("i386;x86_64", said)) << said;
}

TEST(MacToolchain, SaysThatItWantsTheFolderOfThePlatformsHeaders) {
    const TempFolder folder;
    std::string said;
    EXPECT_NE(runProgram(configure(folder / "build", ""), said), 0);
    EXPECT_NE(said.find("VEK_MACOS_SDK is not set."), std::string::npos) << said;
}

TEST(MacToolchain, WantsTheWholePathOfThatFolder) {
    const TempFolder folder;
    std::string said;
    EXPECT_NE(runProgram(configure(folder / "build", "-DVEK_MACOS_SDK=headers"), said), 0);
    EXPECT_NE(said.find("VEK_MACOS_SDK is headers.  Write the whole path"), std::string::npos)
        << said;
}

TEST(MacToolchain, SaysWhatIsMissingInThatFolder) {
    const TempFolder folder;
    std::string said;
    EXPECT_NE(runProgram(configure(folder / "build", "-DVEK_MACOS_SDK=" + folder.path()), said), 0);
    EXPECT_NE(said.find("no usr/include/math.h"), std::string::npos) << said;
}
