// What BXDiskServer decides about other programs, on a platform that records what it is asked.

#include <gtest/gtest.h>

#include <string>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"
#include "tests/support/recording_platform.h"

namespace {

using Lines = RecordingPlatform::Lines;
using Texts = BXArray<BXString>;

class Processes : public testing::Test {
protected:
    Lines lines() { return platform.takeLines(); }

    // The only call, without its word.
    std::string shell() {
        const Lines all = lines();
        EXPECT_EQ(all.size(), 1u);
        if (all.size() != 1 || all[0].rfind("shell ", 0) != 0) return "no shell command";
        return all[0].substr(6);
    }

    RecordingPlatform platform;
};

class LaunchApplication : public Processes {
protected:
    std::string one(const char* path, const char* args) {
        EXPECT_TRUE(BXDiskServer::launchApplication(path, args));
        return shell();
    }
    std::string list(const char* path, const Texts& args) {
        EXPECT_TRUE(BXDiskServer::launchApplication(path, args));
        return shell();
    }
};

class LaunchApplicationAsAdmin : public Processes {
protected:
    std::string one(const char* path, const char* args) {
        EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin(path, args));
        return shell();
    }
    std::string list(const char* path, const Texts& args) {
        EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin(path, args));
        return shell();
    }
};

using GetRunningProcess = Processes;
using LaunchIfNecessary = Processes;
using OpenFile = Processes;
using SendAppleEvent = Processes;
using SendKeyEvent = Processes;
using AppleScript = Processes;
using OpenPanel = Processes;

class GetApplicationInfo : public Processes {
protected:
    struct Info {
        bool result, is64Bit;
        int major, minor;
        bool operator==(const Info& other) const {
            return result == other.result && is64Bit == other.is64Bit && major == other.major &&
                   minor == other.minor;
        }
        friend void PrintTo(const Info& info, std::ostream* out) {
            *out << info.result << info.is64Bit << " " << info.major << "." << info.minor;
        }
    };
    Info of(const BXArray<long>& architectures, const char* version) {
        platform.facts.architectures = architectures;
        platform.facts.version = version;
        Info info = {false, true, 77, 77};
        info.result =
            BXDiskServer::getApplicationInfo("/A.app", info.is64Bit, info.major, info.minor);
        return info;
    }
};

constexpr long k386 = 7, kX86_64 = 0x01000007, kPPC = 18, kPPC64 = 0x01000012;

}  // namespace

TEST_F(LaunchApplication, RunsAScriptByShWithItsPathAndArgumentInDoubleQuotes) {
    EXPECT_EQ(one("/x/i.sh", "-v"), "sh \"/x/i.sh\" \"-v\"");
    EXPECT_EQ(one("/x/i.SH", "-v"), "sh \"/x/i.SH\" \"-v\"");
    EXPECT_EQ(one("/x y/i.sH", ""), "sh \"/x y/i.sH\"");
    EXPECT_EQ(one("/x/i.sh", "a \"b\" 'c' $d"), "sh \"/x/i.sh\" \"a \"b\" 'c' $d\"");
}

// Required(R80)
TEST_F(LaunchApplication, QuotesTheArgumentOfAnExecutableWithApostrophesAndItsPathNotAtAll) {
    EXPECT_EQ(one("/x/tool", "-v"), "/x/tool '-v'");
    EXPECT_EQ(one("/x y/tool", ""), "/x y/tool");
    EXPECT_EQ(one("/x/tool", "it's $HOME"), "/x/tool 'it's $HOME'");
    EXPECT_EQ(one("/x/i.sh ", "-v"), "/x/i.sh  '-v'") << "the blank makes it an executable";
    EXPECT_EQ(one("/x/i.sh", "-v"), "sh \"/x/i.sh\" \"-v\"") << "the other side";
}

TEST_F(LaunchApplication, PutsEachArgumentOfAListIntoDoubleQuotes) {
    EXPECT_EQ(list("/x/i.sh", {"a", "b c"}), "sh \"/x/i.sh\" \"a\" \"b c\"");
    EXPECT_EQ(list("/x/tool", {"a", "", "$b"}), "/x/tool \"a\" \"\" \"$b\"");
    EXPECT_EQ(list("/x/I.SH", {}), "sh \"/x/I.SH\"");
    EXPECT_EQ(list("/x/tool", {}), "/x/tool");
}

