#include "tools/vek/tree_check.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>

#include "bridge/bx_vek.h"
#include "tools/vek/near_words.h"
#include "tools/vek/real_way.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;

constexpr std::size_t kMostApps = 32;  // the bridge's own limit

// Whether there is a tree to look at.
bool checkRoot(Findings& findings, const std::string& root) {
    const TreeLook look = lookAt(root);
    if (look.kind == Kind::Missing) {
        const std::string inTheWay = whatIsNoFolder(root);
        if (!inTheWay.empty()) return checkFolder(findings, inTheWay);
        findings.add("tree-missing", root, 0, "There is no shared tree here.",
                     "Run vek init, as an administrator (sudo) where that is needed.");
        return false;
    }
    const bool isFolder = look.kind == Kind::Folder;
    if (look.kind == Kind::Hidden || (isFolder && !canLookInto(root))) {
        throw std::runtime_error(fmt::format(
            "{} is closed to this user. Run vek check as an administrator (sudo).", root));
    }
    return checkFolder(findings, root);
}

// Every user has to get through the folders that lead to the tree. Only those of its own path are
// there for it: what a link leads through is somebody else's matter.
void checkWayTo(Findings& findings, const std::string& root) {
    constexpr mode_t kPassable = 0111;
    for (const std::string& folder : foldersOnTheWayTo(root)) {
        const TreeLook look = lookAt(folder);
        if (look.kind != Kind::Folder || (look.mode & kPassable) == kPassable) continue;
        const bool isOfThePath = root.rfind(folder + "/", 0) == 0;
        findings.add(
            "folder-not-shared", folder, 0,
            fmt::format("Its mode is {}, so not every user gets through to the tree.",
                        modeText(look.mode)),
            isOfThePath || mayBeOpened(folder)
                ? fmt::format("As its owner or an administrator, run: chmod a+x {}",
                              shellWord(folder))
                : fmt::format("Have the links of {} lead to where every user gets.", root));
    }
}

// Behind a link vek init makes nothing.
void findLink(Findings& findings, const std::string& link, const std::string& missing) {
    findings.add("linked-folder", link, 0,
                 fmt::format("This is a link, and what it leads to lacks {}.", missing),
                 "Put that there yourself, or remove the link and run vek init.");
}

void checkHubFiles(Findings& findings, const std::string& hub) {
    std::string missing;
    for (const std::string& name : hubFiles()) {
        if (lookAt(hub + "/" + name).kind != Kind::Missing) continue;
        missing += (missing.empty() ? "" : ", ") + name;
        if (isLink(hub)) continue;
        findings.add("file-missing", hub + "/" + name, 0, "This text file is not there.",
                     "Run vek init, which makes it with the permissions that it needs.");
    }
    if (!missing.empty() && isLink(hub)) findLink(findings, hub, missing);
}

void checkProjects(Findings& findings) {
    const std::string projects = BXVek::s_VekProjectsFolder.c_str();
    const std::string own = BXVek::s_VekDefaultProjectFolder.c_str();
    if (!checkFolder(findings, projects)) return;
    if (isLink(projects) && lookAt(own).kind == Kind::Missing) {
        findLink(findings, projects, "its folder Default");
    } else {
        checkFolder(findings, own);
    }
}

void checkHub(TreeState& state, const std::vector<CheckedApp>& apps) {
    Findings& findings = state.findings;
    const std::string hub = BXVek::s_VekHubFolder.c_str();
    if (!checkFolder(findings, hub)) return;
    checkHubFiles(findings, hub);
    const bool areAppsKnown = lookAt(BXVek::s_VekAppsFolder.c_str()).kind == Kind::Folder;
    if (areAppsKnown) state.selected = checkSelectedApp(findings, apps);
    checkProjectPath(findings);
    state.objects = checkObjectList(findings, apps);
    std::string ignored;
    readText(findings, BXVek::getObjectPathFile().c_str(), kSharedFileMode, kLargestText, ignored);
    checkHubConfig(findings, hub + "/" + kConfigName);
    checkBundles(findings, hub);
}

