#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tools/validate/results.h"
#include "tools/validate/shifted_clock.h"
#include "tools/validate/stand_ins.h"

namespace {

const std::string kLog = tree::app("Alpha", "Vek_InstallLog.txt");
const std::string kInstalled = tree::app("Alpha", "Vek_InstallList.txt");
const std::string kArguments = tree::project("arguments");

// A script that writes what it is called with, each argument in a line.
void putScript(const std::string& path) {
    tree::write(path,
                "#!/bin/sh\nfor word in \"$@\"; do echo \"$word\"; done >'" + kArguments + "'\n");
    chmod(path.c_str(), 0755);
}

// Where the clock cannot be set, this would take the half minute.
void expectNoLog(Session& session) {
    constexpr std::size_t kLength = 218;
    if (!canShiftClock()) return;
    tree::write(tree::app("Alpha", "init.sh"), ":\n");
    const SkippedWaiting skipped;
    const StatedCall& call = statedCall("VekAppInstall");
    Arguments arguments(call);
    session.expect(1.0f, call, arguments, "where no log comes");
    session.expectThat(!arguments.own1.isUntouched() && arguments.own1.text().size() == kLength,
                       "VekAppInstall gave no message of 219 bytes where no log came");
}

void expectInstalling(Session& session) {
    HostBlock block = HostBlock::out();
    session.expect(0.0f, "VekAppInstall", "/Applications/New", 0.0, block.data());
    session.expectFile(kInstalled, "/Applications/Alpha\n/Applications/New\n");
    tree::write(tree::app("Alpha", "init.sh"), "printf 'no room' >'" + kLog + "'\n");
    const StatedCall& call = statedCall("VekAppInstall");
    Arguments arguments(call);
    session.expect(1.0f, call, arguments, "for a log that says why not");
    session.expectThat(std::string(arguments.block1, 7) == "no room",
                       "VekAppInstall did not give the message of the log");
    Arguments cut(call);
    cut.size1 = 5;
    session.expect(1.0f, call, cut, "for a small block");
    session.expectText(cut.own1, "no r");
    for (const int size : {0, -1}) {
        Arguments nothing(call);
        nothing.size1 = size;
        session.expect(1.0f, call, nothing, "for a block of size " + std::to_string(size));
        session.expectUntouched(nothing.own1);
    }
    expectNoLog(session);
    session.expectFile(kInstalled, "/Applications/Alpha\n/Applications/New\n");
    HostBlock none = HostBlock::out();
    session.expect(1.0f, "VekAppInstall", "/Applications/New", 7.0, none.data());
}

void expectCommands(Session& session, const std::string& scratch) {
    for (const char* name : {"CallVekAppCommand", "CallVekAppCommandAsAdmin"}) {
        remove(kArguments.c_str());
        takeAsked(scratch);
        session.expect(0.0f, name, "edit_command");
        const bool asksAdmin = takeAsked(scratch).compare(0, 10, "osascript\n") == 0;
        session.expectThat(asksAdmin == (std::string(name) == "CallVekAppCommandAsAdmin"),
                           std::string(name) + (asksAdmin ? " asked" : " did not ask") +
                               " for an administrator's password");
        session.expectThat(tree::isThere(kArguments),
                           std::string(name) + " did not run the command");
        session.expect(-1.0f, name, "FOO");
        session.expect(-1.0f, name, "LOCATE_COMMAND");
        session.expect(-1.0f, name, "EDIT_COMMAND", 7.0);
        session.expect(-1.0f, name, "EDIT_COMMAND", -1.0);
    }
}

void expectOpening(Session& session) {
    HostBlock argument = HostBlock::in("two words");
    session.expect(0.0f, "OpenVekApplication", tree::project("script.sh"), 0.0, argument.data());
    session.expectFile(kArguments, "two words\n");
    session.expect(0.0f, "OpenVekApplication", tree::project("script.sh"));
    session.expectFile(kArguments, "");
    session.expect(0.0f, "OpenVekApplication", tree::project("nowhere.app"));
}

#ifdef __linux__

// A bundle that sleeps.
pid_t startBundle(const std::string& bundle) {
    const std::string program = bundle + "/Contents/MacOS/Sleeper";
    tree::makeFolder(bundle + "/Contents/MacOS");
    tree::write(
        bundle + "/Contents/Info.plist",
        "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict><key>CFBundleExecutable</key>"
        "<string>Sleeper</string></dict></plist>\n");
    std::filesystem::copy_file("/bin/sleep", program);
    chmod(program.c_str(), 0755);
    const pid_t process = fork();
    if (process != 0) return process;
    execl(program.c_str(), program.c_str(), "1000", nullptr);
    _exit(127);
}

void expectRunning(Session& session) {
    // Another validator's has the same path in its own view.
    const std::string bundle = tree::project("Sleeper" + std::to_string(getpid()) + ".app");
    session.expect(0.0f, "VekAppIsRunning", bundle);
    const pid_t process = startBundle(bundle);
    float isRunning = 0.0f;
    for (int i = 0; i < 200 && isRunning == 0.0f; ++i) {
        isRunning = session.call("VekAppIsRunning", bundle);
        usleep(5000);
    }
    session.expectThat(isRunning == 1.0f, "VekAppIsRunning did not find a bundle that runs");
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    session.expect(0.0f, "VekAppIsRunning", bundle);
}

#else

// Bundles are launched through the system, which is not for a check to ask.
void expectRunning(Session&) {}

#endif

}  // namespace

void checkControlResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "control");
    tree::make();
    putScript(tree::app("Alpha", "edit.sh"));
    putScript(tree::project("script.sh"));
    tree::write(tree::app("Alpha", "Vek_Info.txt"), "INIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n");
    Session session(settings, report);
    session.expect(1.0f, "InitializeVek", "/Applications");
    expectInstalling(session);
    expectCommands(session, settings.scratch);
    expectOpening(session);
    expectRunning(session);
}