TEST_F(LaunchApplication, GivesTheShellThePathAsItIs) {
    EXPECT_EQ(one("Disk:/x/tool", ""), "Disk:/x/tool");
    EXPECT_EQ(one("Disk:/x/i.sh", ""), "sh \"Disk:/x/i.sh\"");
}

TEST_F(LaunchApplication, LaunchesABundleAsOneMoreInstance) {
    platform.files = {"/A.app", "/B.APP"};
    EXPECT_TRUE(BXDiskServer::launchApplication("Disk:/A.app", "-v x"));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "launch /A.app 90100 [-v x]"}));
    EXPECT_TRUE(BXDiskServer::launchApplication("/B.APP", ""));
    EXPECT_EQ(lines(), (Lines{"find /B.APP", "launch /B.APP 90100 no arguments"}));
    EXPECT_TRUE(BXDiskServer::launchApplication("/A.app", Texts{"a", "b c"}));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "launch /A.app 90100 [a] [b c]"}));
    EXPECT_TRUE(BXDiskServer::launchApplication("/A.app", Texts()));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "launch /A.app 90100 no arguments"}));
}

TEST_F(LaunchApplication, IsFalseForABundleThatIsMissingOrRefused) {
    EXPECT_FALSE(BXDiskServer::launchApplication("/A.app", "x"));
    EXPECT_EQ(lines(), (Lines{"find /A.app"}));
    EXPECT_FALSE(BXDiskServer::launchApplication("/A.app", Texts{"x"}));
    platform.files = {"/A.app"};
    platform.refused = {"launch"};
    EXPECT_FALSE(BXDiskServer::launchApplication("/A.app", "x"));
    EXPECT_FALSE(BXDiskServer::launchApplication("/A.app", Texts()));
}

TEST_F(LaunchApplicationAsAdmin, AsksForAScriptABundleAndAnExecutable) {
    EXPECT_EQ(one("/x/i.sh", "-v"),
              "osascript -e \"do shell script \\\"sh '/x/i.sh' '-v'"
              "\\\" with administrator privileges\"");
    EXPECT_EQ(one("/A/B.app", "f"),
              "osascript -e \"do shell script \\\"open -a '/A/B.app' 'f'"
              "\\\" with administrator privileges\"");
    EXPECT_EQ(one("/x/tool", "f"),
              "osascript -e \"do shell script \\\"'/x/tool' 'f'"
              "\\\" with administrator privileges\"");
    EXPECT_EQ(one("/x/I.Sh", ""),
              "osascript -e \"do shell script \\\"sh '/x/I.Sh'"
              "\\\" with administrator privileges\"");
    EXPECT_EQ(one("/A b/B.APP", ""),
              "osascript -e \"do shell script \\\"open -a '/A b/B.APP'"
              "\\\" with administrator privileges\"");
    EXPECT_EQ(one("Disk:/x/tool", ""),
              "osascript -e \"do shell script \\\"'Disk:/x/tool'"
              "\\\" with administrator privileges\"");
}

TEST_F(LaunchApplicationAsAdmin, EscapesNothing) {
    EXPECT_EQ(one("/x/tool", "a \"b\" 'c' $d \\"),
              "osascript -e \"do shell script \\\"'/x/tool' 'a \"b\" 'c' $d \\'"
              "\\\" with administrator privileges\"");
}

// Required(R81)
TEST_F(LaunchApplicationAsAdmin, PutsAListIntoDoubleQuotesThatEndTheTextAroundThem) {
    EXPECT_EQ(list("/x/i.sh", {"a", "b c"}),
              "osascript -e \"do shell script \\\"sh '/x/i.sh' \"a\" \"b c\""
              "\\\" with administrator privileges\"");
    EXPECT_EQ(list("/A.app", {""}),
              "osascript -e \"do shell script \\\"open -a '/A.app' \"\""
              "\\\" with administrator privileges\"");
    EXPECT_EQ(list("/x/tool", {}),
              "osascript -e \"do shell script \\\"'/x/tool'"
              "\\\" with administrator privileges\"");
    EXPECT_EQ(one("/x/i.sh", "a"),
              "osascript -e \"do shell script \\\"sh '/x/i.sh' 'a'"
              "\\\" with administrator privileges\"")
        << "the other side";
}

