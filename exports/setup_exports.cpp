#include "bridge/bx_vek.h"
#include "bridge/bx_vek_app_parser.h"
#include "config/bx_generic_config_file_parser.h"
#include "exports/call_frame.h"
#include "exports/library_state.h"
#include "os/bx_disk_server.h"
#include "os/bx_folder.h"
#include "os/platform.h"

namespace {

using Parser = BXGenericConfigFileParser;

constexpr std::size_t kMostApps = 32;
const char kConfigFile[] = "Vek_Config.txt";
const char kInfoFile[] = "Vek_Info.txt";
const char kUnlockedKey[] = "APPS_UNLOCKED";

const char* hostName() {
    return sizeof(void*) == 8 ? "/Dorvia64.app" : "/Dorvia.app";
}

void recordHost(const BXString& folder) {
    const BXString host = folder + hostName();
    BXVek::setDorviaPath(host.getValidFilePath());
}

bool isUnlocked(const BXString& configFile) {
    const BXString value = Parser::findTokenInConfigFile(configFile, kUnlockedKey, nullptr);
    return !value.isEmpty() && Parser::paramToBool(value.c_str());
}

void markUnlocked(const BXString& configFile) {
    Parser::replaceTokenInConfigFile(configFile, kUnlockedKey, "TRUE", nullptr);
}

// Takes the mark off an application that was downloaded, which keeps it from being started.
void unlock(const BXString& shellPath) {
    BXPlatform::current().runShellCommand("xattr -d com.apple.quarantine " + shellPath);
}

void unlockHubHelpers() {
    if (!BXDiskServer::folderExists(BXVek::s_VekHubFolder)) return;
    const BXString configFile = BXVek::getDorviaFile(kConfigFile);
    if (isUnlocked(configFile)) return;
    const char* const helpers[] = {"VekHubFromApp.app", "VekLocateApp.app",
                                   "VekMakeObjectPath.app"};
    for (const char* helper : helpers) {
        const BXString path = BXVek::getDorviaFile(helper);
        if (BXDiskServer::folderExists(path)) unlock(path);
    }
    markUnlocked(configFile);
}

void unlockAppHelpers(const BXString& app) {
    const BXString configFile = BXVek::getAppFile(app, kConfigFile);
    if (isUnlocked(configFile)) return;
    BXFolder folder(BXVek::getAppFolder(app).c_str());
    BXFolder::Entry entry;
    while (folder.nextBelow(entry)) {
        const BXString name(entry.name);
        if (!entry.isFolder || !name.endsWith(".app", false)) continue;
        unlock("\"" + BXVek::getAppFile(app, name) + "\"");
    }
    markUnlocked(configFile);
}

// The ids of the target applications, in the order in which the file system lists their folders.
BXArray<BXString> findApps() {
    BXArray<BXString> apps;
    apps.reserve(kMostApps);
    BXFolder folder(BXVek::s_VekAppsFolder.c_str());
    BXFolder::Entry entry;
    while (apps.size() < kMostApps && folder.nextBelow(entry)) {
        if (!entry.isFolder) continue;
        if (!BXDiskServer::fileExists(BXVek::getAppFile(entry.name, kInfoFile))) continue;
        apps.emplace_back(entry.name);
    }
    return apps;
}

BXVekApp readApp(const BXString& id) {
    BXVekAppParser parser;
    parser.parseFile(BXVek::getAppFile(id, kInfoFile));
    BXVekApp app(parser);
    app.id = id;
    return app;
}

}  // namespace

VEK_DEFINE(InitializeVek) {
    // Filled aside: a table of which a part is missing has no place, and the result is then 0.
    s_vekApps.clear();
    return guarded(0.0f, [&] {
        recordHost(text);
        unlockHubHelpers();
        BXArray<BXVekApp> apps;
        for (const BXString& id : findApps()) {
            apps.push_back(readApp(id));
            unlockAppHelpers(id);
        }
        apps.swap(s_vekApps);
        return static_cast<float>(s_vekApps.size());
    });
}

VEK_DEFINE(VekSetExportScale) {
    BXVek::s_scale = value;
    return 0.0f;
}

VEK_DEFINE(VekSetExportOffsetX) {
    BXVek::s_offsetX = value;
    return 0.0f;
}

VEK_DEFINE(VekSetExportOffsetY) {
    BXVek::s_offsetY = value;
    return 0.0f;
}

VEK_DEFINE(VekSetExportOffsetZ) {
    BXVek::s_offsetZ = value;
    return 0.0f;
}

VEK_DEFINE(PrintInLog) {
    return 0.0f;
}

VEK_DEFINE(DeclareMacroActivated) {
    return 0.0f;
}
