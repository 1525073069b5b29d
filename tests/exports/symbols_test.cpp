#include <gtest/gtest.h>
#include <sys/time.h>

#include <cstdio>
#include <cstring>
#include <regex>
#include <set>
#include <string>

#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

std::set<std::string> listed() {
    std::set<std::string> names;
#define X(name, group, textUse, valueUse, kind1, kind2, result) names.insert(#name);
#include "exports/exports.def.h"
#undef X
    return names;
}

// The names of the library's dynamic symbols, with the letter of their kind in front.
std::set<std::string> shown() {
    std::set<std::string> symbols;
    FILE* const nm = popen("nm -D --defined-only '" VEK_LIBRARY "'", "r");
    if (!nm) return symbols;
    char address[64], kind[8], name[512];
    while (std::fscanf(nm, "%63s %7s %511s", address, kind, name) == 3) {
        symbols.insert(std::string(kind) + " " + name);
    }
    pclose(nm);
    return symbols;
}

}  // namespace

// The list is held against the header by the compiler; here the header is held against the list.
TEST(Symbols, AreThoseOfTheHeader) {
    const std::string header = readFile(VEK_SOURCE_DIR "/exports/vek.h");
    const std::regex prototype("\nVEK_EXPORT\\((\\w+)\\);");
    std::set<std::string> declared;
    for (std::sregex_iterator it(header.begin(), header.end(), prototype), end; it != end; ++it) {
        EXPECT_TRUE(declared.insert((*it)[1]).second) << (*it)[1] << " stands twice";
    }
    EXPECT_EQ(declared.size(), 49u);
    EXPECT_EQ(declared, listed());
}

TEST(Symbols, AreThe49ListedFunctionsAndTwoDataSymbolsAndNoOther) {
    std::set<std::string> expected;
    for (const std::string& name : listed()) expected.insert("T " + name);
    ASSERT_EQ(expected.size(), 49u);
    expected.insert("B s_startTimeVal");
    expected.insert("B s_table2");
    EXPECT_EQ(shown(), expected);
}

TEST(Symbols, ResolveByName) {
    const LoadedLibrary library;
    for (const std::string& name : listed()) {
        EXPECT_NE(library.symbol(name.c_str()), nullptr) << name;
    }
}

TEST(Symbols, DoNotResolveByNamesThatAreNear) {
    const LoadedLibrary library;
    for (const char* name : {"InitializeVek_", "_InitializeVek", "initializeVek",
                             "GetVekAppTemplate", "VekPostExports", "s_table", "s_vekApps"}) {
        EXPECT_EQ(library.symbol(name), nullptr) << name;
    }
}

TEST(Symbols, HoldZeroAtLoad) {
    const LoadedLibrary library;
    const auto* started = static_cast<const timeval*>(library.symbol("s_startTimeVal"));
    const auto* table = static_cast<void* const*>(library.symbol("s_table2"));
    ASSERT_TRUE(started && table);
    EXPECT_EQ(started->tv_sec, 0);
    EXPECT_EQ(started->tv_usec, 0);
    EXPECT_EQ(*table, nullptr);
}

TEST(Symbols, GoWithTheLibraryWhenItIsUnloaded) {
    // Each load begins anew: the list read in one is not there in the next.
    const Tree tree;
    writeFile(Tree::objectList(), "A\n");
    for (int i = 0; i < 50; ++i) {
        const LoadedLibrary library;
        OutText before, after;
        library.call("GetVekObjectPath", 0.0, before.block());
        ASSERT_TRUE(before.untouched()) << i;
        ASSERT_EQ(library.call("ReadVekObjectList"), 1.0f);
        library.call("GetVekObjectPath", 0.0, after.block());
        ASSERT_EQ(after.text(), "A");
    }
}