TEST_F(GetRunningProcess, WalksFromNoneUntilAProcessOfTheBundle) {
    platform.files = {"/A.app"};
    platform.processes = {{0, 1, ""}, {0, 9, "/Other.app"}, {3, 5, "/A.app"}, {4, 6, "/A.app"}};
    BXProcessSerialNumber process = {1, 1};
    EXPECT_TRUE(BXDiskServer::getRunningProcess("Disk:/A.app", process));
    EXPECT_EQ(name(process), "3/5");
    EXPECT_EQ(lines(), (Lines{"find /A.app", "next 0/0", "next 0/1", "next 0/9"}));
}

TEST_F(GetRunningProcess, GivesNoneWhenItIsFalse) {
    platform.files = {"/A.app"};
    platform.processes = {{0, 1, ""}, {0, 9, "/Other.app"}};
    BXProcessSerialNumber process = {1, 1};
    EXPECT_FALSE(BXDiskServer::getRunningProcess("/A.app", process));
    EXPECT_TRUE(process.isNone());
    process = {1, 1};
    EXPECT_FALSE(BXDiskServer::getRunningProcess("/Missing.app", process));
    EXPECT_TRUE(process.isNone());
    process = {1, 1};
    EXPECT_FALSE(BXDiskServer::getRunningProcess(BXString(), process));
    EXPECT_TRUE(process.isNone());
}

TEST_F(LaunchIfNecessary, ReachesOrStartsABundle) {
    platform.files = {"/A.aPp", "/tool"};
    EXPECT_TRUE(BXDiskServer::launchApplicationIfNecessary("Disk:/A.aPp"));
    EXPECT_EQ(lines(), (Lines{"find /A.aPp", "launch /A.aPp 10100 no arguments"}));
    EXPECT_FALSE(BXDiskServer::launchApplicationIfNecessary("/tool"));
    EXPECT_FALSE(BXDiskServer::launchApplicationIfNecessary("/Missing.app"));
    EXPECT_FALSE(BXDiskServer::launchApplicationIfNecessary(""));
    platform.refused = {"launch"};
    EXPECT_FALSE(BXDiskServer::launchApplicationIfNecessary("/A.aPp"));
}

TEST_F(OpenFile, SendsTheDocumentToTheRunningApplicationAndBringsItToTheFront) {
    platform.files = {"/A.app", "/d.obj"};
    platform.processes = {{3, 5, "/A.app"}};
    EXPECT_TRUE(BXDiskServer::openFileInApplication("Disk:/A.app", "Disk:/d.obj"));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "find /d.obj", "next 0/0",
                              "document 3/5 /A.app /d.obj", "front 3/5"}));
}

TEST_F(OpenFile, LaunchesTheApplicationFirstWhereItIsNotRunning) {
    platform.files = {"/A.app", "/d.obj"};
    EXPECT_TRUE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines(),
              (Lines{"find /A.app", "find /d.obj", "next 0/0", "launch /A.app 10100 no arguments",
                     "document 7/42 /A.app /d.obj", "front 7/42"}));
}

TEST_F(OpenFile, LaunchesItWithTheDocumentWhereThatIsThePlatformsWay) {
    platform.files = {"/A.app", "/d.obj"};
    platform.documentsByLaunch = true;
    EXPECT_TRUE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "find /d.obj", "next 0/0",
                              "launch /A.app 10100 [/d.obj]", "front 7/42"}));
    platform.refused = {"launch"};
    EXPECT_FALSE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    platform.refused = {};
    platform.processes = {{0, 5, "/A.app"}};
    lines();
    EXPECT_TRUE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines().back(), "front 0/5");
}

