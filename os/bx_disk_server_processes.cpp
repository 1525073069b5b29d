#include <unistd.h>

#include <climits>

#include "os/bx_disk_server.h"
#include "os/process_lookup.h"

namespace {

constexpr std::uint32_t kReachOrStart =
    BXPlatform::LAUNCH_ASYNC | BXPlatform::LAUNCH_DONT_ADD_TO_RECENTS;
constexpr std::uint32_t kNewInstance = kReachOrStart | BXPlatform::LAUNCH_NEW_INSTANCE;

constexpr long kX86_64 = 0x01000007;
constexpr long kPowerPC64 = 0x01000012;

BXPlatform& platform() {
    return BXPlatform::current();
}

bool isBundle(const BXString& path) {
    return path.endsWith(".app", true);
}

bool isShellScript(const BXString& path) {
    return path.endsWith(".sh", true);
}

bool findFile(const BXString& path, BXFileReference& file) {
    return platform().findFile(path.getValidFilePath(), file);
}

const BXArray<BXString>* noneIfEmpty(const BXArray<BXString>& arguments) {
    return arguments.empty() ? nullptr : &arguments;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The number that begins at `text`, which then stands behind it; 0 without a digit.
int takeNumber(const char*& text) {
    int number = 0;
    for (; isDigit(*text); ++text) {
        const int digit = *text - '0';
        number = number > (INT_MAX - digit) / 10 ? INT_MAX : number * 10 + digit;
    }
    return number;
}

bool runInShell(const BXString& command) {
    platform().runShellCommand(command);
    return true;
}

BXString quoted(const char* quote, const BXString& text) {
    return quote + text + quote;
}

BXString listInDoubleQuotes(const BXArray<BXString>& arguments) {
    BXString list;
    for (const BXString& argument : arguments) list += " " + quoted("\"", argument);
    return list;
}

// Empty for no argument.
BXString oneArgument(const char* quote, const BXString& argument) {
    return argument.isEmpty() ? BXString() : " " + quoted(quote, argument);
}

bool launchBundle(const BXString& path, const BXArray<BXString>& arguments) {
    BXFileReference application;
    if (!findFile(path, application)) return false;
    return platform().launch(application, kNewInstance, noneIfEmpty(arguments), nullptr);
}

// `arguments` is the shell's text for them.
bool runAsAdmin(const BXString& path, const BXString& arguments) {
    const char* const program = isShellScript(path) ? "sh " : isBundle(path) ? "open -a " : "";
    return runInShell("osascript -e \"do shell script \\\"" + BXString(program) +
                      quoted("'", path) + arguments + "\\\" with administrator privileges\"");
}

bool findOrLaunch(const BXFileReference& application, BXProcessSerialNumber& process) {
    return bxFindProcessOf(platform(), application, process) ||
           platform().launch(application, kReachOrStart, nullptr, &process);
}

struct Modifier {
    int bit;
    std::uint16_t keyCode;
    std::uint64_t flag;
};

constexpr Modifier kModifiers[] = {
    {2, 59, 0x40000},   // Control
    {4, 58, 0x80000},   // Option
    {1, 56, 0x20000},   // Shift
    {8, 55, 0x100000},  // Command
};

// In the order in which they are posted: each key goes up in the reverse order of going down.
BXArray<BXKeyEvent> keyEvents(int keyCode, int modifiers) {
    BXArray<BXKeyEvent> downs;
    BXArray<BXKeyEvent> ups;
    std::uint64_t flags = 0;
    for (const Modifier& modifier : kModifiers) {
        if (!(modifiers & modifier.bit)) continue;
        ups.push_back({modifier.keyCode, false, flags});
        flags |= modifier.flag;
        downs.push_back({modifier.keyCode, true, flags});
    }
    const auto key = static_cast<std::uint16_t>(keyCode);
    ups.push_back({key, false, flags});
    downs.push_back({key, true, flags});
    downs.insert(downs.end(), ups.rbegin(), ups.rend());
    return downs;
}

}  // namespace

bool BXDiskServer::getApplicationInfo(const BXString& path, bool& is64Bit, int& majorVersion,
                                      int& minorVersion) {
    if (path.isEmpty()) return false;
    is64Bit = false;
    majorVersion = 0;
    minorVersion = 0;
    BXBundleFacts facts;
    platform().readBundle(path.getValidFilePath(), facts);
    if (facts.architectures.empty()) return false;
    for (const long architecture : facts.architectures) {
        if (architecture == kX86_64 || architecture == kPowerPC64) is64Bit = true;
    }
    const char* version = facts.version.c_str();
    majorVersion = takeNumber(version);
    if (version != facts.version.c_str() && *version == '.') minorVersion = takeNumber(++version);
    return majorVersion != 0;
}

bool BXDiskServer::launchApplication(const BXString& path, const BXString& args) {
    if (isShellScript(path)) {
        return runInShell("sh " + quoted("\"", path) + oneArgument("\"", args));
    }
    // Required(R80): apostrophes here, where every other form that is run as the user has double
    // quotes, and a path that is not quoted.
    if (!isBundle(path)) return runInShell(path + oneArgument("'", args));
    return launchBundle(path, args.isEmpty() ? BXArray<BXString>() : BXArray<BXString>{args});
}

bool BXDiskServer::launchApplication(const BXString& path, const BXArray<BXString>& argList) {
    if (isShellScript(path)) {
        return runInShell("sh " + quoted("\"", path) + listInDoubleQuotes(argList));
    }
    if (!isBundle(path)) return runInShell(path + listInDoubleQuotes(argList));
    return launchBundle(path, argList);
}

bool BXDiskServer::launchApplicationAsAdmin(const BXString& path, const BXString& args) {
    return runAsAdmin(path, oneArgument("'", args));
}

bool BXDiskServer::launchApplicationAsAdmin(const BXString& path,
                                            const BXArray<BXString>& argList) {
    // Required(R81): double quotes inside a text in double quotes, not escaped: they end it and
    // begin it anew.
    return runAsAdmin(path, listInDoubleQuotes(argList));
}

bool BXDiskServer::getRunningProcess(const BXString& path, BXProcessSerialNumber& psn) {
    psn = {};
    BXFileReference bundle;
    return findFile(path, bundle) && bxFindProcessOf(platform(), bundle, psn);
}

bool BXDiskServer::launchApplicationIfNecessary(const BXString& path) {
    BXFileReference application;
    if (!isBundle(path) || !findFile(path, application)) return false;
    return platform().launch(application, kReachOrStart, nullptr, nullptr);
}

bool BXDiskServer::openFileInApplication(const BXString& appPath, const BXString& filePath) {
    BXFileReference application;
    BXFileReference document;
    if (!findFile(appPath, application) || !findFile(filePath, document)) return false;
    BXProcessSerialNumber process;
    if (platform().launchesWithDocument() && !bxFindProcessOf(platform(), application, process)) {
        const BXArray<BXString> arguments{document.path};
        if (!platform().launch(application, kReachOrStart, &arguments, &process)) return false;
    } else if (!findOrLaunch(application, process) ||
               !platform().sendDocument(process, application, document)) {
        return false;
    }
    platform().bringToFront(process);
    return true;
}

bool BXDiskServer::sendAppleEventToApplication(const BXString& appPath, std::uint32_t code,
                                               const BXString& text,
                                               const BXArray<BXString>& argList) {
    return sendAppleEventToApplication(appPath, code, code, text, argList);
}

// Required(R82): the class of the event is the core one, whatever the caller asks for.
bool BXDiskServer::sendAppleEventToApplication(const BXString& appPath, std::uint32_t,
                                               std::uint32_t eventID, const BXString& text,
                                               const BXArray<BXString>& argList) {
    BXFileReference application;
    if (!findFile(appPath, application)) return false;
    BXProcessSerialNumber process;
    if (!bxFindProcessOf(platform(), application, process)) {
        const bool launched =
            platform().launch(application, kReachOrStart, noneIfEmpty(argList), &process);
        // Required(R83): false also where the launch succeeded; its arguments were the message.
        if (!launched || !argList.empty()) return false;
    }
    if (!platform().sendText(process, eventID, text)) return false;
    platform().bringToFront(process);
    return true;
}

bool BXDiskServer::sendKeyEventToApplication(const BXString& appPath, int keyCode, int modifiers) {
    BXFileReference application;
    BXProcessSerialNumber process;
    if (!findFile(appPath, application) || !findOrLaunch(application, process)) return false;
    if (keyCode != 0 || modifiers != 0) {
        return platform().typeKeys(process, keyEvents(keyCode, modifiers));
    }
    platform().bringToFront(process);
    return true;
}

bool BXDiskServer::runAppleScript(const BXString& script) {
    return runInShell("osascript -e \"" + script + "\"");
}

bool BXDiskServer::runAppleScriptMultiLine(const BXString& script) {
    if (script.isEmpty()) return false;
    BXString command("osascript");
    const char* line = script.c_str();
    for (;;) {
        const std::size_t length = std::strcspn(line, "\n");
        BXString piece;
        piece.create(line, line + length);
        if (!piece.isEmpty()) command += " -e" + quoted("'", piece);
        if (!line[length]) break;
        line += length + 1;
    }
    return runInShell(command);
}

// Required(R84): no window opens, whatever the name says.
bool BXDiskServer::openFolder(const BXString& path) {
    const char* const folder = path.getValidFilePath();
    return folder && chdir(folder) == 0;
}

char* runCocoaOpenFileBrowser(const char* title) {
    return BXPlatform::current().chooseFile(title).release();
}
