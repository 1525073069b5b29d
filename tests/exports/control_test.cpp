// The exports that run programs and wait for them.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "tests/support/bundle.h"
#include "tests/support/host.h"
#include "tests/support/movable_clock.h"
#include "tests/support/stand_in.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

const char kNoLog[] =
    "An error occurred during installation.\nOne possible cause could be unsufficient permissions "
    "in target application installation folder.\nPlease run Dorvia as an administrator and try "
    "again to install the Vek application!";

class Control : public testing::Test {
protected:
    Control() { makeFolders(Tree::root() + "/VekApps/App"); }

    // One application, "App", with these lines in its descriptor.
    void addApp(const std::string& descriptor) {
        m_tree.addApp("App", "NAME \"An application\"\n" + descriptor);
        ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 1.0f);
    }
    static std::string file(const std::string& name) { return Tree::app("App", name); }
    // A program in the application's folder that writes down how it was called.
    void addProgram(const std::string& name) {
        writeFile(file(name),
                  "#!/bin/sh\nprintf '[%s]' \"${0##*/}\" \"$@\" > '" + (m_folder / "ran") + "'\n");
        chmod(file(name).c_str(), 0755);
    }
    std::string ran() {
        if (!fileIsThere(m_folder / "ran")) return "nothing";
        const std::string how = readFile(m_folder / "ran");
        unlink((m_folder / "ran").c_str());
        return how;
    }

    Tree m_tree;
    LoadedLibrary m_library;
    TempFolder m_folder;
    StandIns m_standIns;
};

class CallVekAppCommandTest : public Control {};

class VekAppInstallTest : public Control {
protected:
    VekAppInstallTest() { m_standIns.addOsascript(); }

    void addInstaller(const std::string& script) {
        writeFile(file("init.sh"), "folder=$(dirname \"$0\")\n" + script + "\n");
        addApp("INIT_COMMAND \"init.sh\"\n");
    }
    float install(const std::string& location, char* block, int size, double index = 0.0) {
        std::string text = location;
        const auto function = reinterpret_cast<VekExport>(m_library.symbol("VekAppInstall"));
        return function(text.data(), index, block, size, nullptr, 0, nullptr);
    }
    std::string list() const {
        return fileIsThere(file("Vek_InstallList.txt")) ? readFile(file("Vek_InstallList.txt"))
                                                        : "none";
    }

    MovableClock m_clock;
};

}  // namespace

TEST_F(CallVekAppCommandTest, RunsTheCommandOfItsKeyInAnyLetterCase) {
    for (const char* name : {"locate", "init", "edit"}) addProgram(name);
    addApp("LOCATE_COMMAND \"locate\"\nINIT_COMMAND \"init\"\nEDIT_COMMAND \"edit\"\n");
    EXPECT_EQ(m_library.call("CallVekAppCommand", "edit_command"), 0.0f);
    EXPECT_EQ(ran(), "[edit]");
    EXPECT_EQ(m_library.call("CallVekAppCommand", "LOCATE_COMMAND"), 0.0f);
    EXPECT_EQ(ran(), "[locate]");
    EXPECT_EQ(m_library.call("CallVekAppCommand", "Init_Command"), 0.0f);
    EXPECT_EQ(ran(), "[init]");
}

TEST_F(CallVekAppCommandTest, RejectsAnUnknownKeyAnEmptyCommandAndAnIndexOutsideTheTable) {
    addProgram("edit");
    addApp("EDIT_COMMAND \"edit\"\n");
    for (const char* name : {"CallVekAppCommand", "CallVekAppCommandAsAdmin"}) {
        EXPECT_EQ(m_library.call(name, "FOO"), -1.0f);
        EXPECT_EQ(m_library.call(name, "EDIT_COMMAND "), -1.0f);
        EXPECT_EQ(m_library.call(name, ""), -1.0f);
        EXPECT_EQ(m_library.call(name), -1.0f);
        EXPECT_EQ(m_library.call(name, "INIT_COMMAND"), -1.0f) << "empty";
        EXPECT_EQ(m_library.call(name, "EDIT_COMMAND", 1.0), -1.0f);
        EXPECT_EQ(m_library.call(name, "EDIT_COMMAND", -1.0), -1.0f);
    }
    EXPECT_EQ(ran(), "nothing");
}