TEST_F(OpenFile, IsFalseAndGoesNoFurtherWhereAStepFails) {
    platform.files = {"/A.app"};
    EXPECT_FALSE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "find /d.obj"}));
    platform.files = {"/d.obj"};
    EXPECT_FALSE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines(), (Lines{"find /A.app"}));
    platform.files = {"/A.app", "/d.obj"};
    platform.refused = {"launch"};
    EXPECT_FALSE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines().back(), "launch /A.app 10100 no arguments");
    platform.refused = {"document"};
    EXPECT_FALSE(BXDiskServer::openFileInApplication("/A.app", "/d.obj"));
    EXPECT_EQ(lines().back(), "document 7/42 /A.app /d.obj") << "nothing comes to the front";
}

TEST_F(SendAppleEvent, SendsTheTextToTheRunningApplicationAndBringsItToTheFront) {
    platform.files = {"/A.app"};
    platform.processes = {{3, 5, "/A.app"}};
    EXPECT_TRUE(
        BXDiskServer::sendAppleEventToApplication("Disk:/A.app", 0x61, "some text", Texts{"x"}));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "next 0/0", "text 3/5 61 [some text]", "front 3/5"}));
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, BXString(), Texts()));
    EXPECT_EQ(lines()[2], "text 3/5 61 []");
}

// Required(R82)
TEST_F(SendAppleEvent, IgnoresTheClassThatItIsGiven) {
    platform.files = {"/A.app"};
    platform.processes = {{3, 5, "/A.app"}};
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, 0x62, "t", Texts()));
    EXPECT_EQ(lines()[2], "text 3/5 62 [t]");
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x63, 0x62, "t", Texts()));
    EXPECT_EQ(lines()[2], "text 3/5 62 [t]");
}

TEST_F(SendAppleEvent, LaunchesTheApplicationFirstWhereItIsNotRunning) {
    platform.files = {"/A.app"};
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts()));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "next 0/0", "launch /A.app 10100 no arguments",
                              "text 7/42 61 [t]", "front 7/42"}));
}

// Required(R83)
TEST_F(SendAppleEvent, IsFalseAndSendsNothingAfterALaunchWithArguments) {
    platform.files = {"/A.app"};
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts{"a", "b"}));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "next 0/0", "launch /A.app 10100 [a] [b]"}));
    EXPECT_TRUE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts()))
        << "the other side";
}

TEST_F(SendAppleEvent, IsFalseWhereAStepFails) {
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts()));
    EXPECT_EQ(lines(), (Lines{"find /A.app"}));
    platform.files = {"/A.app"};
    platform.refused = {"launch"};
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts()));
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts{"a"}));
    platform.refused = {"text"};
    lines();
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication("/A.app", 0x61, "t", Texts()));
    EXPECT_EQ(lines().back(), "text 7/42 61 [t]") << "nothing comes to the front";
}

TEST_F(SendKeyEvent, OnlyBringsTheApplicationToTheFrontForNoKey) {
    platform.files = {"/A.app"};
    platform.processes = {{3, 5, "/A.app"}};
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("Disk:/A.app", 0, 0));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "next 0/0", "front 3/5"}));
}

TEST_F(SendKeyEvent, LaunchesTheApplicationWhereItIsNotRunning) {
    platform.files = {"/A.app"};
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 0));
    EXPECT_EQ(lines(), (Lines{"find /A.app", "next 0/0", "launch /A.app 10100 no arguments",
                              "keys 7/42 +12:0 -12:0"}));
}

