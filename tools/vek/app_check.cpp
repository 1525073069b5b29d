#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "bridge/bx_vek.h"
#include "foundation/bx_string.h"
#include "tools/vek/near_words.h"
#include "tools/vek/path_text.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/shipped_apps.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;

std::string appFile(const std::string& id, const char* name) {
    return BXVek::getAppFile(id.c_str(), name).c_str();
}

void checkId(Findings& findings, const std::string& id, const std::string& folder) {
    for (const char c : id) {
        const bool isControl = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        if (!isControl && !std::strchr("\"'\\$`:", c)) continue;
        findings.add("odd-application-name", folder, 0,
                     fmt::format("The name has {} in it, with which the bridge finds and starts "
                                 "nothing here.",
                                 isControl ? "a control character" : std::string(1, c)),
                     "Rename the folder; letters, digits, blanks, '.', '-' and '_' are safe.");
        return;
    }
}

// What an editor saves that is no plain text.
bool isDocument(const std::string& name) {
    static const std::vector<std::string> extensions = {".rtf",  ".rtfd", ".doc",
                                                        ".docx", ".odt",  ".pages"};
    const std::size_t dot = name.rfind('.');
    return dot != name.npos && contains(extensions, name.substr(dot));
}

// An application that lies a folder deeper, as some archives are unpacked; empty where none does.
std::string adviceForInner(const std::string& id, const std::string& folder,
                           const std::vector<std::string>& inner) {
    for (const std::string& name : inner) {
        if (lookAt(folder + "/" + name + "/" + kDescriptorName).kind != Kind::File) continue;
        const bool isSame = BXString(name.c_str()).equalsNoCase(id.c_str());
        return isSame ? fmt::format("Move what is in its folder {} up into this one.", name)
                      : fmt::format("Move its folder {}, which has one, into VekApps.", name);
    }
    return "";
}

std::string adviceForNoDescriptor(const std::string& id, const std::string& folder) {
    if (isShippedApp(id)) {
        return "Run vek init, which brings it, or move the folder out of VekApps.";
    }
    std::vector<std::string> folders;
    std::vector<std::string> names = namesIn(folder, &folders);
    if (const std::string advice = adviceForInner(id, folder, folders); !advice.empty()) {
        return advice;
    }
    const auto isOfTheTree = [](const std::string& name) {
        return contains(appFiles(), name) || name == kInstallLogName;
    };
    names.erase(std::remove_if(names.begin(), names.end(), isOfTheTree), names.end());
    const std::vector<std::string> near = nearWords(kDescriptorName, names);
    if (near.empty()) {
        return fmt::format("Write a {}, or move the folder out of VekApps.", kDescriptorName);
    }
    if (near.size() == 1 && isDocument(near[0])) {
        return fmt::format("Save {} as plain text under the name {} if that is meant.", near[0],
                           kDescriptorName);
    }
    return fmt::format("Rename {} to {} if that is meant.", orList(near), kDescriptorName);
}

void findNoDescriptor(Findings& findings, const std::string& id, const std::string& folder) {
    findings.add(
        "descriptor-missing", folder, 0,
        fmt::format("There is no {} in it, so it is no target application.", kDescriptorName),
        adviceForNoDescriptor(id, folder));
}

void checkInstallations(Findings& findings, const std::string& id) {
    const std::string list = appFile(id, kInstallListName);
    std::string text;
    if (readText(findings, list, kSharedFileMode, kLargestList, text)) {
        for (const TextLine& line : linesOf(text)) {
            if (!checkAbsolute(findings, line.text, list, line.number, "The place")) continue;
            if (isThere(withoutVolume(line.text))) continue;
            findings.add(
                "installed-place-missing", list, line.number,
                fmt::format("It was installed to a place that is not there: {}", line.text),
                "Take the line away, and install it again where the application is now.");
        }
    }
    const std::string log = appFile(id, kInstallLogName);
    // Its text may end so for a host that does not clear the block into which it is read.
    constexpr TextEnd kEnd = TextEnd::MayBeNul;
    if (readText(findings, log, kReadFileMode, kLargestText, text, kEnd) && !text.empty()) {
        const std::vector<TextLine> lines = linesOf(text);
        findings.add("install-failed", log, 0,
                     fmt::format("The last installation failed: {}",
                                 lines.empty() ? "it does not say why." : lines.front().text),
                     "Mend that, and install it again in the host.");
    }
}

// Programs, even if a command does not name them: another one may run them.
bool isProgramName(const std::string& name) {
    static const std::vector<std::string> extensions = {".sh", ".py", ".lua",  ".pl",
                                                        ".rb", ".js", ".scpt", ".command"};
    const std::size_t dot = name.rfind('.');
    return dot != name.npos && contains(extensions, name.substr(dot));
}

// What is known to be the application's own: what ships of it and what its commands name.
std::vector<std::string> partsOf(const CheckedApp& app, bool ships) {
    std::vector<std::string> parts;
    for (const std::string& file : app.files) parts.push_back(file.substr(0, file.find('/')));
    if (!ships) return parts;
    std::error_code ignored;
    for (const auto& entry : shippedEntries(shippedAppsFolder() + "/" + app.id, ignored)) {
        parts.push_back(entry.path().filename().string());
    }
    return parts;
}

// Whatever else lies there may be one user's own: a log, a cache, a copy of an editor.
void checkModes(Findings& findings, const std::string& folder,
                const std::vector<std::string>& parts) {
    for (const std::string& name : namesIn(folder)) {
        if (isOnesOwn(name)) continue;
        const std::string path = folder + "/" + name;
        if (contains(parts, name) || isProgramName(name)) {
            checkReach(findings, path);
        } else {
            checkRights(findings, path);
        }
    }
}

}  // namespace

bool checkApp(Findings& findings, const std::string& id, CheckedApp& app) {
    app = {id, "", "", {}};
    const std::string folder = BXVek::getAppFolder(id.c_str()).c_str();
    if (!checkFolder(findings, folder)) return false;
    checkLeftOvers(findings, folder);
    const std::string descriptor = folder + "/" + kDescriptorName;
    if (lookAt(descriptor).kind == Kind::Missing) {
        findNoDescriptor(findings, id, folder);
        return false;
    }
    checkId(findings, id, folder);
    checkAppConfig(findings, folder + "/" + kConfigName);
    checkInstallations(findings, id);
    const bool ships = isShippedApp(id);
    if (ships) checkShippedFiles(findings, id, folder);
    checkBundles(findings, folder);
    std::string text;
    if (readText(findings, descriptor, kReadFileMode, kLargestText, text)) {
        checkDescriptor(findings, descriptor, text, app);
    }
    checkModes(findings, folder, partsOf(app, ships));
    return lookAt(descriptor).kind == Kind::File;
}

void checkLeftOvers(Findings& findings, const std::string& folder) {
    for (const std::string& name : namesIn(folder)) {
        if (name.rfind(kUnfinishedName, 0) != 0) continue;
        findings.add("left-over-file", folder + "/" + name, 0,
                     "A vek init that was interrupted has left it here.", "Delete it.");
    }
}
