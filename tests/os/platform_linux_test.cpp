// Bundles that are launched, found running, reached and gone, for real.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "os/bx_disk_server.h"
#include "os/detached_process.h"
#include "tests/os/disk_text.h"
#include "tests/support/bundle.h"
#include "tests/support/stand_in.h"

namespace {

using Texts = BXArray<BXString>;

class LinuxBundle : public testing::Test {
protected:
    LinuxBundle() { makeBundle(app(), "12.3.1", lastingScript(journal(), m_folder / "stop")); }
    ~LinuxBundle() override { stop(); }

    std::string app() const { return m_folder / "My App.app"; }
    std::string journal() const { return m_folder / "journal"; }
    std::string said() const { return fileIsThere(journal()) ? readFile(journal()) : ""; }
    bool says(const std::string& text) const {
        return soon([&] { return said().find(text) != std::string::npos; });
    }
    bool isRunning() const {
        BXProcessSerialNumber process;
        return BXDiskServer::getRunningProcess(text(app()), process);
    }
    void stop() const {
        writeFile(m_folder / "stop", "");
        EXPECT_TRUE(soon([&] { return !isRunning(); }));
        unlink((m_folder / "stop").c_str());
    }

    TempFolder m_folder;
};

}  // namespace

TEST_F(LinuxBundle, IsLaunchedFoundRunningAndFoundGone) {
    EXPECT_FALSE(isRunning());
    EXPECT_TRUE(BXDiskServer::launchApplication(text(app()), Texts{"a b", "c"}));
    BXProcessSerialNumber process;
    EXPECT_TRUE(BXDiskServer::getRunningProcess(text(app()), process));
    EXPECT_EQ(process.high, 0u);
    EXPECT_EQ(kill(static_cast<pid_t>(process.low), 0), 0) << "the low half is the process id";
    EXPECT_TRUE(says("started [a b] [c]\n"));
    stop();
    EXPECT_TRUE(says("ended\n"));
    EXPECT_FALSE(isRunning());
}