TEST_F(SendKeyEvent, HoldsTheModifiersInTheirOrder) {
    platform.files = {"/A.app"};
    platform.processes = {{3, 5, "/A.app"}};
    // Each up event has the flags gathered before its key, each down event those with it.
    const char* const expected[16] = {
        "+12:0 -12:0",
        "+56:20000 +12:20000 -12:20000 -56:0",
        "+59:40000 +12:40000 -12:40000 -59:0",
        "+59:40000 +56:60000 +12:60000 -12:60000 -56:40000 -59:0",
        "+58:80000 +12:80000 -12:80000 -58:0",
        "+58:80000 +56:a0000 +12:a0000 -12:a0000 -56:80000 -58:0",
        "+59:40000 +58:c0000 +12:c0000 -12:c0000 -58:40000 -59:0",
        "+59:40000 +58:c0000 +56:e0000 +12:e0000 -12:e0000 -56:c0000 -58:40000 -59:0",
        "+55:100000 +12:100000 -12:100000 -55:0",
        "+56:20000 +55:120000 +12:120000 -12:120000 -55:20000 -56:0",
        "+59:40000 +55:140000 +12:140000 -12:140000 -55:40000 -59:0",
        "+59:40000 +56:60000 +55:160000 +12:160000 -12:160000 -55:60000 -56:40000 -59:0",
        "+58:80000 +55:180000 +12:180000 -12:180000 -55:80000 -58:0",
        "+58:80000 +56:a0000 +55:1a0000 +12:1a0000 -12:1a0000 -55:a0000 -56:80000 -58:0",
        "+59:40000 +58:c0000 +55:1c0000 +12:1c0000 -12:1c0000 -55:c0000 -58:40000 -59:0",
        ("+59:40000 +58:c0000 +56:e0000 +55:1e0000 +12:1e0000 -12:1e0000 -55:e0000 -56:c0000 "
         "-58:40000 -59:0"),
    };
    for (int modifiers = 0; modifiers < 16; ++modifiers) {
        EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, modifiers));
        EXPECT_EQ(lines().back(), std::string("keys 3/5 ") + expected[modifiers]) << modifiers;
    }
}

TEST_F(SendKeyEvent, TakesTheLow16BitsOfTheKeyAndFourModifiers) {
    platform.files = {"/A.app"};
    platform.processes = {{3, 5, "/A.app"}};
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 0x5000C, 16));
    EXPECT_EQ(lines().back(), "keys 3/5 +12:0 -12:0");
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 0x10000, 0));
    EXPECT_EQ(lines().back(), "keys 3/5 +0:0 -0:0") << "the key 0, and not to the front alone";
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication("/A.app", 0, 1));
    EXPECT_EQ(lines().back(), "keys 3/5 +56:20000 +0:20000 -0:20000 -56:0");
}

TEST_F(SendKeyEvent, IsFalseWhereAStepFails) {
    EXPECT_FALSE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 0));
    platform.files = {"/A.app"};
    platform.refused = {"launch"};
    EXPECT_FALSE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 0));
    EXPECT_FALSE(BXDiskServer::sendKeyEventToApplication("/A.app", 0, 0));
    platform.refused = {"keys"};
    EXPECT_FALSE(BXDiskServer::sendKeyEventToApplication("/A.app", 12, 0));
}

TEST_F(AppleScript, OfOneLineIsPutIntoDoubleQuotesAsItIs) {
    EXPECT_TRUE(BXDiskServer::runAppleScript("tell application \"X\" to quit"));
    EXPECT_EQ(shell(), "osascript -e \"tell application \"X\" to quit\"");
    EXPECT_TRUE(BXDiskServer::runAppleScript(BXString()));
    EXPECT_EQ(shell(), "osascript -e \"\"");
}

TEST_F(AppleScript, OfSeveralLinesIsOnePartForEachThatIsNotEmpty) {
    EXPECT_TRUE(BXDiskServer::runAppleScriptMultiLine("a b\n\nc\r\n"));
    EXPECT_EQ(shell(), "osascript -e'a b' -e'c\r'");
    EXPECT_TRUE(BXDiskServer::runAppleScriptMultiLine("one"));
    EXPECT_EQ(shell(), "osascript -e'one'");
    EXPECT_TRUE(BXDiskServer::runAppleScriptMultiLine("\n\n"));
    EXPECT_EQ(shell(), "osascript");
    EXPECT_FALSE(BXDiskServer::runAppleScriptMultiLine(""));
    EXPECT_FALSE(BXDiskServer::runAppleScriptMultiLine(BXString()));
    EXPECT_EQ(lines(), Lines());
}

TEST_F(GetApplicationInfo, TellsTheVersionUpToItsSecondNumber) {
    EXPECT_EQ(of({k386}, "12.3.1"), (Info{true, false, 12, 3}));
    EXPECT_EQ(of({k386}, "7"), (Info{true, false, 7, 0}));
    EXPECT_EQ(of({k386}, "7."), (Info{true, false, 7, 0}));
    EXPECT_EQ(of({k386}, "7.x2"), (Info{true, false, 7, 0}));
    EXPECT_EQ(of({k386}, "7.05 beta"), (Info{true, false, 7, 5}));
    EXPECT_EQ(of({k386}, "7-2"), (Info{true, false, 7, 0}));
    EXPECT_EQ(of({k386}, "99999999999.99999999999"), (Info{true, false, 2147483647, 2147483647}));
}

