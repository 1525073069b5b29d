#include "host/dorvia4_helper.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "host/host_record.h"
#include "tools/vek/host_windows.h"

namespace {

class HostTree : public testing::Test {
protected:
    // Root with the children Tool (with an unnamed one that holds B, and Import), Menu and Canvas,
    // and behind it a second top-level window.
    HostTree() {
        root = &windows.add(nullptr, "Root");
        tool = &windows.add(root, "Tool");
        box = &windows.add(tool, "");
        b = &windows.add(box, "B");
        import = &windows.add(tool, "Import");
        menu = &windows.add(root, "Menu");
        one = &windows.addEntry(*menu, "One");
        two = &windows.addEntry(*menu, "Two");
        canvas = &windows.add(root, "Canvas");
        other = &windows.add(nullptr, "Other");
        windows.setView(*canvas);
        EXPECT_TRUE(Dorvia4Helper::init(windows.data()));
    }
    ~HostTree() override {
        DFunctionsHelper::setFuncTable(nullptr);
        Dorvia4Helper::s_doc = nullptr;
        Dorvia4Helper::s_rootWindow = nullptr;
    }

    static HostWindow* find(HostWindow* from, const char* path) {
        return HostWindow::of(Dorvia4Helper::getWindowFromPath(from ? from->win() : nullptr, path));
    }
    static bool move(HostWindow* w, HostWindow* parent, int index) {
        return Dorvia4Helper::moveWindow(w ? w->win() : nullptr, parent ? parent->win() : nullptr,
                                         index);
    }
    static std::string childrenOf(const HostWindow* parent) {
        std::string names;
        for (const HostWindow* w = parent->child; w; w = w->next) names += w->name + " ";
        return names;
    }

    HostWindows windows;
    HostWindow *root, *tool, *box, *b, *import, *menu, *one, *two, *canvas, *other;
};

using Init = HostTree;
using GetRootWindow = HostTree;
using GetWindowName = HostTree;
using GetWindowChildIndex = HostTree;
using GetWindowFromPath = HostTree;
using DisconnectWindow = HostTree;
using MoveWindow = HostTree;

}  // namespace

TEST_F(Init, FindsTheRootAboveTheActiveView) {
    EXPECT_EQ(Dorvia4Helper::s_rootWindow, root->win());
    EXPECT_EQ(reinterpret_cast<char*>(Dorvia4Helper::s_doc), windows.data()[2]);
    windows.setView(*other);
    EXPECT_TRUE(Dorvia4Helper::init(windows.data()));
    EXPECT_EQ(Dorvia4Helper::s_rootWindow, root->win()) << "by way of the window before";
}

TEST_F(Init, IsFalseWithoutADocumentAViewOrABlock) {
    char* data[9] = {};
    std::memcpy(data, windows.data(), sizeof data);
    data[2] = nullptr;
    EXPECT_FALSE(Dorvia4Helper::init(data));
    EXPECT_EQ(Dorvia4Helper::s_rootWindow, nullptr);
    EXPECT_NE(AGraphixHelper::s_table, nullptr) << "the tables are installed all the same";
    EXPECT_FALSE(Dorvia4Helper::init(nullptr));
    EXPECT_EQ(Dorvia4Helper::s_doc, nullptr);
    EXPECT_EQ(AGraphixHelper::s_table, nullptr);
    data[2] = windows.data()[2];
    data[8] = nullptr;
    EXPECT_FALSE(Dorvia4Helper::init(data)) << "no tables";
    HostWindows empty;
    EXPECT_FALSE(Dorvia4Helper::init(empty.data()));
}

TEST_F(GetRootWindow, ClimbsToTheFirstTopLevelWindow) {
    EXPECT_EQ(Dorvia4Helper::getRootWindow(b->win()), root->win());
    EXPECT_EQ(Dorvia4Helper::getRootWindow(other->win()), root->win());
    EXPECT_EQ(Dorvia4Helper::getRootWindow(root->win()), root->win());
    EXPECT_EQ(Dorvia4Helper::getRootWindow(nullptr), nullptr);
}

TEST_F(GetRootWindow, StopsAtAWindowThatIsItsOwnParent) {
    tool->parent = tool;
    EXPECT_EQ(Dorvia4Helper::getRootWindow(b->win()), tool->win());
}

TEST_F(GetRootWindow, IsNullWhereTheWayUpDoesNotEnd) {
    root->parent = b;
    EXPECT_EQ(Dorvia4Helper::getRootWindow(canvas->win()), nullptr);
    root->parent = nullptr;
    root->previous = other;
    EXPECT_EQ(Dorvia4Helper::getRootWindow(canvas->win()), nullptr);
}