TEST_F(LinuxBundle, LeavesNoChildBehind) {
    EXPECT_TRUE(BXDiskServer::launchApplication(text(app()), ""));
    EXPECT_TRUE(says("started"));
    stop();
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(LinuxBundle, IsFoundThroughLinksAndOtherSpellingsOfItsPath) {
    ASSERT_EQ(symlink(app().c_str(), (m_folder / "link.app").c_str()), 0);
    EXPECT_TRUE(BXDiskServer::launchApplication(at(m_folder, "link.app"), ""));
    EXPECT_TRUE(isRunning());
    BXProcessSerialNumber process;
    EXPECT_TRUE(BXDiskServer::getRunningProcess(at(m_folder, "./link.app"), process));
    EXPECT_TRUE(BXDiskServer::getRunningProcess(text("Disk:" + app() + "/"), process));
}

TEST_F(LinuxBundle, OfABinaryIsFoundRunningToo) {
    const std::string other = m_folder / "Other.app";
    makeBundle(other, "1", readFile("/bin/sleep"));
    EXPECT_TRUE(BXDiskServer::launchApplication(text(other), "30"));
    BXProcessSerialNumber process;
    ASSERT_TRUE(BXDiskServer::getRunningProcess(text(other), process));
    EXPECT_FALSE(isRunning()) << "another bundle";
    EXPECT_EQ(kill(static_cast<pid_t>(process.low), SIGKILL), 0);
    EXPECT_TRUE(soon([&] { return !BXDiskServer::getRunningProcess(text(other), process); }));
    EXPECT_TRUE(process.isNone());
}

TEST_F(LinuxBundle, WhoseScriptAsksEnvForItsInterpreterIsFoundRunning) {
    const std::string other = m_folder / "Other.app";
    std::string script = lastingScript(journal(), m_folder / "stop");
    script.replace(0, script.find('\n'), "#!/usr/bin/env sh");
    makeBundle(other, "1", script);
    EXPECT_TRUE(BXDiskServer::launchApplication(text(other), ""));
    EXPECT_TRUE(says("started"));
    BXProcessSerialNumber process;
    EXPECT_TRUE(BXDiskServer::getRunningProcess(text(other), process));
    writeFile(m_folder / "stop", "");
    EXPECT_TRUE(soon([&] { return !BXDiskServer::getRunningProcess(text(other), process); }));
}

TEST_F(LinuxBundle, IsFoundRunningWhereItWasStartedByARelativePath) {
    // Another one of the same name, in the folder from where it is asked for.
    makeFolders(m_folder / "other");
    makeBundle(m_folder / "other/My App.app", "1", "#!/bin/sh\n");
    const pid_t child = fork();
    if (child == 0) {
        if (chdir(m_folder.path().c_str()) == 0) {
            execl("My App.app/Contents/MacOS/program", "program", static_cast<char*>(nullptr));
        }
        _exit(127);
    }
    EXPECT_TRUE(says("started"));
    const BXString before = BXDiskServer::getCurrentPath();
    ASSERT_TRUE(BXDiskServer::openFolder(at(m_folder, "other")));
    EXPECT_TRUE(isRunning());
    BXProcessSerialNumber process;
    EXPECT_FALSE(BXDiskServer::getRunningProcess(at(m_folder, "other/My App.app"), process));
    EXPECT_FALSE(BXDiskServer::getRunningProcess("My App.app", process));
    ASSERT_TRUE(BXDiskServer::openFolder(before));
    writeFile(m_folder / "stop", "");
    waitpid(child, nullptr, 0);
}

TEST_F(LinuxBundle, IsNotRunningWhereAProgramOnlyHasItsNameAsAnArgument) {
    const std::string program = app() + "/Contents/MacOS/program";
    const pid_t child = fork();
    if (child == 0) {
        execlp("tail", "tail", "-f", program.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    const std::string link = "/proc/" + std::to_string(child) + "/exe";
    char exe[4096] = {};
    EXPECT_TRUE(soon([&] {
        return readlink(link.c_str(), exe, sizeof exe - 1) > 0 && std::strstr(exe, "tail");
    })) << exe;
    EXPECT_FALSE(isRunning());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

TEST_F(LinuxBundle, IsStartedAnewByALaunchAndReachedByLaunchIfNecessary) {
    EXPECT_TRUE(BXDiskServer::launchApplicationIfNecessary(text(app())));
    EXPECT_TRUE(says("started []\n"));
    EXPECT_TRUE(BXDiskServer::launchApplicationIfNecessary(text(app())));
    usleep(200000);
    EXPECT_EQ(said().find("started"), said().rfind("started")) << "once";
    EXPECT_TRUE(BXDiskServer::launchApplication(text(app()), ""));
    EXPECT_TRUE(soon([&] { return said().find("started") != said().rfind("started"); }));
}

TEST_F(LinuxBundle, GetsADocumentWithItsLaunchAndThroughItsExecutableWhenItRuns) {
    writeFile(m_folder / "a b.obj", "");
    const std::string document = m_folder / "a b.obj";
    EXPECT_TRUE(BXDiskServer::openFileInApplication(text(app()), text("Disk:" + document)));
    EXPECT_TRUE(says("started [" + document + "]\n"));
    EXPECT_EQ(said(), "started [" + document + "]\n") << "once, with the document";
    writeFile(m_folder / "second.obj", "");
    EXPECT_TRUE(BXDiskServer::openFileInApplication(text(app()), at(m_folder, "second.obj")));
    EXPECT_TRUE(says("started [" + (m_folder / "second.obj") + "]\n"));
    EXPECT_FALSE(BXDiskServer::openFileInApplication(text(app()), at(m_folder, "missing.obj")));
    EXPECT_FALSE(BXDiskServer::openFileInApplication(at(m_folder, "No.app"), text(document)));
}

TEST_F(LinuxBundle, GetsARelativeDocumentByItsWholePath) {
    const BXString before = BXDiskServer::getCurrentPath();
    ASSERT_TRUE(BXDiskServer::openFolder(text(m_folder.path())));
    writeFile("plain.obj", "");
    const std::string here = BXDiskServer::getCurrentPath().c_str();
    EXPECT_TRUE(BXDiskServer::openFileInApplication(text(app()), "plain.obj"));
    ASSERT_TRUE(BXDiskServer::openFolder(before));
    EXPECT_TRUE(says("started [" + here + "/plain.obj]\n"));
}

TEST_F(LinuxBundle, TakesNoEventAndNoKey) {
    EXPECT_TRUE(BXDiskServer::launchApplication(text(app()), ""));
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication(text(app()), 0x61, "t", Texts()));
    EXPECT_FALSE(BXDiskServer::sendKeyEventToApplication(text(app()), 12, 0));
    EXPECT_TRUE(BXDiskServer::sendKeyEventToApplication(text(app()), 0, 0));
}

TEST_F(LinuxBundle, IsLaunchedWithArgumentsInPlaceOfAnEvent) {
    EXPECT_FALSE(BXDiskServer::sendAppleEventToApplication(text(app()), 0x61, "t", Texts{"x y"}));
    EXPECT_TRUE(says("started [x y]\n"));
}

TEST_F(LinuxBundle, TellsWhatItIs) {
    bool is64Bit = false;
    int major = 0, minor = 0;
    const auto info = [&](const std::string& program, const char* version) {
        makeBundle(app(), version, program);
        return BXDiskServer::getApplicationInfo(text("Disk:" + app()), is64Bit, major, minor);
    };
    const std::string fat(
        "\xCA\xFE\xBA\xBE\0\0\0\2\0\0\0\7\0\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0"
        "\1\0\0\7\0\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0",
        48);
    EXPECT_TRUE(info(fat, "12.3.1"));
    EXPECT_TRUE(is64Bit);
    EXPECT_EQ(major, 12);
    EXPECT_EQ(minor, 3);
    EXPECT_TRUE(info(std::string("\xCE\xFA\xED\xFE\7\0\0\0", 8), "7"));
    EXPECT_FALSE(is64Bit);
    EXPECT_EQ(major, 7);
    EXPECT_EQ(minor, 0);
    EXPECT_FALSE(info(fat, "x1"));
    EXPECT_TRUE(is64Bit);
    EXPECT_EQ(major, 0);
    EXPECT_TRUE(info(readFile("/bin/sleep"), "1.2"));
    EXPECT_FALSE(info("#!/bin/sh\n", "1.2")) << "a script runs on any processor";
    EXPECT_FALSE(info(fat, std::string(256, '1').c_str())) << "a version has at most 255 bytes";
    EXPECT_TRUE(info(fat, std::string(255, '1').c_str()));
    EXPECT_FALSE(BXDiskServer::getApplicationInfo(at(m_folder, "No.app"), is64Bit, major, minor));
}

TEST_F(LinuxBundle, IsNotLaunchedWhereItIsNoneOrItsProgramCannotRun) {
    const auto launches = [&](const std::string& name) {
        return BXDiskServer::launchApplication(at(m_folder, name.c_str()), "");
    };
    makeFolders(m_folder / "Empty.app");
    EXPECT_FALSE(launches("Empty.app"));
    EXPECT_FALSE(launches("Missing.app"));
    writeFile(m_folder / "File.app", "");
    EXPECT_FALSE(launches("File.app"));
    makeBundle(m_folder / "Mac.app", "1", std::string("\xCE\xFA\xED\xFE\7\0\0\0", 8));
    EXPECT_FALSE(launches("Mac.app")) << "no program of this system";
    makeBundle(m_folder / "Plain.app", "1", "#!/bin/sh\n");
    EXPECT_TRUE(launches("Plain.app"));
    chmod((m_folder / "Plain.app/Contents/MacOS/program").c_str(), 0644);
    EXPECT_FALSE(launches("Plain.app"));
    writeFile(
        m_folder / "Plain.app/Contents/Info.plist",
        "<plist><dict><key>CFBundleExecutable</key><string>../../../x</string></dict></plist>");
    writeFile(m_folder / "x", "#!/bin/sh\n");
    chmod((m_folder / "x").c_str(), 0755);
    EXPECT_FALSE(launches("Plain.app")) << "outside its bundle";
}

TEST_F(LinuxBundle, HasAnExecutableOfItsOwnNameWhereNoneIsNamed) {
    writeFile(app() + "/Contents/Info.plist", "<plist><dict></dict></plist>");
    EXPECT_FALSE(BXDiskServer::launchApplication(text(app()), ""));
    rename((app() + "/Contents/MacOS/program").c_str(), (app() + "/Contents/MacOS/My App").c_str());
    EXPECT_TRUE(BXDiskServer::launchApplication(text(app()), ""));
    EXPECT_TRUE(says("started"));
}

TEST_F(LinuxBundle, IsTheSameBundleWithASeparatorBehindIt) {
    makeBundle(app(), "3", readFile("/bin/sleep"));
    writeFile(app() + "/Contents/Info.plist",
              "<plist><dict><key>CFBundleVersion</key><string>3</string></dict></plist>");
    rename((app() + "/Contents/MacOS/program").c_str(), (app() + "/Contents/MacOS/My App").c_str());
    bool is64Bit = false;
    int major = 0, minor = 0;
    for (const char* behind : {"", "/", "//"}) {
        EXPECT_TRUE(BXDiskServer::getApplicationInfo(text(app() + behind), is64Bit, major, minor));
    }
}

// The report of the start must not come to lie where the program's own streams go.
TEST_F(LinuxBundle, IsLaunchedByAProcessWithoutStandardStreams) {
    for (const int streams : {1, 2, 3}) {
        const pid_t child = fork();
        if (child == 0) {
            for (int stream = 0; stream < streams; ++stream) close(stream);
            _exit(BXDiskServer::launchApplication(text(app()), "") ? 0 : 1);
        }
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << streams;
    }
}

TEST_F(LinuxBundle, StartsWithoutWhatThisProcessHasOpenOrIgnores) {
    const std::string report = m_folder / "report";
    // What its children inherit: the shell itself blocks signals while it starts them.
    makeBundle(app(), "1",
               "#!/bin/sh\nls /proc/self/fd | wc -l > '" + report + "'\npwd >> '" + report +
                   "'\ngrep -E 'SigIgn|SigBlk' /proc/self/status >> '" + report +
                   "'\necho end >> '" + report + "'\n");
    const int inherited = open("/dev/null", O_RDONLY);
    signal(SIGUSR1, SIG_IGN);
    EXPECT_TRUE(BXDiskServer::launchApplication(text(app()), ""));
    signal(SIGUSR1, SIG_DFL);
    close(inherited);
    ASSERT_TRUE(soon(
        [&] { return fileIsThere(report) && readFile(report).find("end") != std::string::npos; }));
    // ls has the three streams and the folder that it lists.
    const std::string said = readFile(report);
    EXPECT_EQ(said.rfind("4\n/\nSigBlk:\t0000000000000000\nSigIgn:\t", 0), 0u) << said;
    // But for the two that the C library keeps for itself, and lets nobody set.
    const std::size_t ignored = said.find("SigIgn:\t") + 8;
    EXPECT_EQ(std::stoull(said.substr(ignored), nullptr, 16) & ~0x180000000ull, 0u) << said;
}

namespace {

class Zenity : public StandIns {
public:
    explicit Zenity(const std::string& script) { add("zenity", script); }
};

std::string chosenWith(const char* title) {
    const std::unique_ptr<char[]> path(runCocoaOpenFileBrowser(title));
    return path ? path.get() : "(none)";
}

}  // namespace

TEST(LinuxOpenPanel, GivesWhatZenitySaysLessItsLineEnd) {
    const TempFolder folder;
    const Zenity zenity("printf '%s|' \"$@\" > '" + (folder / "asked") +
                        "'\necho '/a b/\xC3\xA4 \"x\".obj'\n");
    EXPECT_EQ(chosenWith("Choose 'a' \xE2\x80\xA6"), "/a b/\xC3\xA4 \"x\".obj");
    EXPECT_EQ(readFile(folder / "asked"), "--file-selection|--title=Choose 'a' \xE2\x80\xA6|");
    EXPECT_EQ(chosenWith(nullptr), "/a b/\xC3\xA4 \"x\".obj");
    EXPECT_EQ(readFile(folder / "asked"), "--file-selection|");
}

TEST(LinuxOpenPanel, GivesNoneWhereItIsCancelledOrSaysNothing) {
    {
        const Zenity zenity("echo /a\nexit 1\n");
        EXPECT_EQ(chosenWith("t"), "(none)");
    }
    const Zenity zenity("echo\n");
    EXPECT_EQ(chosenWith("t"), "(none)");
}

TEST(LinuxOpenPanel, GivesThePathAlsoInAProcessThatIgnoresItsChildren) {
    signal(SIGCHLD, SIG_IGN);
    {
        const Zenity zenity("echo /chosen");
        EXPECT_EQ(chosenWith("t"), "/chosen");
    }
    {
        const Zenity zenity("exit 1");
        EXPECT_EQ(chosenWith("t"), "(none)");
    }
    signal(SIGCHLD, SIG_DFL);
}

TEST(LinuxOpenPanel, LeavesNothingOpenAndNoChildBehind) {
    const TempFolder folder;
    // A number that ls does not take for the folder that it lists.
    const int inherited = fcntl(0, F_DUPFD_CLOEXEC, 50);
    const Zenity zenity("ls /proc/self/fd > '" + (folder / "open") + "'; echo /a");
    EXPECT_EQ(chosenWith("t"), "/a");
    close(inherited);
    const std::string listed = "\n" + readFile(folder / "open");
    EXPECT_NE(listed.find("\n0\n1\n"), std::string::npos) << listed;
    EXPECT_EQ(listed.find("\n" + std::to_string(inherited) + "\n"), std::string::npos) << listed;
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(LinuxOpenPanel, GivesAPathOfAnyLength) {
    const Zenity zenity("printf '/%100000d\\n' 0\n");
    EXPECT_EQ(chosenWith("t").size(), 100001u);
}

TEST(LinuxOpenPanel, GivesNoneWhereThereIsNoZenity) {
    const TempFolder empty;
    const std::string path = std::getenv("PATH");
    setenv("PATH", empty.path().c_str(), 1);
    EXPECT_EQ(chosenWith("t"), "(none)");
    setenv("PATH", path.c_str(), 1);
}

TEST(RunAndRead, RejectsNoCommand) {
    BXString output("old");
    EXPECT_FALSE(bxRunAndRead({}, output));
    EXPECT_STREQ(output.c_str(), "old");
}