TEST_F(GetApplicationInfo, IsFalseForAVersionThatIsNoneOrZero) {
    EXPECT_EQ(of({kX86_64}, "x1"), (Info{false, true, 0, 0}));
    EXPECT_EQ(of({kX86_64}, ""), (Info{false, true, 0, 0}));
    EXPECT_EQ(of({kX86_64}, ".5"), (Info{false, true, 0, 0}));
    EXPECT_EQ(of({kX86_64}, " 12"), (Info{false, true, 0, 0}));
    EXPECT_EQ(of({kX86_64}, "+3"), (Info{false, true, 0, 0}));
    EXPECT_EQ(of({kX86_64}, "-3"), (Info{false, true, 0, 0}));
    EXPECT_EQ(of({kX86_64}, "0.5"), (Info{false, true, 0, 5}));
}

TEST_F(GetApplicationInfo, KnowsTwoArchitecturesFor64Bit) {
    EXPECT_EQ(of({k386, kX86_64}, "1"), (Info{true, true, 1, 0}));
    EXPECT_EQ(of({kPPC64, k386}, "1"), (Info{true, true, 1, 0}));
    EXPECT_EQ(of({kPPC, k386, 0x0100000C}, "1"), (Info{true, false, 1, 0}));
}

TEST_F(GetApplicationInfo, IsFalseAndReadsNoVersionWithoutAnArchitecture) {
    EXPECT_EQ(of({}, "12.3"), (Info{false, false, 0, 0}));
}

TEST_F(GetApplicationInfo, LeavesTheOutputsAloneForNoPath) {
    bool is64Bit = true;
    int major = 77, minor = 78;
    EXPECT_FALSE(BXDiskServer::getApplicationInfo(BXString(), is64Bit, major, minor));
    EXPECT_FALSE(BXDiskServer::getApplicationInfo("", is64Bit, major, minor));
    EXPECT_TRUE(is64Bit);
    EXPECT_EQ(major, 77);
    EXPECT_EQ(minor, 78);
    EXPECT_EQ(lines(), Lines());
}

TEST_F(GetApplicationInfo, LooksAtTheValidPath) {
    bool is64Bit;
    int major, minor;
    BXDiskServer::getApplicationInfo("Disk:/A.app", is64Bit, major, minor);
    EXPECT_EQ(lines(), (Lines{"bundle /A.app"}));
}

TEST_F(OpenPanel, GivesThePathThatWasChosenAsItIs) {
    platform.chosen = "/a b/\xC3\xA4.obj";
    const std::unique_ptr<char[]> path(runCocoaOpenFileBrowser("Choose\xE2\x80\xA6"));
    ASSERT_TRUE(path);
    EXPECT_STREQ(path.get(), "/a b/\xC3\xA4.obj");
    EXPECT_EQ(lines(), (Lines{"panel Choose\xE2\x80\xA6"}));
}

TEST_F(OpenPanel, GivesNullForNone) {
    EXPECT_EQ(runCocoaOpenFileBrowser(nullptr), nullptr);
    EXPECT_EQ(lines(), (Lines{"panel (null)"}));
}

// Required(R84)
TEST(OpenFolder, ChangesTheWorkingFolder) {
    const TempFolder folder;
    makeFolders(folder / "a b");
    const BXString before = BXDiskServer::getCurrentPath();
    RecordingPlatform platform;
    EXPECT_TRUE(BXDiskServer::openFolder(text("Disk:" + (folder / "a b"))));
    EXPECT_TRUE(BXDiskServer::getCurrentPath().endsWith("/a b"));
    EXPECT_EQ(platform.takeLines(), Lines()) << "nothing is shown";
    EXPECT_FALSE(BXDiskServer::openFolder(at(folder, "missing")));
    EXPECT_FALSE(BXDiskServer::openFolder(BXString()));
    EXPECT_TRUE(BXDiskServer::getCurrentPath().endsWith("/a b"));
    EXPECT_TRUE(BXDiskServer::openFolder(before));
}
