// The Mac's side of the seam, compiled against a fake of its C interfaces and run on it call by
// call, below the decisions of BXDiskServer.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "os/bx_disk_server.h"
#include "os/platform_macos_panel.h"
#include "tests/support/macos/fake_macos.h"

using fake_macos::state;

std::unique_ptr<char[]> bxChooseFileInPanel(const char* title) {
    const std::string path = std::string("chosen for ") + (title ? title : "(null)");
    std::unique_ptr<char[]> copy(new char[path.size() + 1]);
    path.copy(copy.get(), path.size() + 1);
    copy[path.size()] = '\0';
    return copy;
}

namespace {

using Calls = std::vector<std::string>;
using Texts = BXArray<BXString>;

class MacPlatform : public testing::Test {
protected:
    MacPlatform() { fake_macos::reset(); }
    ~MacPlatform() override { EXPECT_EQ(state().objects, 0) << "something was not released"; }

    static Calls calls() {
        Calls all;
        all.swap(state().calls);
        return all;
    }

    static void addRunning() {
        state().files["/A.app"] = {};
        state().files["/d.obj"] = {};
        state().processes = {{0, 1, ""}, {0, 2, "/Other.app"}, {3, 5, "/A.app"}};
    }
    static void addNotRunning() {
        addRunning();
        state().processes.pop_back();
    }

    // Makes each call that can fail do so, one after the other: the operation has to be false, and
    // to release what it made. How many such calls there were.
    static int failEachCall(const std::function<bool()>& operation) {
        for (int n = 1;; ++n) {
            state().fallible = 0;
            state().failAt = n;
            const bool result = operation();
            if (state().fallible < n) {
                EXPECT_TRUE(result) << "nothing failed";
                state().failAt = 0;
                return n - 1;
            }
            const Calls made = calls();
            EXPECT_FALSE(result) << "call " << n << ", the last one being " << made.back();
            EXPECT_EQ(state().objects, 0) << "after " << made.back();
        }
    }
};

}  // namespace

TEST_F(MacPlatform, LaunchesANewInstanceWithItsArgumentsInAnArray) {
    addNotRunning();
    EXPECT_TRUE(BXDiskServer::launchApplication("Disk:/A.app", "-v x"));
    EXPECT_EQ(calls(), (Calls{"ref /A.app", "array 0", "string 600 [-v x]",
                              "launch version 0 /A.app 90100 [-v x]"}));
    EXPECT_TRUE(BXDiskServer::launchApplication("/A.app", Texts{"a", "", "b c"}));
    EXPECT_EQ(calls(), (Calls{"ref /A.app", "array 0", "string 600 [a]", "string 600 []",
                              "string 600 [b c]", "launch version 0 /A.app 90100 [a] [] [b c]"}));
    EXPECT_TRUE(BXDiskServer::launchApplication("/A.app", ""));
    EXPECT_EQ(calls(), (Calls{"ref /A.app", "launch version 0 /A.app 90100 no array"}));
}

TEST_F(MacPlatform, LaunchesNothingWhereACallFailsOrAnArgumentIsNoAscii) {
    addNotRunning();
    EXPECT_EQ(failEachCall([] {
                  return BXDiskServer::launchApplication("/A.app", Texts{"a", "b"});
              }),
              5);
    EXPECT_FALSE(BXDiskServer::launchApplication("/A.app", Texts{"a", "\xC3\xA4"}));
    EXPECT_EQ(calls().back(), "string 600 [\xC3\xA4]");
}

TEST_F(MacPlatform, ReachesOrStartsAnApplicationWithTheDefaultFlags) {
    addRunning();
    EXPECT_TRUE(BXDiskServer::launchApplicationIfNecessary("/A.app"));
    EXPECT_EQ(calls(), (Calls{"ref /A.app", "launch version 0 /A.app 10100 no array"}));
    EXPECT_EQ(failEachCall([] { return BXDiskServer::launchApplicationIfNecessary("/A.app"); }), 2);
}

TEST_F(MacPlatform, WalksTheProcessesUntilOneOfTheBundle) {
    addRunning();
    BXProcessSerialNumber process;
    EXPECT_TRUE(BXDiskServer::getRunningProcess("/A.app", process));
    EXPECT_EQ(process.high, 3u);
    EXPECT_EQ(process.low, 5u);
    EXPECT_EQ(calls(), (Calls{"ref /A.app", "next 0/0", "bundle of 0/1", "next 0/1",
                              "bundle of 0/2", "next 0/2", "bundle of 3/5"}));
    EXPECT_EQ(failEachCall([] {
                  BXProcessSerialNumber found = {1, 1};
                  const bool result = BXDiskServer::getRunningProcess("/A.app", found);
                  EXPECT_NE(result, found.isNone());
                  return result;
              }),
              4);
}

