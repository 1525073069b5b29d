#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

class Objects : public testing::Test {
protected:
    void list(const std::string& bytes) { writeFile(Tree::objectList(), bytes); }
    std::string list() const { return readFile(Tree::objectList()); }
    std::string objectPath() const { return readFile(Tree::hub("Vek_ObjectPath.txt")); }
    bool hasObjectPath() const { return fileIsThere(Tree::hub("Vek_ObjectPath.txt")); }

    std::vector<std::string> readList() {
        const int count = static_cast<int>(m_library.call("ReadVekObjectList"));
        std::vector<std::string> objects;
        for (int i = 0; i < count; ++i) objects.push_back(at(i));
        return objects;
    }

    std::string at(double index) {
        OutText out;
        EXPECT_EQ(m_library.call("GetVekObjectPath", index, out.block()), 0.0f);
        return out.untouched() ? "untouched" : out.text();
    }

    Tree m_tree;
    LoadedLibrary m_library;
};

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(Objects, AreAddedOnTop) {
    list("B\n");
    EXPECT_EQ(m_library.call("AddVekObject", "A"), 1.0f);
    EXPECT_EQ(list(), "A\nB\n");
}

TEST_F(Objects, AreNotAddedOnTopOfAMissingList) {
    EXPECT_EQ(m_library.call("AddVekObject", "A"), 0.0f);
    EXPECT_FALSE(fileIsThere(Tree::objectList()));
}

TEST_F(Objects, AreAddedOnTopOfAnEmptyList) {
    list("");
    EXPECT_EQ(m_library.call("AddVekObject", "A"), 1.0f);
    EXPECT_EQ(list(), "A\n");
}

TEST_F(Objects, KeepTheOldContentByteForByteWhenOneIsAdded) {
    const std::string old("x\r\n\0y\n\xFFz", 9);
    list(old);
    EXPECT_EQ(m_library.call("AddVekObject", ""), 1.0f);
    EXPECT_EQ(list(), "\n" + old);
}

TEST_F(Objects, AreAppendedAndTheListCreated) {
    EXPECT_EQ(m_library.call("AddVekObjectToList", "A"), 0.0f);
    EXPECT_EQ(list(), "A\n");
    EXPECT_EQ(m_library.call("AddVekObjectToList", "B"), 0.0f);
    EXPECT_EQ(list(), "A\nB\n");
}

TEST_F(Objects, ReportNothingWhenTheListCannotBeAppendedTo) {
    makeFolders(Tree::objectList());
    EXPECT_EQ(m_library.call("AddVekObjectToList", "A"), 0.0f);
    EXPECT_EQ(m_library.call("AddVekObject", "A"), 0.0f);
    EXPECT_EQ(m_library.call("ClearVekObjectList"), 0.0f);
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 0.0f);
    EXPECT_EQ(m_library.call("ExtractVekObject"), 0.0f);
}

TEST_F(Objects, AreClearedInTheFileAlone) {
    list("A\nB\n");
    EXPECT_EQ(readList(), (Texts{"A", "B"}));
    EXPECT_EQ(m_library.call("ClearVekObjectList"), 1.0f);
    EXPECT_EQ(list(), "");
    EXPECT_EQ(at(1), "B");
}

TEST_F(Objects, AreClearedIntoANewFile) {
    EXPECT_EQ(m_library.call("ClearVekObjectList"), 1.0f);
    EXPECT_EQ(list(), "");
}

TEST_F(Objects, CannotBeClearedWithoutAHub) {
    ASSERT_EQ(rmdir((Tree::root() + "/VekHub").c_str()), 0);
    EXPECT_EQ(m_library.call("ClearVekObjectList"), 0.0f);
}

TEST_F(Objects, AreReadWithoutBlankLinesAndBlanksAtTheirEnds) {
    list(" A \r\n\r\n\tB");
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 2.0f);
    EXPECT_EQ(at(0), "A");
    EXPECT_EQ(at(1), "B");
}

TEST_F(Objects, KeepBlanksInside) {
    list("a b\tc\n");
    EXPECT_EQ(readList(), Texts{"a b\tc"});
}

TEST_F(Objects, AreNoneInAMissingEmptyOrBlankList) {
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 0.0f);
    for (const char* bytes : {"", "\n", " \t\r\n \n"}) {
        list(bytes);
        EXPECT_EQ(m_library.call("ReadVekObjectList"), 0.0f);
    }
}

TEST_F(Objects, ReplaceTheFormerListWhenRead) {
    list("A\nB\nC\n");
    readList();
    list("D\n");
    EXPECT_EQ(readList(), Texts{"D"});
    EXPECT_EQ(at(1), "untouched");
    ASSERT_EQ(unlink(Tree::objectList().c_str()), 0);
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 0.0f);
    EXPECT_EQ(at(0), "untouched");
}

TEST_F(Objects, AreNotTouchedByAnIndexOutsideTheList) {
    list("A\nB\n");
    readList();
    EXPECT_EQ(at(5), "untouched");
    EXPECT_EQ(at(-1), "untouched");
    EXPECT_EQ(at(2), "untouched");
    EXPECT_EQ(m_library.call("GetVekObjectPath", 0.0), 0.0f);
}

TEST_F(Objects, AreNotReadAnewByTheirIndex) {
    list("A\n");
    readList();
    list("B\n");
    EXPECT_EQ(at(0), "A");
}