TEST(GetRootWindowWithoutTables, IsTheWindowItself) {
    HostWindows windows;
    HostWindow& window = windows.add(&windows.add(nullptr, "a"), "b");
    DFunctionsHelper::setFuncTable(nullptr);
    EXPECT_EQ(Dorvia4Helper::getRootWindow(window.win()), window.win());
    EXPECT_EQ(Dorvia4Helper::getParentWindow(window.win()), nullptr);
    EXPECT_FALSE(Dorvia4Helper::disconnectWindow(window.win()));
}

TEST_F(GetWindowName, IsTheLabelOrElseTheText) {
    const auto name = [](HostWindow* w) {
        const char* const characters = Dorvia4Helper::getWindowName(w->win());
        return characters ? std::string(characters, w->shownName().size()) : "(null)";
    };
    EXPECT_EQ(name(tool), "Tool");
    EXPECT_EQ(name(box), "(null)");
    box->label = "Label";
    EXPECT_EQ(name(box), "Label");
    tool->label = "Another";
    EXPECT_EQ(name(tool), "Another") << "the label goes before the text";
    menu->label = "";
    EXPECT_EQ(name(menu), "Menu") << "a command state without a label";
    EXPECT_EQ(Dorvia4Helper::getWindowName(nullptr), nullptr);
    EXPECT_EQ(Dorvia4Helper::getParentWindow(nullptr), nullptr);
}

TEST_F(GetWindowChildIndex, CountsFromTheFirstChild) {
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(tool->win()), 0);
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(menu->win()), 1);
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(canvas->win()), 2);
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(root->win()), -1) << "no parent";
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(nullptr), -1);
    one->parent = root;
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(one->win()), -1) << "not in the chain";
    canvas->next = tool;
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(one->win()), -1) << "nor in one without an end";
}

TEST_F(GetWindowFromPath, FindsTheStartForAnEmptyPath) {
    EXPECT_EQ(find(tool, ""), tool);
    EXPECT_EQ(find(nullptr, ""), nullptr);
    EXPECT_EQ(find(nullptr, "Tool"), nullptr);
}

TEST_F(GetWindowFromPath, GoesDownAComponentAtATime) {
    EXPECT_EQ(find(root, "Tool"), tool);
    EXPECT_EQ(find(root, "Tool:Import"), import);
    EXPECT_EQ(find(root, "Import"), nullptr) << "not two levels at once";
    EXPECT_EQ(find(root, "Tool:Canvas"), nullptr);
    EXPECT_EQ(find(root, "Tool:Import:x"), nullptr) << "deeper than the tree";
    EXPECT_EQ(find(root, "Tool:"), tool) << "an empty rest is the window itself";
}

TEST_F(GetWindowFromPath, LooksThroughWindowsWithoutAName) {
    EXPECT_EQ(find(root, "Tool:B"), b);
    box->label = std::string("\0x", 2);
    EXPECT_EQ(find(root, "Tool:B"), b) << "a name that begins with a NUL is none";
    EXPECT_EQ(find(root, "Tool::B"), nullptr) << "no component matches an unnamed window";
    EXPECT_EQ(find(root, ":Tool"), nullptr);
    box->label = "Box";
    EXPECT_EQ(find(root, "Tool:B"), nullptr);
    EXPECT_EQ(find(root, "Tool:Box:B"), b);
}

TEST_F(GetWindowFromPath, IgnoresTheLetterCase) {
    EXPECT_EQ(find(root, "tOOL:iMPORT"), import);
    tool->name = "T\xC3\xB6ol";
    EXPECT_EQ(find(root, "t\xC3\xB6OL:b"), b);
    EXPECT_EQ(find(root, "t\xC3\x96OL:b"), nullptr) << "of ASCII letters alone";
}

TEST_F(GetWindowFromPath, ComparesWholeNames) {
    EXPECT_EQ(find(root, "Too"), nullptr);
    EXPECT_EQ(find(root, "Tools"), nullptr);
    tool->name = std::string("Tool\0behind", 11);
    EXPECT_EQ(find(root, "Tool:B"), b) << "a name ends at a NUL";
}

TEST_F(GetWindowFromPath, TakesTheFirstMatchInTheHostsOrder) {
    HostWindow& second = windows.add(root, "Tool");
    HostWindow& last = windows.add(&second, "Last");
    EXPECT_EQ(find(root, "Tool"), tool);
    EXPECT_EQ(find(root, "Tool:Last"), &last) << "the search goes on where the first leads nowhere";
    HostWindow& deep = windows.add(box, "Import");
    EXPECT_EQ(find(root, "Tool:Import"), &deep) << "depth first";
}