TEST_F(MacPlatform, FindsNoFileWithoutAPath) {
    addRunning();
    BXProcessSerialNumber process;
    EXPECT_FALSE(BXDiskServer::getRunningProcess(BXString(), process));
    EXPECT_EQ(calls(), Calls());
}

// What a location is left at by a call that failed means nothing.
TEST_F(MacPlatform, PassesOverAProcessWhoseBundleIsNotTold) {
    addRunning();
    state().processes = {{0, 1, ""}};
    state().leftInFailedLocation = "/A.app";
    BXProcessSerialNumber process;
    EXPECT_FALSE(BXDiskServer::getRunningProcess("/A.app", process));
}

TEST_F(MacPlatform, SendsAnOpenDocumentsEventDescriptorByDescriptor) {
    addRunning();
    EXPECT_TRUE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    const Calls all = calls();
    const Calls expected = {
        "desc psn (3/5)",
        "event aevt/odoc to psn (3/5)",
        "catalog /d.obj",
        "list",
        "alias /d.obj",
        "desc alis(alias of /d.obj)",
        "put alis(alias of /d.obj) at 0",
        "param ---- list( alis(alias of /d.obj))",
        "send aevt(aevt/odoc to psn (3/5) ----=list( alis(alias of /d.obj))) reply null mode 1 "
        "priority 0 timeout -2",
        "front 3/5",
    };
    ASSERT_GE(all.size(), expected.size());
    EXPECT_EQ(Calls(all.end() - static_cast<std::ptrdiff_t>(expected.size()), all.end()), expected);
}

TEST_F(MacPlatform, LaunchesTheApplicationForADocumentAndKeepsItsNumber) {
    addNotRunning();
    EXPECT_TRUE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    const Calls all = calls();
    EXPECT_EQ(all[7], "launch version 0 /A.app 10100 no array");
    EXPECT_EQ(all[8], "desc psn (7/42)");
    EXPECT_EQ(all.back(), "front 7/42");
}

TEST_F(MacPlatform, OpensNoDocumentWhereACallFails) {
    addRunning();
    // A walk that fails ends; the application is then launched, so the result is no failure.
    state().processes = {};
    const auto open = [] { return BXDiskServer::openFileInApplication("/A.app", "/d.obj"); };
    state().failAt = 3;
    EXPECT_TRUE(open());
    EXPECT_EQ(calls()[2], "next 0/0");
    for (int n = 1; n <= 13; ++n) {
        state().fallible = 0;
        state().failAt = n;
        const bool result = open();
        const Calls all = calls();
        if (n == 3) {
            EXPECT_TRUE(result);
            continue;
        }
        EXPECT_FALSE(result) << n;
        EXPECT_NE(all.back(), "front 7/42") << n;
        EXPECT_EQ(state().objects, 0) << n;
    }
    state().failAt = 0;
    state().fallible = 0;
    EXPECT_TRUE(open());
    EXPECT_EQ(state().fallible, 13) << "every call that can fail had its turn";
}

TEST_F(MacPlatform, SendsATextEventOfTheCoreClass) {
    addRunning();
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", fourChars("abcd"),
                                                          fourChars("efgh"), "a text", Texts()));
    const Calls all = calls();
    const Calls expected = {
        "desc psn (3/5)",
        "event aevt/efgh to psn (3/5)",
        "param ---- TEXT(a text)",
        "send aevt(aevt/efgh to psn (3/5) ----=TEXT(a text)) reply null mode 1 priority 0 timeout "
        "-2",
        "front 3/5",
    };
    EXPECT_EQ(Calls(all.end() - 5, all.end()), expected);
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", fourChars("abcd"), BXString(),
                                                          Texts()));
    const Calls empty = calls();
    EXPECT_EQ(empty[empty.size() - 3], "param ---- TEXT()");
    EXPECT_EQ(empty[empty.size() - 4], "event aevt/abcd to psn (3/5)");
}

