// A process that is killed while it rewrites a file, and one that reads the file meanwhile. By
// hand:
//
//     VEK_KILLS=1000 build/release/bin/vek_kills_tests

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/kill_run.h"
#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

using Lines = std::vector<std::string>;

// As readers of the tree's files do: blank lines do not count.
Lines linesIn(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

Lines linesOf(const std::string& path) {
    return linesIn(readFile(path));
}

std::string textOf(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

std::string object(int n) {
    return "/Users/Shared/Kelvaro/VekProjects/Default/object" + std::to_string(n);
}

// A page of the new list meets one of the old: an object or two are missing there, and one line is
// put together from two.
bool isCutAtOnePlace(const Lines& list, const std::string& added) {
    const Lines lines = linesOf(Tree::objectList());
    const std::set<std::string> now(lines.begin(), lines.end());
    std::set<std::string> known(list.begin(), list.end());
    const auto isMissing = [&](const std::string& line) { return now.count(line) == 0; };
    const auto missing = std::count_if(list.begin(), list.end(), isMissing);
    known.insert(added);
    const auto isForeign = [&](const std::string& line) { return known.count(line) == 0; };
    return missing <= 2 && std::count_if(lines.begin(), lines.end(), isForeign) <= 1;
}

// All of the tree but the file that is rewritten.
std::string restOfTheTree(const std::string& rewritten) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Tree::root())) {
        const std::string path = entry.path().string();
        if (entry.is_regular_file() && path != rewritten) files[path] = readFile(path);
    }
    std::string text;
    for (const auto& file : files) text += file.first + ": " + file.second + "\n";
    return text;
}

class Killed : public testing::Test {
protected:
    // Objects are put on top of a list of so many, and taken off again.
    Killing listOf(int size, bool taking) {
        Lines list;
        for (int i = 0; i < size; ++i) list.push_back(object(100000 + i));
        Killing killing;
        killing.name = taking ? "ExtractVekObject" : "AddVekObject";
        killing.file = Tree::objectList();
        killing.prepare = [list] { writeFile(Tree::objectList(), textOf(list)); };
        killing.call = [this](int n) {
            if (n % 2 == 0) m_library.call("AddVekObject", object(n));
            if (n % 2 == 1) m_library.call("ExtractVekObject");
        };
        killing.states = [list](int n) {
            const std::string without = textOf(list), with = object(n - n % 2) + "\n" + without;
            return n % 2 == 0 ? States{without, with} : States{with, without};
        };
        killing.look = [list](int n, const std::string& bytes) {
            const Lines lines = linesIn(bytes);
            Lines with = list;
            with.insert(with.begin(), object(n - n % 2));
            const bool isWith = lines == with;
            if (!isWith && lines != list) return Found::Half;
            return isWith == (n % 2 == 0) ? Found::After : Found::Before;
        };
        killing.mayBeHalf = [list](int n) { return isCutAtOnePlace(list, object(n - n % 2)); };
        killing.hasArrived = [taking](int n) {
            const std::string taken = Tree::hub("Vek_ObjectPath.txt");
            return !taking || (fileIsThere(taken) && linesOf(taken) == Lines{object(n - 1)});
        };
        killing.counts = [taking](int n) { return (n % 2 == 1) == taking; };
        return killing;
    }

    // One of several preferences gets values of different lengths in turn.
    Killing preference() {
        const Lines others = {"FIRST = 1", "SECOND = a text", "THIRD = x"};
        const std::string path = Tree::hub("prefs.txt");
        const auto value = [](int n) { return n % 3 == 0 ? 7 : n % 3 == 1 ? 1234567 : 12345; };
        Killing killing;
        killing.name = "WriteConfigPrefAsInt";
        killing.file = path;
        killing.prepare = [=] { writeFile(path, "KEY = 12345\n" + textOf(others)); };
        killing.call = [=](int n) {
            int number = value(n);
            m_library.preference("WriteConfigPrefAsInt", path, "key", &number);
        };
        const auto with = [=](int number) {
            Lines expected = others;
            expected.insert(expected.begin(), "KEY = " + std::to_string(number));
            return expected;
        };
        killing.states = [=](int n) {
            return States{textOf(with(value(n + 2))), textOf(with(value(n)))};
        };
        killing.look = [=](int n, const std::string& bytes) {
            const Lines lines = linesIn(bytes);
            if (lines == with(value(n))) return Found::After;
            return lines == with(value(n + 2)) ? Found::Before : Found::Half;
        };
        return killing;
    }

    // A file that each call changes from one state to the other and back.
    Killing turning(const char* name, const std::string& path, const std::string& first,
                    std::function<void(int)> call) {
        writeFile(path, first);
        call(0);
        const std::string second = readFile(path);
        EXPECT_NE(second, first);
        call(1);
        EXPECT_EQ(readFile(path), first) << "and back";
        Killing killing;
        killing.name = name;
        killing.file = path;
        killing.prepare = [=] { writeFile(path, first); };
        killing.call = call;
        killing.states = [=](int n) {
            return n % 2 == 0 ? States{first, second} : States{second, first};
        };
        killing.look = [=](int n, const std::string& now) {
            if (now == (n % 2 == 0 ? second : first)) return Found::After;
            if (now == (n % 2 == 0 ? first : second)) return Found::Before;
            // What a scene begins with is no magic.
            const bool isMesh = first.substr(0, 4) == "Vekb";
            return isMesh && now.substr(0, 4) == std::string(4, '\0') ? Found::Refused
                                                                      : Found::Half;
        };
        return killing;
    }

