#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "bridge/bx_vek.h"
#include "os/bx_disk_server.h"
#include "tools/vek/near_words.h"
#include "tools/vek/path_text.h"
#include "tools/vek/real_way.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;

// A file that holds one line, as the bridge reads it.
bool readHubLine(Findings& findings, const BXString& path, std::string& text, BXString& asRead) {
    if (!readText(findings, path.c_str(), kSharedFileMode, kLargestPath, text)) return false;
    BXDiskServer::readFileAsString(path, asRead);
    return !asRead.isEmpty();
}

// A user's own folder is fine while that user works; root's is nobody's.
bool isClosed(const std::string& folder) {
    struct stat status;
    if (stat(folder.c_str(), &status) != 0) return true;
    const bool isOpenToOwner = (status.st_mode & S_IRWXU) == S_IRWXU;
    const bool isOfUsers = status.st_uid != 0 || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return !isOpenToOwner || !isOfUsers || access(folder.c_str(), R_OK | W_OK | X_OK) != 0;
}

std::string adviceForClosed(const std::string& folder, const char* change) {
    if (!mayBeOpened(folder)) return "Choose another project folder in the host.";
    return fmt::format("As its owner run: chmod {} {}; or choose another project.", change,
                       shellWord(folder));
}

void checkProjectFolder(Findings& findings, const std::string& written, const char* file) {
    const std::string folder = withoutVolume(written);
    const TreeLook look = lookAt(folder);
    const bool isHidden = look.kind == Kind::Hidden;
    const std::string closed = isHidden ? closedFolderOf(folder) : closedByRoot(folder);
    if (isHidden || (look.kind == Kind::Folder && !closed.empty())) {
        findings.add("project-folder-closed", file, 1,
                     fmt::format("{} cannot reach the project folder \"{}\": {} is closed.",
                                 isHidden ? "This user" : "Users other than root", folder, closed),
                     adviceForClosed(closed, "a+rx"));
    } else if (look.kind == Kind::File || look.kind == Kind::Other) {
        findings.add("project-folder-missing", file, 1,
                     fmt::format("\"{}\" is {}, and no folder.", folder,
                                 look.kind == Kind::File ? "a file" : "a pipe or a device"),
                     "Choose a project folder in the host.");
    } else if (look.kind != Kind::Folder) {
        const std::string plain = plainPath(written);
        const bool isMeant = plain != folder && lookAt(plain).kind == Kind::Folder;
        findings.add("project-folder-missing", file, 1,
                     fmt::format("The project folder \"{}\" is not there.", folder),
                     isMeant ? fmt::format("Write {} and nothing else.", plain)
                             : "Make the folder, or choose another project in the host.");
    } else if (isClosed(folder)) {
        findings.add("project-folder-closed", file, 1,
                     fmt::format("The project folder \"{}\" has the mode {}, so not every user can "
                                 "put files there.",
                                 folder, modeText(look.mode)),
                     adviceForClosed(folder, "a+rwx"));
    }
}

// An application is selected by its id, the name of its folder.
std::string adviceForSelected(const std::string& written, const std::vector<CheckedApp>& apps) {
    const std::vector<TextLine> lines = linesOf(written);
    const std::string apart = lines.empty() ? "" : plainPath(lines.front().text);
    const std::string path = withoutVolume(apart);
    std::vector<std::string> ids;
    for (const CheckedApp& app : apps) {
        const BXString folder = BXVek::getAppFolder(app.id.c_str());
        const bool isPath = folder == path.c_str() || folder + "/" == path.c_str();
        const bool isName = BXString(app.name.c_str()).equalsNoCase(apart.c_str());
        if (isPath || isName || BXString(app.id.c_str()).equalsNoCase(apart.c_str())) {
            return fmt::format("Write {}, the name of its folder, and nothing else.", app.id);
        }
        ids.push_back(app.id);
    }
    const std::vector<std::string> near = nearWords(apart, ids);
    return near.empty()
               ? "Select another one in the host, or put its folder into VekApps."
               : fmt::format("Write {}, without blanks around it, if that is meant.", orList(near));
}

}  // namespace

std::string checkSelectedApp(Findings& findings, const std::vector<CheckedApp>& apps) {
    const BXString path = BXVek::getApplicationFile();
    std::string text;
    BXString id;
    if (!readHubLine(findings, path, text, id)) return "";
    for (const CheckedApp& app : apps) {
        if (id.equalsNoCase(app.id.c_str())) return app.id;
    }
    // What keeps a folder of this name from being an application has been found.
    const bool isName = id.findFirst("/") < 0;
    if (isName && findings.areAbout(BXVek::getAppFolder(id).c_str())) return id.c_str();
    findings.add(
        "selected-app-missing", path.c_str(), 1,
        fmt::format("\"{}\" is selected, and no folder of VekApps with a {} has that name.",
                    id.c_str(), kDescriptorName),
        adviceForSelected(id.c_str(), apps));
    return id.c_str();
}

void checkProjectPath(Findings& findings) {
    const BXString path = BXVek::getProjectPathFile();
    std::string text;
    BXString asRead;
    if (!readHubLine(findings, path, text, asRead)) return;
    const std::vector<TextLine> lines = linesOf(text);
    if (lines.size() > 1) {
        findings.add("project-path-lines", path.c_str(), lines[1].number,
                     "Only one path belongs here; the last line is passed over.",
                     "Leave one line, with the folder of the project.");
        return;
    }
    const std::string written = asRead.c_str();
    if (!checkAbsolute(findings, written, path.c_str(), 1, "The path")) return;
    findVolume(findings, written, path.c_str(), 1);
    checkProjectFolder(findings, written, path.c_str());
}
