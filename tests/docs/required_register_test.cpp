// Holds docs/required.md, docs/foundation.md, the comments in the code and the tests against each
// other.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "tests/support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

const std::string kSource = VEK_SOURCE_DIR;

using Ids = std::set<std::string>;

struct Row {
    std::string file;
    std::string test;
};

std::map<std::string, Row> rows() {
    std::map<std::string, Row> found;
    const std::string text = readFile(kSource + "/docs/required.md");
    const std::regex row(
        "\\| (R[0-9]{2}) \\|.*\\| ([a-z0-9_/]+\\.(?:cpp|h|mm)) \\| ([A-Za-z0-9]+\\.[A-Za-z0-9]+) "
        "\\|");
    for (std::sregex_iterator it(text.begin(), text.end(), row), end; it != end; ++it) {
        EXPECT_EQ(found.count((*it)[1]), 0u) << (*it)[1] << " stands twice";
        found[(*it)[1]] = {(*it)[2], (*it)[3]};
    }
    return found;
}

Ids idsIn(const std::string& text, const std::regex& mark) {
    Ids ids;
    for (std::sregex_iterator it(text.begin(), text.end(), mark), end; it != end; ++it) {
        ids.insert((*it)[1]);
    }
    return ids;
}

// Calls `visit` with the path below the source folder and the text of every source file there.
template <class Visit>
void forEachSource(const std::string& folder, Visit visit) {
    int seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(kSource + "/" + folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".cpp" && extension != ".h" && extension != ".mm") continue;
        visit(fs::relative(entry.path(), kSource).string(), readFile(entry.path().string()));
        ++seen;
    }
    EXPECT_GT(seen, 0) << "no source in " << folder;
}

const char* const kFolders[] = {"foundation", "os",   "config", "bridge",
                                "formats",    "host", "exports"};

}  // namespace

TEST(RequiredRegister, HasARowForEveryCommentAndACommentForEveryRow) {
    const auto registered = rows();
    ASSERT_GT(registered.size(), 20u);
    std::set<std::string> commented;
    for (const char* folder : kFolders) {
        forEachSource(folder, [&](const std::string& path, const std::string& text) {
            for (const std::string& id :
                 idsIn(text, std::regex("// Required\\((R[0-9]{2})\\): "))) {
                commented.insert(id);
                ASSERT_EQ(registered.count(id), 1u) << id << " in " << path << " has no row";
                EXPECT_EQ(registered.at(id).file, path) << id;
            }
        });
    }
    for (const auto& [id, row] : registered) {
        EXPECT_EQ(commented.count(id), 1u) << id << " has no comment in " << row.file;
    }
}

TEST(RequiredRegister, NamesATestForEveryRowThatCarriesItsId) {
    const auto registered = rows();
    ASSERT_GT(registered.size(), 20u);
    Ids tested;
    std::set<std::string> marked;  // id and test
    forEachSource("tests", [&](const std::string&, const std::string& text) {
        const std::regex mark(
            "// Required\\((R[0-9]{2})\\)((?:\\s*// Required\\(R[0-9]{2}\\))*)\\s*"
            "TEST(?:_F)?\\(([A-Za-z0-9]+),\\s*([A-Za-z0-9]+)\\)");
        for (std::sregex_iterator it(text.begin(), text.end(), mark), end; it != end; ++it) {
            const std::string test = (*it)[3].str() + "." + (*it)[4].str();
            Ids ids = idsIn((*it)[2], std::regex("(R[0-9]{2})"));
            ids.insert((*it)[1]);
            for (const std::string& id : ids) {
                EXPECT_EQ(registered.count(id), 1u) << id << " at " << test << " has no row";
                marked.insert(id + " " + test);
            }
        }
    });
    for (const auto& [id, row] : registered) {
        EXPECT_EQ(marked.count(id + " " + row.test), 1u) << row.test << " does not carry " << id;
    }
}

TEST(FoundationPage, HasTheRowsOfItsTypesWithTheSameTests) {
    std::map<std::string, std::string> expected;
    for (const auto& [id, row] : rows()) {
        const bool isOfThePage = row.file.rfind("foundation/", 0) == 0 ||
                                 row.file.rfind("formats/vectors", 0) == 0 ||
                                 row.file.rfind("formats/bx_binary_file", 0) == 0;
        if (isOfThePage) expected[id] = row.test;
    }
    std::map<std::string, std::string> found;
    const std::string text = readFile(kSource + "/docs/foundation.md");
    const std::regex line("\\| (R[0-9]{2}) \\|.*\\| ([A-Za-z0-9]+\\.[A-Za-z0-9]+) \\|");
    for (std::sregex_iterator it(text.begin(), text.end(), line), end; it != end; ++it) {
        found[(*it)[1]] = (*it)[2];
    }
    EXPECT_GT(expected.size(), 20u);
    EXPECT_EQ(expected, found);
}
