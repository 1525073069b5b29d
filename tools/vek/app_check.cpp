#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "bridge/bx_vek.h"
#include "foundation/bx_string.h"
#include "tools/vek/near_words.h"
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

std::string adviceForNoDescriptor(const std::string& id, const std::string& folder) {
    std::error_code ignored;
    if (contains(shippedApps(shippedAppsFolder(), ignored), id)) {
        return "Run vek init, which brings it, or move the folder out of VekApps.";
    }
    std::vector<std::string> names = namesIn(folder);
    const auto isOfTheTree = [](const std::string& name) {
        return contains(appFiles(), name) || name == kInstallLogName;
    };
    names.erase(std::remove_if(names.begin(), names.end(), isOfTheTree), names.end());
    const std::vector<std::string> near = nearWords(kDescriptorName, names);
    return near.empty()
               ? fmt::format("Write a {}, or move the folder out of VekApps.", kDescriptorName)
               : fmt::format("Rename {} to {} if that is meant.", orList(near), kDescriptorName);
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
    if (readText(findings, log, kReadFileMode, kLargestText, text) && !text.empty()) {
        const std::vector<TextLine> lines = linesOf(text);
        findings.add("install-failed", log, 0,
                     fmt::format("The last installation failed: {}",
                                 lines.empty() ? "it does not say why." : lines.front().text),
                     "Mend that, and install it again in the host.");
    }
}

}  // namespace

bool checkApp(Findings& findings, const std::string& id, CheckedApp& app) {
    app = {id, "", ""};
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
    checkBundles(findings, folder);
    std::string text;
    if (readText(findings, descriptor, kReadFileMode, kLargestText, text)) {
        checkDescriptor(findings, descriptor, text, app);
    }
    for (const std::string& name : namesIn(folder)) {
        if (name[0] != '.') checkReach(findings, folder + "/" + name);
    }
    return lookAt(descriptor).kind == Kind::File;
}

void checkLeftOvers(Findings& findings, const std::string& folder) {
    for (const std::string& name : namesIn(folder)) {
        if (name.rfind(kUnfinishedName, 0) != 0) continue;
        findings.add("left-over-file", folder + "/" + name, 0,
                     "A vek init that was interrupted has left it here.", "Delete it.");
    }
}