TEST_F(GetWindowFromPath, LooksAmongAPullDownMenusEntriesInPlaceOfItsChildren) {
    EXPECT_EQ(find(root, "Menu:Two"), two);
    windows.add(menu, "Child");
    EXPECT_EQ(find(root, "Menu:Child"), nullptr);
    two->parent = tool;
    EXPECT_EQ(find(root, "Menu:Two"), nullptr) << "an entry that has a parent is found there";
    EXPECT_EQ(find(root, "Menu:One"), one);
}

TEST_F(GetWindowFromPath, EndsInATreeThatLoops) {
    canvas->next = tool;
    EXPECT_EQ(find(root, "Nothing"), nullptr) << "a chain that closes on itself";
    canvas->next = nullptr;
    b->name = "";
    b->child = root;
    tool->name = root->name = "";
    EXPECT_EQ(find(root, "Nothing"), nullptr) << "a window below itself";
    one->name = "";
    one->isMenu = true;
    one->entries = {one, one};
    EXPECT_EQ(find(menu, "Nothing"), nullptr) << "a menu that is its own entry";
}

TEST_F(GetWindowFromPath, LooksThroughAMillionWindowsDeepAndWide) {
    for (const bool deep : {true, false}) {
        HostWindows tree;
        HostWindow* const top = &tree.add(nullptr, "Top");
        HostWindow* last = top;
        for (int i = 1; i < 1000000; ++i) last = &tree.add(deep ? last : top, "");
        ASSERT_TRUE(Dorvia4Helper::init(tree.data()));
        last->name = "Last";
        EXPECT_EQ(find(top, "Last"), last);
        EXPECT_EQ(find(top, "Nothing"), nullptr);
        // It was the whole tree that was looked at, and not the limit that ended it.
        HostWindow& behind = tree.add(top, "Behind");
        EXPECT_EQ(find(top, "Behind"), &behind);
        EXPECT_EQ(Dorvia4Helper::getRootWindow(last->win()), top->win());
    }
}

TEST_F(GetWindowFromPath, LooksThroughEntriesAndMenusWithoutAName) {
    HostWindow& nameless = windows.addEntry(*menu, "");
    HostWindow& below = windows.add(&nameless, "Below");
    EXPECT_EQ(find(root, "Menu:Below"), &below);
    menu->name = "";
    EXPECT_EQ(find(root, "Two"), two);
}

// A host that leaves one of its conversions out.
TEST_F(GetWindowFromPath, FindsNothingWhereAConversionIsMissing) {
    AWinFuncTable win = *AWinHelper::s_table;
    win.convertToGraphix = nullptr;
    AWinHelper::setFuncTable(&win);
    EXPECT_EQ(find(root, "Tool"), nullptr);
    AWinPulldownFuncTable pulldown = *AWinPulldownHelper::s_table;
    pulldown.convertFromWin = nullptr;
    AWinPulldownHelper::setFuncTable(&pulldown);
    EXPECT_EQ(find(menu, "Two"), nullptr);
}

TEST_F(DisconnectWindow, ClosesTheGap) {
    EXPECT_TRUE(Dorvia4Helper::disconnectWindow(menu->win()));
    EXPECT_EQ(childrenOf(root), "Tool Canvas ");
    EXPECT_EQ(canvas->previous, tool);
    EXPECT_EQ(menu->parent, nullptr);
    EXPECT_EQ(menu->previous, nullptr);
    EXPECT_EQ(menu->next, nullptr);
    EXPECT_TRUE(Dorvia4Helper::disconnectWindow(tool->win()));
    EXPECT_EQ(root->child, canvas) << "the first child was it";
    EXPECT_TRUE(Dorvia4Helper::disconnectWindow(canvas->win()));
    EXPECT_EQ(root->child, nullptr);
    EXPECT_TRUE(Dorvia4Helper::disconnectWindow(other->win())) << "top-level, with a neighbour";
    EXPECT_EQ(root->next, nullptr);
}

TEST_F(DisconnectWindow, RefusesALoneWindowAndNull) {
    EXPECT_FALSE(Dorvia4Helper::disconnectWindow(one->win()));
    EXPECT_FALSE(Dorvia4Helper::disconnectWindow(nullptr));
}