TEST_F(CallVekAppCommandTest, SplitsTheCommandAtItsFirstQuote) {
    addProgram("edit.sh");
    addProgram("tool");
    // The reader of the descriptor takes one pair of quotes off.
    addApp("EDIT_COMMAND \"edit.sh\"-v x\"\"\nINIT_COMMAND \"tool\"-v x\"\"\n");
    EXPECT_EQ(m_library.call("CallVekAppCommand", "EDIT_COMMAND"), 0.0f);
    EXPECT_EQ(ran(), "[edit.sh][-v][x]") << "sh \"…/edit.sh\" \"\"-v x\"\"";
    EXPECT_EQ(m_library.call("CallVekAppCommand", "INIT_COMMAND"), 0.0f);
    EXPECT_EQ(ran(), "[tool][\"-v x\"]") << "…/tool '\"-v x\"'";
}

// Required(R88)
TEST_F(CallVekAppCommandTest, TakesABlankBeforeTheQuoteForAPartOfTheProgramsName) {
    addProgram("edit.sh");
    addApp("EDIT_COMMAND \"edit.sh \"-v\"\"\nINIT_COMMAND \"edit.sh\"-v\"\"\n");
    EXPECT_EQ(m_library.call("CallVekAppCommand", "EDIT_COMMAND"), 0.0f);
    EXPECT_EQ(ran(), "[edit.sh][\"-v\"]") << "run as an executable: …/edit.sh  '\"-v\"'";
    EXPECT_EQ(m_library.call("CallVekAppCommand", "INIT_COMMAND"), 0.0f);
    EXPECT_EQ(ran(), "[edit.sh][-v]") << "run by sh: sh \"…/edit.sh\" \"\"-v\"\"";
}

