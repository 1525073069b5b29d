#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <set>

#include "bridge/bx_vek.h"
#include "formats/vek_header.h"
#include "os/bx_disk_server.h"
#include "os/bx_file.h"
#include "tools/vek/near_words.h"
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

// The bridge passes the path on as it stands.
void findVolume(Findings& findings, const std::string& path, const std::string& file, int line) {
    const std::string rest = withoutVolume(path);
    if (rest == path) return;
    findings.add("volume-prefix", file, line,
                 fmt::format("The bridge takes off the volume in front of \"{}\"; an application "
                             "that reads the path itself may not.",
                             rest),
                 fmt::format("Write {}", rest));
}

class ObjectCheck {
public:
    ObjectCheck(Findings& findings, const std::string& list, const std::vector<CheckedApp>& apps)
        : m_findings(findings), m_list(list) {
        for (const CheckedApp& app : apps) {
            if (!app.extension.empty()) m_extensions.insert(app.extension);
        }
    }

    void check(const TextLine& line) {
        const std::string& object = line.text;
        if (!m_seen.insert(object).second) {
            m_findings.add("object-listed-twice", m_list, line.number,
                           fmt::format("This object is listed twice: {}", object),
                           "Take one of its lines away.");
            return;
        }
        if (!checkAbsolute(m_findings, object, m_list, line.number, "The object")) return;
        findVolume(m_findings, object, m_list, line.number);
        const std::string path = withoutVolume(object);
        bool isFound = false;
        for (const std::string& extension : m_extensions) {
            const Kind kind = lookAt(path + extension).kind;
            if (kind == Kind::Missing) continue;
            isFound = true;
            if (kind == Kind::Hidden) return findHidden(path + extension);
            checkFile(path + extension);
        }
        if (!isFound) findMissing(line, path);
    }

private:
    void findHidden(const std::string& path) {
        const std::string folder = closedFolderOf(path);
        m_findings.add("folder-unreadable", folder, 0,
                       "This user cannot reach the listed objects that lie in it.",
                       mayBeOpened(folder)
                           ? fmt::format("As its owner or an administrator, run: chmod a+rwx {}",
                                         shellWord(folder))
                           : "Export the objects to another folder.");
    }

    void findMissing(const TextLine& line, const std::string& path) {
        for (const std::string& extension : m_extensions) {
            const bool hasIt = BXString(path.c_str()).endsWith(extension.c_str(), true);
            if (!hasIt || !isThere(path)) continue;
            m_findings.add("object-has-extension", m_list, line.number,
                           fmt::format("Both sides put {} behind this object once more: {}",
                                       extension, line.text),
                           fmt::format("Write it without {}.", extension));
            return;
        }
        m_findings.add("object-file-missing", m_list, line.number,
                       fmt::format("There is no file of this object: {}{}", line.text,
                                   orList({m_extensions.begin(), m_extensions.end()})),
                       "Take the line away, or export the object again.");
    }

    void checkFile(const std::string& path) {
        const BXFile file(path.c_str(), BXFile::Access::Read);
        if (!file.isOpen()) {
            m_findings.add(lookAt(path).kind == Kind::File ? "file-unreadable" : "not-a-file", path,
                           0, "The object list names it, and it cannot be read.",
                           "Export the object again, or take its line away.");
            return;
        }
        const bool isVek = BXString(path.c_str()).endsWith(".vek", true);
        char magic[kVekMagicSize] = {};
        const bool isWhole = file.readAt(0, magic, sizeof magic) == sizeof magic;
        const bool isRight = isWhole && std::equal(magic, magic + sizeof magic, kVekMagic);
        if (file.size() > 0 && (!isVek || isRight)) return;
        m_findings.add("object-file-damaged", path, 0,
                       file.size() == 0 ? "The file is empty." : "This is no exchange file.",
                       "Export the object again; vek info tells what is in a file.");
    }

    Findings& m_findings;
    const std::string& m_list;
    std::set<std::string> m_extensions = {".vek", ".ma"};
    std::set<std::string> m_seen;
};

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

void checkProjectFolder(Findings& findings, const std::string& folder, const char* file) {
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
        findings.add("project-folder-missing", file, 1,
                     fmt::format("The project folder \"{}\" is not there.", folder),
                     "Make the folder, or choose another project in the host.");
    } else if (isClosed(folder)) {
        findings.add("project-folder-closed", file, 1,
                     fmt::format("The project folder \"{}\" has the mode {}, so not every user can "
                                 "put files there.",
                                 folder, modeText(look.mode)),
                     adviceForClosed(folder, "a+rwx"));
    }
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
    std::vector<std::string> ids;
    for (const CheckedApp& app : apps) ids.push_back(app.id);
    const std::vector<std::string> near = nearWords(id.c_str(), ids);
    findings.add(
        "selected-app-missing", path.c_str(), 1,
        fmt::format("\"{}\" is selected, and no folder of VekApps with a {} has that name.",
                    id.c_str(), kDescriptorName),
        near.empty()
            ? "Select another one in the host, or put its folder into VekApps."
            : fmt::format("Write {}, without blanks around it, if that is meant.", orList(near)));
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
    checkProjectFolder(findings, withoutVolume(written), path.c_str());
}

std::size_t checkObjectList(Findings& findings, const std::vector<CheckedApp>& apps) {
    const std::string path = BXVek::getObjectListFile().c_str();
    std::string text;
    if (!readText(findings, path, kSharedFileMode, kLargestList, text)) return 0;
    const std::vector<TextLine> lines = linesOf(text);
    ObjectCheck check(findings, path, apps);
    for (const TextLine& line : lines) check.check(line);
    return lines.size();
}