TEST_F(MoveWindow, MakesTheItemTheOnlyChildOfAnEmptyParent) {
    for (const int index : {-1, 0, 1, 99}) {
        EXPECT_TRUE(move(import, canvas, index));
        EXPECT_EQ(childrenOf(canvas), "Import ");
        EXPECT_EQ(import->parent, canvas);
        EXPECT_EQ(import->previous, nullptr);
        EXPECT_EQ(import->next, nullptr);
        EXPECT_EQ(box->next, nullptr);
        EXPECT_TRUE(move(import, tool, 5));
    }
}

TEST_F(MoveWindow, PutsTheItemInFrontForIndexZeroAndBelow) {
    EXPECT_TRUE(move(canvas, root, 0));
    EXPECT_EQ(childrenOf(root), "Canvas Tool Menu ");
    EXPECT_EQ(tool->previous, canvas);
    EXPECT_EQ(canvas->previous, nullptr);
    EXPECT_FALSE(move(canvas, root, 0)) << "it is there already";
    EXPECT_FALSE(move(canvas, root, -7));
    EXPECT_TRUE(move(menu, root, -7));
    EXPECT_EQ(childrenOf(root), "Menu Canvas Tool ");
}

TEST_F(MoveWindow, PutsTheItemBehindTheChildBeforeTheIndex) {
    EXPECT_TRUE(move(import, root, 2));
    EXPECT_EQ(childrenOf(root), "Tool Menu Import Canvas ");
    EXPECT_EQ(import->previous, menu);
    EXPECT_EQ(canvas->previous, import);
    EXPECT_TRUE(move(b, root, 99)) << "behind the last";
    EXPECT_EQ(childrenOf(root), "Tool Menu Import Canvas B ");
    EXPECT_TRUE(move(b, root, 1));
    EXPECT_EQ(childrenOf(root), "Tool B Menu Import Canvas ");
}

TEST_F(MoveWindow, CountsTheItemItselfWhereItStands) {
    EXPECT_TRUE(move(tool, root, 2));
    EXPECT_EQ(childrenOf(root), "Menu Tool Canvas ");
    EXPECT_TRUE(move(menu, root, 3));
    EXPECT_EQ(childrenOf(root), "Tool Canvas Menu ");
}

// Required(R90)
TEST_F(MoveWindow, RefusesTheFirstChildAtIndexOne) {
    EXPECT_FALSE(move(tool, root, 1));
    EXPECT_EQ(childrenOf(root), "Tool Menu Canvas ");
    EXPECT_TRUE(move(tool, root, 2)) << "the other side";
}

TEST_F(MoveWindow, RefusesAnItemThatIsThereAlready) {
    EXPECT_FALSE(move(menu, root, 1)) << "behind the first child";
    EXPECT_FALSE(move(menu, root, 2)) << "behind itself";
    EXPECT_FALSE(move(canvas, root, 99)) << "behind the last child, which it is";
    EXPECT_EQ(childrenOf(root), "Tool Menu Canvas ");
    EXPECT_FALSE(move(nullptr, root, 0));
    EXPECT_FALSE(move(tool, nullptr, 0));
}

TEST_F(MoveWindow, RefusesToPutAnItemIntoItself) {
    EXPECT_FALSE(move(tool, tool, 0));
    EXPECT_FALSE(move(tool, b, 0));
    EXPECT_FALSE(move(root, canvas, 0));
    EXPECT_EQ(childrenOf(root), "Tool Menu Canvas ");
    EXPECT_EQ(childrenOf(tool), " Import ");
}

TEST_F(MoveWindow, RefusesToPutAMenuBelowItsOwnEntry) {
    HostWindow& below = windows.add(two, "x");
    EXPECT_FALSE(move(menu, two, 0));
    EXPECT_FALSE(move(menu, &below, 0));
    EXPECT_FALSE(move(root, two, 0));
    EXPECT_TRUE(move(tool, two, 0)) << "another one can go there";
}

TEST_F(MoveWindow, MovesAMenuBelowAnEntryThatStandsElsewhere) {
    EXPECT_TRUE(move(two, tool, 1));
    EXPECT_TRUE(move(menu, two, 0));
    EXPECT_EQ(menu->parent, two);
}

TEST_F(MoveWindow, MovesMenusWhoseEntriesAreTheirChildrenToo) {
    HostWindow* last = menu;
    for (int i = 0; i < 40; ++i) {
        HostWindow& below = windows.add(last, "m");
        last->isMenu = true;
        last->entries.push_back(&below);
        last = &below;
    }
    EXPECT_TRUE(move(menu, canvas, 0)) << "deep";
    HostWindow& flat = windows.add(root, "flat");
    flat.isMenu = true;
    for (int i = 0; i < 999000; ++i) flat.entries.push_back(&windows.add(&flat, ""));
    EXPECT_TRUE(move(&flat, tool, 0)) << "wide";
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(flat.entries.back()->win()), 998999);
    EXPECT_TRUE(move(b, &flat, 998000));
    EXPECT_EQ(Dorvia4Helper::getWindowChildIndex(b->win()), 998000);
}

