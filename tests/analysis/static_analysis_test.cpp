// The library's sources under clang-tidy and cppcheck, the tools' under cppcheck
// (scripts/find-faults).

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

const char* const kLayers[] = {"formats", "os",     "foundation", "exports",
                               "host",    "config", "bridge"};

std::vector<std::string> sourcesIn(const std::string& folder) {
    std::vector<std::string> sources;
    for (const auto& entry : fs::directory_iterator(VEK_SOURCE_DIR "/" + folder)) {
        if (entry.path().extension() == ".cpp") sources.push_back(entry.path().string());
    }
    std::sort(sources.begin(), sources.end());
    return sources;
}

struct Analysis {
    bool isClean;
    std::string output;
};

Analysis analyse(const std::string& tool, const std::vector<std::string>& sources) {
    const TempFolder folder;
    std::string command = "'" VEK_SOURCE_DIR "/scripts/find-faults' " + tool;
    for (const std::string& source : sources) command += " '" + source + "'";
    command += " >'" + (folder / "output") + "' 2>&1";
    const bool isClean = std::system(command.c_str()) == 0;
    return {isClean, readFile(folder / "output")};
}

Analysis analysePlanted(const std::string& tool, const std::string& text) {
    const TempFolder folder;
    writeFile(folder / "planted.cpp", text);
    return analyse(tool, {folder / "planted.cpp"});
}

void expectFound(const Analysis& analysis, const std::string& what) {
    EXPECT_FALSE(analysis.isClean);
    EXPECT_NE(analysis.output.find(what), std::string::npos) << analysis.output;
}

class StaticAnalysisOf : public testing::TestWithParam<const char*> {};

const char kSound[] = "int one() {\n    return 1;\n}\n";

const char kNullPointer[] =
    "int first(const int* numbers, bool isThere) {\n"
    "    if (!isThere) numbers = nullptr;\n"
    "    return numbers[0];\n"
    "}\n";

const char kUsedAfterMove[] =
    "#include <string>\n"
    "#include <utility>\n"
    "std::string twice(std::string text) {\n"
    "    std::string moved = std::move(text);\n"
    "    return moved + text;\n"
    "}\n";

const char kBeyondTheEnd[] =
    "int last() {\n"
    "    int numbers[3] = {1, 2, 3};\n"
    "    return numbers[3];\n"
    "}\n";

}  // namespace

TEST_P(StaticAnalysisOf, FindsNothingWithClangTidy) {
    const std::vector<std::string> sources = sourcesIn(GetParam());
    ASSERT_FALSE(sources.empty());
    const Analysis analysis = analyse("clang-tidy", sources);
    EXPECT_TRUE(analysis.isClean) << analysis.output;
}

INSTANTIATE_TEST_SUITE_P(Layers, StaticAnalysisOf, testing::ValuesIn(kLayers),
                         [](const auto& layer) { return std::string(layer.param); });

TEST(StaticAnalysis, FindsFaultsPlantedForClangTidy) {
    expectFound(analysePlanted("clang-tidy", kNullPointer), "clang-analyzer-core");
    expectFound(analysePlanted("clang-tidy", kUsedAfterMove), "bugprone-use-after-move");
    expectFound(analysePlanted("clang-tidy", "int* none() {\n    return 0;\n}\n"),
                "modernize-use-nullptr");
    const Analysis sound = analysePlanted("clang-tidy", kSound);
    EXPECT_TRUE(sound.isClean) << sound.output;
}

TEST(StaticAnalysis, FindsNothingWithCppcheck) {
    std::vector<std::string> folders(std::begin(kLayers), std::end(kLayers));
    folders.insert(folders.end(), {"tools/vek", "tools/validate"});
    std::vector<std::string> sources;
    for (const std::string& folder : folders) {
        const std::vector<std::string> some = sourcesIn(folder);
        ASSERT_FALSE(some.empty()) << folder;
        sources.insert(sources.end(), some.begin(), some.end());
    }
    const Analysis analysis = analyse("cppcheck", sources);
    EXPECT_TRUE(analysis.isClean) << analysis.output;
}

TEST(StaticAnalysis, FindsAFaultPlantedForCppcheck) {
    expectFound(analysePlanted("cppcheck", kBeyondTheEnd), "arrayIndexOutOfBounds");
    const Analysis sound = analysePlanted("cppcheck", kSound);
    EXPECT_TRUE(sound.isClean) << sound.output;
}