    Killing mesh() {
        m_tree.addApp("App", "EXTENSION .vek\nEXPORT_FLIP_X 1\n");
        m_library.call("InitializeVek", "/");
        m_library.call("VekSetExportScale", 1.0);
        m_library.call("GetVekAppIOPrefs", 0.0);
        std::vector<std::int32_t> faces;
        std::vector<float> vertices;
        for (int i = 0; i < 40000; ++i) faces.push_back(i % 10000);
        for (int i = 0; i < 30000; ++i) vertices.push_back(static_cast<float>(i + 1));
        const std::string path = Tree::project("mesh.vek");
        const std::string bytes =
            ExchangeFile().vertices(vertices).faces(20001, faces).end().bytes();
        return turning("VekPostExport of a mesh", path, bytes,
                       [=](int) { m_library.call("VekPostExport", path); });
    }

    // A strip of squares, which an application that mirrors has rewound at every call.
    Killing scene() {
        m_tree.addApp("App", "EXTENSION .ma\nEXPORT_FLIP_X 1\n");
        m_library.call("InitializeVek", "/");
        m_library.call("GetVekAppIOPrefs", 0.0);
        const std::string path = Tree::project("strip.ma");
        const auto call = [=](int) { m_library.call("VekPostExport", path); };
        writeFile(path, strip(4000));
        call(0);
        call(1);
        Killing killing = turning("VekPostExport of a scene", path, readFile(path), call);
        // It is written a page at a time, and has no magic to blank.
        killing.mayBeHalf = [=](int) { return !readFile(path).empty(); };
        return killing;
    }

    static std::string strip(int squares) {
        std::ostringstream points, edges, faces;
        for (int i = 0; i <= squares; ++i) {
            points << " " << i << " 0 0 " << i << " 1 0";
            edges << " " << 2 * i << " " << 2 * i + 1 << " 0";
        }
        for (int side = 0; side <= 1; ++side) {
            for (int i = 0; i < squares; ++i) {
                edges << " " << 2 * i + side << " " << 2 * i + 2 + side << " 0";
            }
        }
        for (int i = 0; i < squares; ++i) {
            const int bottom = squares + 1 + i;
            faces << " f 4 " << bottom << " " << i + 1 << " " << ~(bottom + squares) << " " << ~i;
        }
        const auto statement = [](const char* name, int count, const std::string& values,
                                  const char* type = "") {
            const std::string number = std::to_string(count);
            return "\tsetAttr -s " + number + " \"." + name + "\";\n\tsetAttr \"." + name +
                   "[0:" + std::to_string(count - 1) + "]\"" + type + values + ";\n";
        };
        return "createNode mesh;\n" + statement("vt", 2 * squares + 2, points.str()) +
               statement("ed", 3 * squares + 1, edges.str()) +
               statement("fc", squares, faces.str(), " -type \"polyFaces\"") +
               "// End of strip.ma\n";
    }

    static KillCounts run(const Killing& killing, const char* situation = "") {
        const int kills = killsAskedFor();
        const std::string others = Tree::hub("Vek_ProjectPath.txt");
        writeFile(others, "/a/project\n");
        // Taking an object writes this one too, behind the list.
        const std::string taken = Tree::hub("Vek_ObjectPath.txt");
        std::filesystem::remove(taken);
        const std::string rest = restOfTheTree(killing.file);
        const KillCounts counts = killInside(killing, kills);
        std::filesystem::remove(taken);
        EXPECT_EQ(restOfTheTree(killing.file), rest) << "another file has changed";
        EXPECT_EQ(counts.lost, 0) << "more is lost than may be";
        EXPECT_EQ(counts.readForeign, 0) << "a reader saw what neither state has at its place";
        std::printf("%s%s\n", counts.text(killing.name).c_str(), situation);
        EXPECT_EQ(counts.kills, kills);
        EXPECT_GT(counts.readings, 0) << "nothing was read meanwhile";
        return counts;
    }

    Tree m_tree;
    LoadedLibrary m_library;
};

}  // namespace

TEST(HalfReading, HasEachByteAtItsPlaceInOneOfBothStates) {
    const States states = {"old one\n", "new\n"};
    EXPECT_TRUE(isOfBoth("old one\n", states));
    EXPECT_TRUE(isOfBoth("ned one\n", states));
    EXPECT_TRUE(isOfBoth("new\n\n\n\n\n", states));
    EXPECT_TRUE(isOfBoth("", states));
    EXPECT_FALSE(isOfBoth("new\none\n\n", states)) << "longer than both";
    EXPECT_FALSE(isOfBoth("ne_ one\n", states));
    EXPECT_FALSE(isOfBoth("lod one\n", states)) << "at other places";
}

TEST_F(Killed, WhileItAddsAnObjectLeavesAWholeList) {
    EXPECT_EQ(run(listOf(20, false)).half, 0);
}

TEST_F(Killed, WhileItTakesAnObjectLeavesAWholeList) {
    EXPECT_EQ(run(listOf(20, true)).half, 0);
}

// The system writes longer files a page at a time, and may end between two.
TEST_F(Killed, WhileItChangesALongListCutsItAtOnePlaceAtMost) {
    run(listOf(2000, false), " a list of 110 KB");
    run(listOf(2000, true), " a list of 110 KB");
}

TEST_F(Killed, WhileItWritesAPreferenceLeavesAllOfThem) {
    EXPECT_EQ(run(preference()).half, 0);
}

TEST_F(Killed, WhileItTurnsAMeshLeavesOneThatIsWholeOrRefused) {
    EXPECT_EQ(run(mesh()).half, 0);
}

TEST_F(Killed, WhileItRewritesASceneLosesAtMostTheScene) {
    run(scene());
}