TEST_F(MoveWindow, MovesWithinARootThatIsItsOwnParent) {
    root->parent = root;
    EXPECT_TRUE(move(b, root, 1));
    EXPECT_EQ(childrenOf(root), "Tool B Menu Canvas ");
}

TEST_F(MoveWindow, RefusesAChainThatDoesNotEnd) {
    canvas->next = tool;
    EXPECT_FALSE(move(b, root, 2147483647));
    EXPECT_EQ(b->parent, box);
    canvas->next = nullptr;
    b->child = tool;
    EXPECT_FALSE(move(tool, canvas, 0)) << "nor one with itself below it";
}

TEST(HostRecord, TakesACountOfZeroForNoText) {
    char bytes[32] = "....................\0\0\0\0text";
    EXPECT_EQ(hostText(reinterpret_cast<const AStr*>(bytes)).characters, nullptr);
    const std::uint32_t wide = 0x10000;
    std::memcpy(bytes + 20, &wide, 4);
    EXPECT_EQ(hostText(reinterpret_cast<const AStr*>(bytes)).count, 0x10000u) << "32 bits of it";
    char state[104] = {};
    std::memset(state, 0x55, sizeof state);
    const std::uint16_t kind = 1007;
    std::memcpy(state + 20, &kind, 2);
    EXPECT_EQ(hostKind(reinterpret_cast<const ACmdState*>(state)), 1007) << "16 bits of it";
    // A label that is there and empty gives way to the text.
    HostWindows windows;
    HostWindow& window = windows.add(nullptr, "Text");
    ASSERT_TRUE(Dorvia4Helper::init(windows.data()));
    static char empty[32] = {};
    static char labelled[104] = {};
    const char* const label = empty;
    std::memcpy(labelled + 96, &label, sizeof label);
    AWinFuncTable table = *AWinHelper::s_table;
    table.getCmdState = [](AWin*) { return reinterpret_cast<ACmdState*>(labelled); };
    AWinHelper::setFuncTable(&table);
    EXPECT_EQ(std::string(Dorvia4Helper::getWindowName(window.win()), 4), "Text");
    DFunctionsHelper::setFuncTable(nullptr);
}

TEST(HostRecord, ReadsFieldsAtAnyAddressAndZerosOfNull) {
    char bytes[64] = {};
    for (int shift = 0; shift < 8; ++shift) {
        std::memset(bytes, 0, sizeof bytes);
        const std::uint32_t count = 3;
        std::memcpy(bytes + shift + 20, &count, 4);
        std::memcpy(bytes + shift + 24, "abc", 3);
        const HostText text = hostText(reinterpret_cast<const AStr*>(bytes + shift));
        EXPECT_EQ(text.count, 3u);
        EXPECT_EQ(std::string(text.characters, 3), "abc");
    }
    EXPECT_EQ(hostText(nullptr).characters, nullptr);
    EXPECT_EQ(hostKind(nullptr), 0);
    EXPECT_EQ(hostLabel(nullptr).characters, nullptr);
    const std::uint16_t kind = 1007;
    std::memcpy(bytes + 21, &kind, 2);
    EXPECT_EQ(hostKind(reinterpret_cast<const ACmdState*>(bytes + 1)), 1007);
}

// Only so much of a name is read as can be compared, whatever its count says.
TEST(HostRecord, NamesEndAtTheirNulWhateverTheirCount) {
    HostWindows windows;
    HostWindow& root = windows.add(nullptr, "");
    static std::string bytes(24, '\0');
    const std::uint32_t huge = 0xFFFFFFFF;
    std::memcpy(&bytes[20], &huge, 4);
    bytes += "Tool";
    windows.add(&root, "x");
    ASSERT_TRUE(Dorvia4Helper::init(windows.data()));
    AWinFuncTable table = *AWinHelper::s_table;
    table.getText = [](AWin*) { return reinterpret_cast<AStr*>(bytes.data()); };
    AWinHelper::setFuncTable(&table);
    EXPECT_NE(Dorvia4Helper::getWindowFromPath(root.win(), "tool"), nullptr);
    EXPECT_EQ(Dorvia4Helper::getWindowFromPath(root.win(), "tools"), nullptr);
    DFunctionsHelper::setFuncTable(nullptr);
}