TEST_F(MacPlatform, SendsNoEventAfterALaunchWithArguments) {
    addNotRunning();
    EXPECT_FALSE(
        BXDiskServer::sendAppleEventToApplication("/A.app", fourChars("abcd"), "t", Texts{"x"}));
    EXPECT_EQ(calls().back(), "launch version 0 /A.app 10100 [x]");
}

TEST_F(MacPlatform, SendsNoTextWhereACallFails) {
    addRunning();
    state().processes = {{3, 5, "/A.app"}};
    const auto sendText = [] {
        return BXDiskServer::sendAppleEventToApplication("/A.app", fourChars("abcd"), "t", Texts());
    };
    for (const int n : {1, 3, 4, 5, 6}) {  // the second is the walk's
        state().fallible = 0;
        state().failAt = n;
        EXPECT_FALSE(sendText()) << n;
        EXPECT_EQ(state().objects, 0) << n;
        EXPECT_NE(calls().back(), "front 3/5");
    }
    state().failAt = 0;
    state().fallible = 0;
    EXPECT_TRUE(sendText());
    EXPECT_EQ(state().fallible, 6);
}

TEST_F(MacPlatform, TypesKeysIntoTheApplicationInFront) {
    addRunning();
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 10));
    const Calls all = calls();
    const Calls expected = {
        "key event 59 down",   "key event 55 down",   "key event 12 down",   "key event 12 up",
        "key event 55 up",     "key event 59 up",     "front 3/5",           "post 3/5 +59:40000",
        "post 3/5 +55:140000", "post 3/5 +12:140000", "post 3/5 -12:140000", "post 3/5 -55:40000",
        "post 3/5 -59:0",
    };
    EXPECT_EQ(Calls(all.end() - 13, all.end()), expected);
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 0, 0));
    EXPECT_EQ(calls().back(), "front 3/5");
}

TEST_F(MacPlatform, PostsNoKeyWhereOneCannotBeMade) {
    addRunning();
    state().processes = {{3, 5, "/A.app"}};
    for (int n = 3; n <= 12; ++n) {
        state().fallible = 0;
        state().failAt = n;
        EXPECT_FALSE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 15)) << n;
        EXPECT_EQ(state().objects, 0);
        EXPECT_EQ(calls().back().substr(0, 9), "key event");
    }
    state().failAt = 0;
    state().fallible = 0;
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 15));
    EXPECT_EQ(state().fallible, 12) << "every call that can fail had its turn";
}

TEST_F(MacPlatform, ReadsTheFactsOfABundle) {
    state().files["/A.app"] = {{7, 0x01000007}, "12.3.1"};
    bool is64Bit = false;
    int major = 0, minor = 0;
    EXPECT_TRUE(BXDiskServer::getApplicationInfo("Disk:/A.app", is64Bit, major, minor));
    EXPECT_TRUE(is64Bit);
    EXPECT_EQ(major, 12);
    EXPECT_EQ(minor, 3);
    EXPECT_EQ(calls(), (Calls{"string 0 [/A.app]", "url /A.app posix folder", "bundle /A.app",
                              "architectures", "value of the version", "c string 256 8000100"}));
    EXPECT_EQ(failEachCall([&] {
                  return BXDiskServer::getApplicationInfo("/A.app", is64Bit, major, minor);
              }),
              6);
}

TEST_F(MacPlatform, ReadsNoVersionThatIsNoTextTooLongOrMissing) {
    bool is64Bit = false;
    int major = 0, minor = 0;
    const auto info = [&](const fake_macos::Bundle& bundle) {
        state().files["/A.app"] = bundle;
        return BXDiskServer::getApplicationInfo("/A.app", is64Bit, major, minor);
    };
    EXPECT_FALSE(info({{7}, ""}));
    EXPECT_FALSE(info({{7}, std::string(256, '1')}));
    EXPECT_TRUE(info({{7}, std::string(255, '1')}));
    EXPECT_FALSE(info({{7}, "1", true}));
    calls();
    EXPECT_FALSE(info({{}, "1"}));
    EXPECT_EQ(calls().back(), "architectures");
    state().emptyArchitectures = true;
    EXPECT_FALSE(info({{}, "1"}));
    EXPECT_EQ(calls().back(), "architectures");
}

TEST_F(MacPlatform, AsksThePanelForAFile) {
    const std::unique_ptr<char[]> path(runCocoaOpenFileBrowser("a title"));
    EXPECT_STREQ(path.get(), "chosen for a title");
}
