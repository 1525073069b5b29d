// vek tree, and the host of a macro.

#include <gtest/gtest.h>

#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

namespace {

class HostWindowsTool : public testing::Test {
protected:
    int vek(const std::string& arguments) {
        return runProgram(shellWord(VEK_BUILD_DIR "/bin/vek") + " " + arguments, m_said);
    }
    int tree(const std::string& json) {
        writeFile(m_folder / "windows.json", json);
        return vek("tree " + shellWord(m_folder / "windows.json"));
    }
    int run(const std::string& macro) {
        writeFile(m_folder / "macro.lua", macro);
        return vek("run " + shellWord(m_folder / "macro.lua"));
    }
    bool says(const std::string& text) const { return m_said.find(text) != std::string::npos; }

    TempFolder m_folder;
    std::string m_said;
};

const char kWindows[] = R"([
    {"name": "Root", "children": [
        {"name": "Tool", "children": [{"children": [{"name": "b", "label": "B"}]}, {"name": "Import"}]},
        {"name": "Menu", "entries": [{"name": "One"}, {"name": "Two"}]},
        {"name": "Canvas", "view": true}]},
    {"name": "Second"}])";

const char kTree[] =
    "Root\n"
    "├─ Tool\n"
    "│  ├─ (unnamed)\n"
    "│  │  └─ B (text: b)\n"
    "│  └─ Import\n"
    "├─ Menu (pull-down menu)\n"
    "│  ├─ One (entry)\n"
    "│  └─ Two (entry)\n"
    "└─ Canvas\n"
    "Second\n";

}  // namespace

TEST_F(HostWindowsTool, DrawsATree) {
    EXPECT_EQ(tree(kWindows), 0);
    EXPECT_EQ(m_said, kTree);
}

TEST_F(HostWindowsTool, RejectsWhatDescribesNoWindows) {
    EXPECT_EQ(tree("{"), 1);
    EXPECT_EQ(tree("[1]"), 1);
    EXPECT_TRUE(says("a window is described by an object"));
    EXPECT_EQ(tree(R"({"nmae": "x"})"), 1);
    EXPECT_TRUE(says("a window has no \"nmae\""));
    EXPECT_EQ(tree(R"({"name": 1})"), 1);
    EXPECT_EQ(vek("tree " + shellWord(m_folder / "missing")), 2);
}

TEST_F(HostWindowsTool, LetsAMacroBuildAndMoveWindows) {
    ASSERT_EQ(run(R"(
        host.window{ name = "Root", children = {
            { name = "Menu", children = { { name = "A" }, { name = "B" } } },
            { name = "Bridge", view = true, children = { { label = "Vek" } } } } }
        print(host.tree())
        assert(SetItemPos("Bridge:Vek", 1, "Menu:A") == 0)
        assert(SetItemPos("Bridge:Vek", 1, "Menu:A") == -1)
        print(host.tree()))"),
              0)
        << m_said;
    EXPECT_TRUE(says("Root\n├─ Menu\n│  ├─ A\n│  └─ B\n└─ Bridge\n   └─ Vek\n")) << m_said;
    EXPECT_TRUE(says("Root\n├─ Menu\n│  ├─ A\n│  ├─ Vek\n│  └─ B\n└─ Bridge\n")) << m_said;
}

TEST_F(HostWindowsTool, DrawsAnEntryWhereItWasPlaced) {
    ASSERT_EQ(run(R"(
        host.window{ name = "Root", children = {
            { name = "Menu", entries = { { name = "E", children = { { name = "x" } } } } },
            { name = "Bar", children = { { name = "A" } } } } }
        assert(SetItemPos("Menu:E", 1, "Bar:A") == 0)
        print(host.tree()))"),
              0)
        << m_said;
    EXPECT_EQ(m_said,
              "Root\n├─ Menu (pull-down menu)\n│  └─ E (entry, placed elsewhere)\n"
              "└─ Bar\n   ├─ A\n   └─ E\n      └─ x\n\n");
}

TEST_F(HostWindowsTool, TakesEmptyLists) {
    EXPECT_EQ(run("host.window{ name = 'A', children = {}, entries = {} } print(host.tree())"), 0);
    EXPECT_EQ(m_said, "A (pull-down menu)\n\n");
    EXPECT_EQ(tree(R"({"name": "A", "children": [], "entries": []})"), 0);
    EXPECT_EQ(m_said, "A (pull-down menu)\n");
}

TEST_F(HostWindowsTool, HasNoWindowsUntilAMacroMakesThem) {
    EXPECT_EQ(run("assert(SetItemPos('a', 0, 'b') == -1) assert(host.tree() == '')"), 0) << m_said;
}

TEST_F(HostWindowsTool, TellsAMacroWhatIsWrongWithADescription) {
    EXPECT_EQ(run("host.window{ name = 1.5 }"), 1);
    EXPECT_EQ(run("host.window{ colour = 'red' }"), 1);
    EXPECT_TRUE(says("a window has no \"colour\""));
    EXPECT_EQ(run("local t = {} t.children = { t } host.window(t)"), 1);
    EXPECT_TRUE(says("nested too deep"));
    EXPECT_EQ(run("host.window(print)"), 1);
    EXPECT_EQ(run("host.window{ view = 'yes' }"), 1);
    EXPECT_TRUE(says("\"view\" of a window is true or false"));
    EXPECT_EQ(run("host.window{ name = 'A', children = { {}, label = 'lost' } }"), 1);
    EXPECT_TRUE(says("a list of windows with fields beside them"));
    EXPECT_EQ(run("pcall(host.window, { name = 'A', children = { { colour = 'x' } } })"
                  "assert(host.tree() == '')"),
              0)
        << "nothing is added of what is wrong in part";
}
