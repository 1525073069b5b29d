// The Mac's open panel, on a fake of AppKit.

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "os/platform_macos_panel.h"

using fake_appkit::state;

namespace {

using Calls = std::vector<std::string>;

class MacPanel : public testing::Test {
protected:
    MacPanel() { state() = fake_appkit::State(); }
    ~MacPanel() override {
        EXPECT_EQ(state().panelReferences, 0);
        EXPECT_EQ(state().pools, 0);
    }

    static std::string chosen(const char* title) {
        const std::unique_ptr<char[]> path = bxChooseFileInPanel(title);
        return path ? path.get() : "(none)";
    }
};

}  // namespace

TEST_F(MacPanel, AsksForOneFileAndGivesItsPathInUtf8) {
    state().chosen = "/a b/\xC3\xA4.obj";
    EXPECT_EQ(chosen("Choose \xE2\x80\xA6"), "/a b/\xC3\xA4.obj");
    EXPECT_EQ(state().calls,
              (Calls{"panel", "title Choose \xE2\x80\xA6", "no folders", "no folders",
                     "not several", "run", "length in 4", "copy to 12 in 4", "release"}));
}

// Required(R92)
TEST_F(MacPanel, IsToldTwiceThatNoFolderCanBeChosen) {
    chosen("t");
    const Calls& calls = state().calls;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "no folders"), 2);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "not several"), 1);
}

TEST_F(MacPanel, GivesNoneWhereItIsCancelled) {
    state().answer = 0;
    EXPECT_EQ(chosen("t"), "(none)");
    EXPECT_EQ(state().calls,
              (Calls{"panel", "title t", "no folders", "no folders", "not several", "run",
                     "release"}));
}

TEST_F(MacPanel, GivesNoneWhereThePathCannotBeCopied) {
    state().canBeCopied = false;
    EXPECT_EQ(chosen("t"), "(none)");
    EXPECT_EQ(state().calls.back(), "release");
}

TEST_F(MacPanel, HasNoTitleWhereNoneIsGivenOrItIsNoUtf8) {
    EXPECT_EQ(chosen(nullptr), "/a b.obj");
    EXPECT_EQ(state().calls[1], "no folders");
    state().calls.clear();
    EXPECT_EQ(chosen("\xFF"), "/a b.obj");
    EXPECT_EQ(state().calls[1], "no folders");
}
