#include <cstring>

#include "bridge/bx_vek.h"
#include "exports/call_frame.h"
#include "exports/library_state.h"
#include "foundation/bx_time_service.h"
#include "os/bx_disk_server.h"
#include "os/bx_file.h"

namespace {

const char kInstallLog[] = "Vek_InstallLog.txt";
const char kInstallList[] = "Vek_InstallList.txt";

const char kNoLog[] =
    "An error occurred during installation.\n"
    "One possible cause could be unsufficient permissions in target application installation "
    "folder.\n"
    "Please run Dorvia as an administrator and try again to install the Vek application!";

// The command of the descriptor that has this key; empty where there is none.
BXString commandOf(const BXVekApp& app, const BXString& key) {
    if (key.equalsNoCase("LOCATE_COMMAND")) return app.locateCommand;
    if (key.equalsNoCase("INIT_COMMAND")) return app.initCommand;
    if (key.equalsNoCase("EDIT_COMMAND")) return app.editCommand;
    return BXString();
}

using Launch = bool (*)(const BXString& path, const BXString& arguments);

// Whether there was a command to run.
bool runCommand(const BXVekApp& app, const BXString& key, Launch launch) {
    const BXString command = commandOf(app, key);
    if (command.isEmpty()) return false;
    const int quote = command.findFirst("\"");
    // Required(R88): a blank in front of the quote belongs to the name of the program.
    const BXString program = quote < 0 ? command : command.subString(0, quote);
    const BXString arguments = quote < 0 ? BXString() : command.subString(quote);
    launch(BXVek::getAppFile(app.id, program), arguments);
    return true;
}

float callCommand(double value, const BXString& key, Launch launch) {
    const BXVekApp* const app = vekAppAt(indexArgument(value));
    return app && runCommand(*app, key, launch) ? 0.0f : -1.0f;
}

// The log, once it is there; not open when it does not come in half a minute.
BXFile waitForLog(const BXString& path) {
    constexpr int kTries = 300;
    constexpr unsigned int kPauseMS = 100;
    for (int i = 0; i < kTries; ++i) {
        BXFile log(path.getValidFilePath(), BXFile::Access::Read);
        if (log.isOpen()) return log;
        BXTimeService::sleep(kPauseMS);
    }
    return BXFile();
}

bool takesText(const char* buffer, int size) {
    return buffer && size >= 1;
}

// Required(R85): the NUL goes into the block's last byte, also behind a shorter message.
void giveMessage(const BXFile& log, char* buffer, int size) {
    if (!takesText(buffer, size)) return;
    log.readAt(0, buffer, static_cast<std::size_t>(size));
    buffer[size - 1] = '\0';
}

void recordInstallation(const BXVekApp& app, const BXString& location) {
    const BXString line = location + "\n";
    const BXString list = BXVek::getAppFile(app.id, kInstallList);
    BXFile::append(list.getValidFilePath(), line.c_str(), static_cast<std::size_t>(line.length()));
}

float install(const BXVekApp& app, const BXString& location, char* buffer, int size) {
    const BXString logPath = BXVek::getAppFile(app.id, kInstallLog);
    BXDiskServer::deleteFile(logPath);
    runCommand(app, "INIT_COMMAND", BXDiskServer::launchApplicationAsAdmin);
    const BXFile log = waitForLog(logPath);
    if (!log.isOpen()) {
        // Required(R89): whole, whatever the size.
        if (takesText(buffer, size)) std::memcpy(buffer, kNoLog, sizeof kNoLog);
        return 1.0f;
    }
    if (log.size() > 0) {
        giveMessage(log, buffer, size);
        return 1.0f;
    }
    recordInstallation(app, location);
    return 0.0f;
}

}  // namespace

VEK_DEFINE(VekAppInstall) {
    return guarded(1.0f, [&] {
        const BXVekApp* const app = vekAppAt(indexArgument(value));
        return app ? install(*app, text, buffer1, buffer1Size) : 1.0f;
    });
}

VEK_DEFINE(VekAppIsRunning) {
    return guarded(0.0f, [&] {
        BXProcessSerialNumber process;
        return yesOrNo(BXDiskServer::getRunningProcess(text, process));
    });
}

VEK_DEFINE(OpenVekApplication) {
    return guarded(0.0f, [&] {
        BXDiskServer::launchApplication(text, BXString(buffer1));
        return 0.0f;
    });
}

VEK_DEFINE(CallVekAppCommand) {
    return guarded(-1.0f,
                   [&] { return callCommand(value, text, BXDiskServer::launchApplication); });
}

VEK_DEFINE(CallVekAppCommandAsAdmin) {
    return guarded(
        -1.0f, [&] { return callCommand(value, text, BXDiskServer::launchApplicationAsAdmin); });
}