void checkTogether(Findings& findings, const std::vector<CheckedApp>& apps) {
    std::map<std::string, std::string> ids;    // by the id in upper case
    std::map<std::string, std::string> names;  // the id of the first application of a name
    for (const CheckedApp& app : apps) {
        const std::string folder = BXVek::getAppFolder(app.id.c_str()).c_str();
        const auto [sameId, isNewId] = ids.emplace(inUpperCase(app.id), app.id);
        if (!isNewId) {
            findings.add("same-id", folder, 0,
                         fmt::format("Letter case does not count, so this and {} are one id.",
                                     sameId->second),
                         "Rename one of the two folders.");
            continue;
        }
        if (app.name.empty()) continue;
        const auto [sameName, isNewName] = names.emplace(app.name, app.id);
        if (isNewName) continue;
        findings.add("same-name", folder + "/" + kDescriptorName, 0,
                     fmt::format("{} has the NAME \"{}\" too, so users cannot tell them apart.",
                                 sameName->second, app.name),
                     "Give one of the two another NAME.");
    }
}

std::vector<CheckedApp> checkApps(Findings& findings) {
    const std::string parent = BXVek::s_VekAppsFolder.c_str();
    std::vector<CheckedApp> apps;
    if (!checkFolder(findings, parent)) return apps;
    std::vector<std::string> folders;
    for (const std::string& name : namesIn(parent, &folders)) {
        const std::string path = parent + "/" + name;
        CheckedApp app;
        if (contains(folders, name)) {
            // Folders of file managers and archives.
            const bool isNone =
                (name[0] == '.' || name == "__MACOSX") && !isThere(path + "/" + kDescriptorName);
            if (!isNone && checkApp(findings, name, app)) apps.push_back(app);
        } else if (isThere(path + "/" + kDescriptorName)) {
            findings.add("linked-application", path, 0,
                         "This is a link to an application's folder; the bridge passes links over.",
                         "Put the folder itself there.");
        }
    }
    checkTogether(findings, apps);
    if (apps.size() > kMostApps) {
        findings.add("too-many-applications", parent, 0,
                     fmt::format("The bridge takes {} applications of these {}, in no order that "
                                 "can be relied on.",
                                 kMostApps, apps.size()),
                     "Move those that are not used out of the tree.");
    } else if (apps.empty()) {
        findings.add("no-application", parent, 0, "There is no target application.",
                     isLink(parent)
                         ? "Put one there, or remove this link and run vek init."
                         : "Run vek init, which brings those that ship with the bridge.");
    }
    return apps;
}

// Where somebody may put an application's folder who does not know better.
void checkElsewhere(Findings& findings, const std::string& parent) {
    std::vector<std::string> folders;
    namesIn(parent, &folders);
    for (const std::string& name : folders) {
        const std::string path = parent + "/" + name;
        if (!isThere(path + "/" + kDescriptorName) || contains(treeFolders(), name)) continue;
        findings.add("application-elsewhere", path, 0,
                     "This is an application's folder, and the bridge looks for those in VekApps.",
                     fmt::format("Move it into {}.", BXVek::s_VekAppsFolder.c_str()));
    }
}

}  // namespace

TreeState checkTree() {
    TreeState state;
    const std::string root = BXVek::s_publicFolder.c_str();
    checkWayTo(state.findings, root);
    if (!checkRoot(state.findings, root)) return state;
    const std::vector<CheckedApp> apps = checkApps(state.findings);
    for (const CheckedApp& app : apps) state.apps.push_back(app.id);
    checkHub(state, apps);
    checkProjects(state.findings);
    checkElsewhere(state.findings, root);
    checkElsewhere(state.findings, BXVek::s_VekHubFolder.c_str());
    state.findings.tellWhatWasLeftOut();
    return state;
}
