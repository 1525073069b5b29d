#include <climits>
#include <string>

#include "bridge/bx_vek.h"
#include "config/line_walker.h"
#include "exports/call_frame.h"
#include "exports/library_state.h"
#include "os/bx_disk_server.h"
#include "os/bx_file.h"

namespace {

float textFieldOut(double value, BXString BXVekApp::*field, char* buffer) {
    const BXVekApp* app = vekAppAt(indexArgument(value));
    if (app) textOut(buffer, app->*field);
    return 0.0f;
}

// Whether an odd number of the bits of `mask` is set: each flip and switch mirrors once.
bool isOdd(unsigned int switches, unsigned int mask) {
    bool odd = false;
    for (unsigned int rest = switches & mask; rest; rest &= rest - 1) odd = !odd;
    return odd;
}

constexpr unsigned int kImportMirrors = BXVekApp::IMPORT_FLIP_X | BXVekApp::IMPORT_FLIP_Y |
                                        BXVekApp::IMPORT_FLIP_Z | BXVekApp::IMPORT_SWITCH_YZ;
constexpr unsigned int kExportMirrors = BXVekApp::EXPORT_FLIP_X | BXVekApp::EXPORT_FLIP_Y |
                                        BXVekApp::EXPORT_FLIP_Z | BXVekApp::EXPORT_SWITCH_YZ;

void takeUpSwitches(unsigned int switches) {
    BXVek::s_ioPref = switches;
    BXVek::s_importReverse = isOdd(switches, kImportMirrors);
    BXVek::s_exportReverse = isOdd(switches, kExportMirrors);
}

int findApp(const BXString& id) {
    for (std::size_t i = 0; i < s_vekApps.size(); ++i) {
        if (s_vekApps[i].id.equalsNoCase(id)) return static_cast<int>(i);
    }
    return -1;
}

// Whether the location begins with the line, so that a recorded folder holds all that is in it.
// Required(R86): the line may also end within a name: "/X" holds "/Xtra".
bool isInstalledAt(const char* begin, const char* end, const BXString& location) {
    if (end - begin > INT_MAX) return false;
    return BXString::cmpNoCase(begin, location.c_str(), static_cast<int>(end - begin)) == 0;
}

bool isInstalled(const BXVekApp& app, const BXString& location) {
    const BXString path = BXVek::getAppFile(app.id, "Vek_InstallList.txt");
    std::string list;
    if (!BXFile::readWhole(path.getValidFilePath(), list)) return false;
    BXLineWalker lines(list.data(), list.data() + list.size());
    const char* begin;
    const char* end;
    while (lines.next(begin, end)) {
        if (trimLine(begin, end) && isInstalledAt(begin, end, location)) return true;
    }
    return false;
}

}  // namespace

VEK_DEFINE(GetVekAppId) {
    return guarded(0.0f, [&] { return textFieldOut(value, &BXVekApp::id, buffer1); });
}

VEK_DEFINE(GetVekAppName) {
    return guarded(0.0f, [&] { return textFieldOut(value, &BXVekApp::name, buffer1); });
}

VEK_DEFINE(GetVekAppExt) {
    return guarded(0.0f, [&] { return textFieldOut(value, &BXVekApp::ext, buffer1); });
}

VEK_DEFINE(GetVekAppTamplate) {
    return guarded(0.0f, [&] { return textFieldOut(value, &BXVekApp::tamplate, buffer1); });
}

VEK_DEFINE(GetVekAppIOPrefs) {
    return guarded(0.0f, [&] {
        const BXVekApp* app = vekAppAt(indexArgument(value));
        const unsigned int switches = app ? app->ioPrefs : 0;
        takeUpSwitches(switches);
        if (!buffer1) return 0.0f;
        // The library turns its own exchange files itself: the script must not do it once more.
        const bool turnedHere = app && app->ext.equalsNoCase(".Vek");
        const unsigned int reported = turnedHere ? switches & ~0xFFu : switches;
        numberOut(buffer1, static_cast<int>(reported & 0xFFFFu));
        numberOut(buffer1 + 8, static_cast<int>(reported >> 16));
        return 0.0f;
    });
}

VEK_DEFINE(FindVekApp) {
    return guarded(-1.0f, [&] { return static_cast<float>(findApp(text)); });
}

VEK_DEFINE(GetVekAppIndex) {
    return guarded(-1.0f, [&] {
        BXString id;
        BXDiskServer::readFileAsString(BXVek::getApplicationFile(), id);
        return static_cast<float>(findApp(id));
    });
}

VEK_DEFINE(SetVekAppIndex) {
    return guarded(0.0f, [&] {
        const BXVekApp* app = vekAppAt(indexArgument(value));
        BXDiskServer::writeFileFromString(BXVek::getApplicationFile(), app ? app->id : BXString());
        return 0.0f;
    });
}

VEK_DEFINE(ReadVekAppPath) {
    return guarded(0.0f, [&] {
        const BXVekApp* app = vekAppAt(indexArgument(value));
        if (!app) return 0.0f;
        bool found = false;
        const BXString path = BXVek::readAppPath(app->id, &found);
        if (!path.isEmpty()) textOut(buffer1, path);
        return yesOrNo(found);
    });
}

VEK_DEFINE(WriteVekAppPath) {
    return guarded(0.0f, [&] {
        const BXVekApp* app = vekAppAt(indexArgument(value));
        if (app) BXVek::writeAppPath(app->id, text);
        return 0.0f;
    });
}

VEK_DEFINE(IsAppPathValid) {
    return guarded(0.0f, [&] {
        const BXString path(BXString(text).getValidFilePath());
        return yesOrNo(path.endsWith(".app", true) ? BXDiskServer::folderExists(path)
                                                   : BXDiskServer::fileExists(path));
    });
}

VEK_DEFINE(VekAppIsInstalled) {
    return guarded(0.0f, [&] {
        const BXVekApp* app = vekAppAt(indexArgument(value));
        return yesOrNo(app && isInstalled(*app, text));
    });
}
