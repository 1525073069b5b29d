#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "tests/support/host.h"
#include "tools/vek/host_windows.h"

namespace {

class SetItemPosTest : public testing::Test {
protected:
    SetItemPosTest() {
        root = &windows.add(nullptr, "Root");
        menu = &windows.add(root, "Menu");
        for (const char* name : {"A", "B", "C"}) windows.add(menu, name);
        HostWindow& bridge = windows.add(root, "Bridge");
        item = &windows.add(&bridge, "Item");
    }

    float place(const char* path, double offset, const char* anchor, char** hostData) {
        std::string text = path, buffer = anchor;
        const auto function = reinterpret_cast<VekExport>(m_library.symbol("SetItemPos"));
        return function(text.data(), offset, buffer.data(), 0, nullptr, 0, hostData);
    }
    float place(const char* path, double offset, const char* anchor) {
        return place(path, offset, anchor, windows.data());
    }

    // The menu's items after the item was placed beside B.
    std::string placedBesideB(double offset) {
        EXPECT_EQ(place("Bridge:Item", offset, "Menu:B"), 0.0f);
        const std::string names = items();
        EXPECT_EQ(place("Menu:Item", 0, "Bridge:Home"), -1.0f) << "no such anchor";
        takeBack();
        return names;
    }

    std::string items() const {
        std::string names;
        for (const HostWindow* w = menu->child; w; w = w->next) names += w->name;
        return names;
    }

    LoadedLibrary m_library;
    HostWindows windows;
    HostWindow *root, *menu, *item;

private:
    // Out of the menu and under the bridge's window again, by hand.
    void takeBack() {
        if (item->previous) item->previous->next = item->next;
        if (item->next) item->next->previous = item->previous;
        if (menu->child == item) menu->child = item->next;
        HostWindow* const bridge = menu->next;
        item->parent = bridge;
        item->next = item->previous = nullptr;
        bridge->child = item;
    }
};

}  // namespace

TEST_F(SetItemPosTest, PutsAnItemBeforeOrBehindItsAnchor) {
    EXPECT_EQ(placedBesideB(0), "AItemBC");
    EXPECT_EQ(placedBesideB(1), "ABItemC");
    EXPECT_EQ(placedBesideB(-1), "ItemABC");
    EXPECT_EQ(placedBesideB(2), "ABCItem");
    EXPECT_EQ(placedBesideB(-100), "ItemABC");
    EXPECT_EQ(placedBesideB(100), "ABCItem");
}

// Required(R91)
TEST_F(SetItemPosTest, AddsAFixedAllowanceToTheOffset) {
    EXPECT_EQ(placedBesideB(0.85), "ABItemC");
    EXPECT_EQ(placedBesideB(0.75), "AItemBC");
    EXPECT_EQ(placedBesideB(-0.1), "AItemBC") << "-0.3 is cut to 0";
    EXPECT_EQ(placedBesideB(-0.75), "AItemBC");
    EXPECT_EQ(placedBesideB(-0.85), "ItemABC");
}

TEST_F(SetItemPosTest, TakesAnOffsetThatIsNoNumberForZeroAndHoldsALargeOne) {
    EXPECT_EQ(placedBesideB(std::nan("")), "AItemBC");
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double offset : {1e300, infinity, 2147483647.0}) {
        EXPECT_EQ(placedBesideB(offset), "ABCItem");
        EXPECT_EQ(placedBesideB(-offset), "ItemABC");
    }
}

TEST_F(SetItemPosTest, IsZeroAlsoWhereNothingMoves) {
    EXPECT_EQ(place("Menu:A", 1, "Menu:A"), 0.0f);
    EXPECT_EQ(place("Menu", 0, "Menu:A"), 0.0f) << "not into itself";
    EXPECT_EQ(items(), "ABC");
}

TEST_F(SetItemPosTest, RejectsAMissingItemOrAnAnchorWithoutAParent) {
    EXPECT_EQ(place("Bridge:None", 0, "Menu:B"), -1.0f);
    EXPECT_EQ(place("Bridge:Item", 0, "Menu:None"), -1.0f);
    EXPECT_EQ(place("Bridge:Item", 0, ""), -1.0f) << "the root itself";
    EXPECT_EQ(m_library.call("SetItemPos"), -1.0f);
    const auto function = reinterpret_cast<VekExport>(m_library.symbol("SetItemPos"));
    char anchor[] = "Menu:B", path[] = "Bridge:Item";
    EXPECT_EQ(function(path, 0, nullptr, 0, nullptr, 0, windows.data()), -1.0f);
    EXPECT_EQ(function(nullptr, 0, anchor, 0, nullptr, 0, windows.data()), 0.0f)
        << "the root, which stays where it is";
    EXPECT_EQ(items(), "ABC");
}

TEST_F(SetItemPosTest, RejectsAHostWithoutTablesOrDocument) {
    EXPECT_EQ(place("Bridge:Item", 0, "Menu:B", nullptr), -1.0f);
    char* nothing[9] = {};
    EXPECT_EQ(place("Bridge:Item", 0, "Menu:B", nothing), -1.0f);
    nothing[2] = windows.data()[2];
    EXPECT_EQ(place("Bridge:Item", 0, "Menu:B", nothing), -1.0f);
    EXPECT_EQ(place("Bridge:Item", 0, "Menu:B"), 0.0f) << "and goes on with a real one";
}

TEST_F(SetItemPosTest, TakesAnEntryOfAMenuIntoTheTree) {
    HostWindow& pullDown = windows.add(root, "Pull");
    HostWindow& entry = windows.addEntry(pullDown, "Entry");
    EXPECT_EQ(place("Pull:Entry", 1, "Menu:A"), 0.0f);
    EXPECT_EQ(items(), "AEntryBC");
    EXPECT_EQ(entry.parent, menu);
    EXPECT_EQ(place("Pull:Entry", 1, "Menu:A"), -1.0f) << "no longer found there";
}