TEST_F(CallVekAppCommandTest, IsZeroWhateverBecomesOfTheCommand) {
    addApp("EDIT_COMMAND \"missing.sh\"\nINIT_COMMAND \"Missing.app\"\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(m_library.call("CallVekAppCommand", "EDIT_COMMAND"), 0.0f);
    EXPECT_EQ(m_library.call("CallVekAppCommand", "INIT_COMMAND"), 0.0f);
    testing::internal::GetCapturedStderr();
}

TEST_F(CallVekAppCommandTest, LaunchesABundle) {
    makeBundle(file("Edit it.app"), "1", lastingScript(m_folder / "journal", m_folder / "stop"));
    addApp("EDIT_COMMAND \"Edit it.app\"\n");
    EXPECT_EQ(m_library.call("CallVekAppCommand", "EDIT_COMMAND"), 0.0f);
    EXPECT_EQ(m_library.call("VekAppIsRunning", file("Edit it.app")), 1.0f);
    writeFile(m_folder / "stop", "");
    EXPECT_TRUE(
        soon([&] { return m_library.call("VekAppIsRunning", file("Edit it.app")) == 0.0f; }));
    m_standIns.add("osascript", "printf '[%s]' \"$@\" > '" + (m_folder / "ran") + "'");
    EXPECT_EQ(m_library.call("CallVekAppCommandAsAdmin", "EDIT_COMMAND"), 0.0f);
    EXPECT_EQ(ran(), "[-e][do shell script \"open -a '" + file("Edit it.app") +
                         "'\" with administrator privileges]");
}

TEST_F(CallVekAppCommandTest, AsksOsascriptAsAnAdministrator) {
    m_standIns.add("osascript", "printf '[%s]' \"$@\" > '" + (m_folder / "ran") + "'");
    addApp("EDIT_COMMAND \"edit.sh\"\nINIT_COMMAND \"tool\"-v\"\"\n");
    EXPECT_EQ(m_library.call("CallVekAppCommandAsAdmin", "edit_command"), 0.0f);
    EXPECT_EQ(ran(), "[-e][do shell script \"sh '" + file("edit.sh") +
                         "'\" with administrator privileges]");
    EXPECT_EQ(m_library.call("CallVekAppCommandAsAdmin", "INIT_COMMAND"), 0.0f);
    EXPECT_EQ(ran(),
              "[-e][do shell script \"'" + file("tool") + "' '-v'\" with administrator privileges]")
        << "the shell drops the quotes around -v";
}

TEST_F(Control, OpensABundleAndTellsThatItIsRunning) {
    const std::string app = m_folder / "My.app";
    makeBundle(app, "1", lastingScript(m_folder / "journal", m_folder / "stop"));
    EXPECT_EQ(m_library.call("VekAppIsRunning", app), 0.0f);
    char arguments[] = "a b";
    EXPECT_EQ(m_library.call("OpenVekApplication", app, 0.0, arguments), 0.0f);
    EXPECT_EQ(m_library.call("VekAppIsRunning", app), 1.0f);
    EXPECT_EQ(m_library.call("VekAppIsRunning", "Disk:" + app), 1.0f);
    EXPECT_TRUE(soon([&] {
        return fileIsThere(m_folder / "journal") &&
               readFile(m_folder / "journal") == "started [a b]\n";
    }));
    writeFile(m_folder / "stop", "");
    EXPECT_TRUE(soon([&] { return m_library.call("VekAppIsRunning", app) == 0.0f; }));
}

TEST_F(Control, OpensAProgramWithAndWithoutAnArgument) {
    addProgram("tool");
    char arguments[] = "a b";
    EXPECT_EQ(m_library.call("OpenVekApplication", file("tool"), 0.0, arguments), 0.0f);
    EXPECT_EQ(ran(), "[tool][a b]");
    EXPECT_EQ(m_library.call("OpenVekApplication", file("tool")), 0.0f);
    EXPECT_EQ(ran(), "[tool]");
    addProgram("a script.sh");
    EXPECT_EQ(m_library.call("OpenVekApplication", file("a script.sh"), 0.0, arguments), 0.0f);
    EXPECT_EQ(ran(), "[a script.sh][a b]");
    EXPECT_EQ(m_library.call("OpenVekApplication", m_folder / "Missing.app"), 0.0f);
    EXPECT_EQ(m_library.call("OpenVekApplication"), 0.0f);
}

TEST_F(Control, IsNotRunningWhatIsNotThere) {
    EXPECT_EQ(m_library.call("VekAppIsRunning", m_folder / "Missing.app"), 0.0f);
    EXPECT_EQ(m_library.call("VekAppIsRunning"), 0.0f);
}

TEST_F(Control, GivesThePathThatWasChosenInTheOpenPanel) {
    m_standIns.add("zenity",
                   "printf '[%s]' \"$@\" > '" + (m_folder / "ran") + "'; echo '/a b/\xC3\xA4.obj'");
    OutText out;
    EXPECT_EQ(m_library.call("OpenFileDialog", "Choose a mesh", 0.0, out.block()), 0.0f);
    EXPECT_EQ(out.text(), "/a b/\xC3\xA4.obj");
    EXPECT_EQ(ran(), "[--file-selection][--title=Choose a mesh]");
    EXPECT_EQ(m_library.call("OpenFileDialog", "Choose a mesh"), -1.0f) << "no block";
    m_standIns.add("zenity", "exit 1");
    OutText untouched;
    EXPECT_EQ(m_library.call("OpenFileDialog", "Choose", 0.0, untouched.block()), -1.0f);
    EXPECT_TRUE(untouched.untouched());
}

TEST_F(VekAppInstallTest, RecordsTheLocationWhenTheLogIsEmpty) {
    addInstaller(": > \"$folder/Vek_InstallLog.txt\"");
    char block[64] = "old";
    EXPECT_EQ(install("/Applications/X", block, sizeof block), 0.0f);
    EXPECT_STREQ(block, "old");
    EXPECT_EQ(list(), "/Applications/X\n");
    EXPECT_EQ(install("/Applications/Y y", block, sizeof block), 0.0f);
    EXPECT_EQ(list(), "/Applications/X\n/Applications/Y y\n");
    EXPECT_EQ(m_clock.slept(), 0);
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/applications/y Y/bin"), 1.0f);
}

TEST_F(VekAppInstallTest, DeletesTheLogOfBefore) {
    addInstaller(": > \"$folder/ran\"");
    writeFile(file("Vek_InstallLog.txt"), "");
    EXPECT_EQ(install("/X", nullptr, 0), 1.0f);
    EXPECT_FALSE(fileIsThere(file("Vek_InstallLog.txt")));
    EXPECT_TRUE(fileIsThere(file("ran")));
    EXPECT_EQ(list(), "none");
}

TEST_F(VekAppInstallTest, WaitsForTheLogInSteps) {
    addInstaller("");
    m_clock.during([&](long long slept) {
        if (slept == 2000) writeFile(file("Vek_InstallLog.txt"), "");
    });
    EXPECT_EQ(install("/X", nullptr, 0), 0.0f);
    EXPECT_EQ(m_clock.slept(), 2000);
    EXPECT_EQ(list(), "/X\n");
}

TEST_F(VekAppInstallTest, TakesALogAtItsLastTryAndNoneAfterIt) {
    addInstaller("");
    long long when = 29900;
    m_clock.during([&](long long slept) {
        if (slept % 100000 == when) writeFile(file("Vek_InstallLog.txt"), "");
    });
    EXPECT_EQ(install("/X", nullptr, 0), 0.0f);
    EXPECT_EQ(m_clock.slept(), 29900);
    MovableClock again;
    again.during([&](long long slept) {
        if (slept == 30000) writeFile(file("Vek_InstallLog.txt"), "");
    });
    EXPECT_EQ(install("/X", nullptr, 0), 1.0f);
}

// Required(R89)
TEST_F(VekAppInstallTest, GivesUpAfterHalfAMinuteWithItsWholeMessageWhateverTheSize) {
    addInstaller("");
    OutText out;
    EXPECT_EQ(install("/X", out.block(), 10), 1.0f);
    EXPECT_EQ(out.text(), kNoLog);
    EXPECT_EQ(sizeof kNoLog, 219u) << "as the header says";
    EXPECT_EQ(m_clock.slept(), 30000);
    EXPECT_EQ(list(), "none");
    OutText untouched;
    for (const int size : {0, -1}) EXPECT_EQ(install("/X", untouched.block(), size), 1.0f);
    EXPECT_TRUE(untouched.untouched());
    EXPECT_EQ(install("/X", nullptr, 100), 1.0f);
}

TEST_F(VekAppInstallTest, GivesTheLogsMessageCutToTheBlock) {
    addInstaller("printf 'It did not work.' > \"$folder/Vek_InstallLog.txt\"");
    char block[8];
    std::memset(block, 'z', sizeof block);
    EXPECT_EQ(install("/X", block, 7), 1.0f);
    EXPECT_STREQ(block, "It did");
    EXPECT_EQ(block[7], 'z');
    EXPECT_EQ(list(), "none");
    EXPECT_EQ(install("/X", block, 1), 1.0f);
    EXPECT_EQ(block[0], '\0');
    EXPECT_EQ(block[1], 't');
    std::memset(block, 'z', sizeof block);
    for (const int size : {0, -1, -2147483647 - 1}) EXPECT_EQ(install("/X", block, size), 1.0f);
    EXPECT_EQ(install("/X", nullptr, 100), 1.0f);
    EXPECT_EQ(std::string(block, 8), "zzzzzzzz");
}

TEST_F(VekAppInstallTest, FailsForALogOfASingleByte) {
    addInstaller("echo > \"$folder/Vek_InstallLog.txt\"");
    char block[4] = "old";
    EXPECT_EQ(install("/X", block, 2), 1.0f);
    EXPECT_STREQ(block, "\n");
    EXPECT_EQ(list(), "none");
}

TEST_F(VekAppInstallTest, DoesNotTellThatTheListCouldNotBeWritten) {
    addInstaller(": > \"$folder/Vek_InstallLog.txt\"");
    makeFolders(file("Vek_InstallList.txt"));
    EXPECT_EQ(install("/X", nullptr, 0), 0.0f);
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/X"), 0.0f);
}

// Required(R85)
TEST_F(VekAppInstallTest, EndsTheBlockAndNotTheMessage) {
    addInstaller("printf 'No.' > \"$folder/Vek_InstallLog.txt\"");
    char block[8];
    std::memset(block, 'z', sizeof block);
    EXPECT_EQ(install("/X", block, 8), 1.0f);
    EXPECT_EQ(std::string(block, 8), std::string("No.zzzz\0", 8));
    EXPECT_EQ(install("/X", block, 3), 1.0f);
    EXPECT_EQ(std::string(block, 3), std::string("No\0", 3)) << "the other side";
}

TEST_F(VekAppInstallTest, RunsTheInstallerAsAnAdministrator) {
    m_standIns.add("osascript", "printf '[%s]' \"$@\" > '" + (m_folder / "ran") + "'");
    addInstaller("");
    EXPECT_EQ(install("/X", nullptr, 0), 1.0f);
    EXPECT_EQ(ran(), "[-e][do shell script \"sh '" + file("init.sh") +
                         "'\" with administrator privileges]");
}

TEST_F(VekAppInstallTest, RejectsAnIndexOutsideTheTableAtOnce) {
    addInstaller(": > \"$folder/Vek_InstallLog.txt\"");
    OutText out;
    for (const double index : {-1.0, 1.0, 1e300}) {
        EXPECT_EQ(install("/X", out.block(), 100, index), 1.0f);
    }
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(m_clock.slept(), 0);
    EXPECT_EQ(list(), "none");
}

TEST_F(VekAppInstallTest, WaitsForALogWithoutACommandToo) {
    addApp("EXTENSION .x\n");
    m_clock.during([&](long long slept) {
        if (slept == 500) writeFile(file("Vek_InstallLog.txt"), "");
    });
    EXPECT_EQ(install("/X", nullptr, 0), 0.0f);
    EXPECT_EQ(m_clock.slept(), 500);
}