TEST_F(Objects, AreGivenBackByRelease) {
    list("A\n");
    readList();
    EXPECT_EQ(m_library.call("ReleaseVekObjectList"), 0.0f);
    EXPECT_EQ(at(0), "untouched");
    EXPECT_EQ(list(), "A\n");
}

TEST_F(Objects, ExtractTheFirstLine) {
    list("A\nB\n");
    EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
    EXPECT_EQ(objectPath(), "A");
    EXPECT_EQ(list(), "B\n");
}

TEST_F(Objects, ExtractALineWithoutABreak) {
    list("A");
    EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
    EXPECT_EQ(objectPath(), "A");
    EXPECT_EQ(list(), "");
}

TEST_F(Objects, ExtractNothingFromASingleBreak) {
    for (const char* bytes : {"\n", "\r"}) {
        list(bytes);
        EXPECT_EQ(m_library.call("ExtractVekObject"), 0.0f);
        EXPECT_EQ(list(), bytes);
        EXPECT_FALSE(hasObjectPath());
    }
}

// Required(R50)
TEST_F(Objects, ExtractPassesOverOneLeadingBreakByteAndEndsAtOne) {
    const struct {
        const char* list;
        const char* object;
        const char* rest;
    } cases[] = {
        {"\nA\nB\n", "A", "B\n"},   {"\r\nA", "\nA", ""},   {"\n\nA\nB", "\nA", "B"},
        {"A\r\nB\n", "A", "\nB\n"}, {"A\n\nB", "A", "\nB"}, {"\r\n", "\n", ""},
        {"A\n", "A", ""},           {" A \nB", " A ", "B"}, {"\n\n\nA", "\n", "A"},
    };
    for (const auto& it : cases) {
        list(it.list);
        EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f) << it.list;
        EXPECT_EQ(objectPath(), it.object) << it.list;
        EXPECT_EQ(list(), it.rest) << it.list;
    }
}

TEST_F(Objects, ExtractNothingFromAMissingOrEmptyList) {
    EXPECT_EQ(m_library.call("ExtractVekObject"), 0.0f);
    list("");
    EXPECT_EQ(m_library.call("ExtractVekObject"), 0.0f);
    EXPECT_FALSE(hasObjectPath());
}

TEST_F(Objects, ExtractReplacesTheWholeFormerObjectPath) {
    writeFile(Tree::hub("Vek_ObjectPath.txt"), "a much longer path than the new one\n");
    list("A\n");
    EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
    EXPECT_EQ(objectPath(), "A");
}

TEST_F(Objects, ExtractSucceedsThoughThePathFileCannotBeWritten) {
    makeFolders(Tree::hub("Vek_ObjectPath.txt"));
    list("A\nB\n");
    EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
    EXPECT_EQ(list(), "B\n");
}

TEST_F(Objects, ExtractLeavesTheListInMemoryAlone) {
    list("A\nB\n");
    readList();
    m_library.call("ExtractVekObject");
    m_library.call("AddVekObject", "C");
    EXPECT_EQ(at(0), "A");
    EXPECT_EQ(at(1), "B");
}

TEST_F(Objects, AreTakenInTheOrderInWhichTheyWereAppended) {
    for (const char* object : {"one", "two", "three"}) {
        m_library.call("AddVekObjectToList", object);
    }
    for (const char* object : {"one", "two", "three"}) {
        EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
        EXPECT_EQ(objectPath(), object);
    }
    EXPECT_EQ(m_library.call("ExtractVekObject"), 0.0f);
}

TEST_F(Objects, AreReadWholeFromListsLongerThanOnePiece) {
    std::string bytes;
    Texts expected;
    for (int i = 0; i < 30000; ++i) {
        expected.push_back("object " + std::to_string(i) +
                           std::string(static_cast<std::size_t>(i % 40), 'x'));
        bytes += expected.back() + (i % 3 ? "\n" : "\r\n");
    }
    // A line longer than any piece, and a last one without a break.
    expected.push_back(std::string(700000, 'l'));
    expected.push_back("last");
    list(bytes + expected[30000] + "\nlast");
    ASSERT_EQ(m_library.call("ReadVekObjectList"), 30002.0f);
    for (const int i : {0, 1, 9999, 20000, 29999, 30001}) {
        EXPECT_EQ(at(i), expected[static_cast<std::size_t>(i)]);
    }
    std::string block(800000, 'z');
    m_library.call("GetVekObjectPath", 30000.0, block.data());
    EXPECT_EQ(block.c_str(), expected[30000]);
}

TEST_F(Objects, SurviveRandomBytes) {
    std::mt19937 random(13);
    int read = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes(random() % 300, '\0');
        // Every other list holds NULs, which end the text of an object early.
        const std::size_t kinds = i % 2 ? 8 : 7;
        for (char& byte : bytes) byte = "\r\n \tA\xFFz\0"[random() % kinds];
        list(bytes);
        const Texts objects = readList();
        read += static_cast<int>(objects.size());
        for (const std::string& object : objects) {
            EXPECT_TRUE(object.empty() || (object.front() != ' ' && object.front() != '\t'));
            if (kinds == 7) {
                EXPECT_EQ(object.find_first_of("\r\n"), std::string::npos);
            }
        }
        m_library.call("ExtractVekObject");
        EXPECT_LE(list().size(), bytes.size());
    }
    EXPECT_GT(read, 2000);
}
