#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "bridge/bx_vek.h"
#include "formats/vek_header.h"
#include "os/bx_disk_server.h"
#include "os/bx_file.h"
#include "tools/vek/near_words.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;

constexpr int kMostMissing = 20;

// A file that holds one line, as the bridge reads it.
bool readHubLine(Findings& findings, const BXString& path, std::string& text, BXString& asRead) {
    if (!readText(findings, path.c_str(), kSharedFileMode, kLargestPath, text)) return false;
    BXDiskServer::readFileAsString(path, asRead);
    return !asRead.isEmpty();
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
        bool isFound = false;
        for (const std::string& extension : m_extensions) {
            if (lookAt(object + extension).kind == Kind::Missing) continue;
            isFound = true;
            checkFile(object + extension);
        }
        if (!isFound) findMissing(line);
    }

    void tellWhatWasNotSaid() {
        if (m_missing <= kMostMissing) return;
        m_findings.add("object-file-missing", m_list, 0,
                       fmt::format("So are {} objects more.", m_missing - kMostMissing),
                       "Clear the list, and export the objects again.");
    }

private:
    void findMissing(const TextLine& line) {
        for (const std::string& extension : m_extensions) {
            const bool hasIt = BXString(line.text.c_str()).endsWith(extension.c_str(), true);
            if (!hasIt || !isThere(line.text)) continue;
            m_findings.add("object-has-extension", m_list, line.number,
                           fmt::format("Both sides put {} behind this object once more: {}",
                                       extension, line.text),
                           fmt::format("Write it without {}.", extension));
            return;
        }
        if (++m_missing > kMostMissing) return;
        m_findings.add("object-file-missing", m_list, line.number,
                       fmt::format("There is no file of this object: {}{}", line.text,
                                   orList({m_extensions.begin(), m_extensions.end()})),
                       "Take the line away, or export the object again.");
    }

    void checkFile(const std::string& path) {
        const BXFile file(path.c_str(), BXFile::Access::Read);
        if (!file.isOpen()) {
            const bool isHidden =
                lookAt(path).kind == Kind::File || lookAt(path).kind == Kind::Hidden;
            m_findings.add(isHidden ? "file-unreadable" : "not-a-file", path, 0,
                           "The object list names it, and it cannot be read.",
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
    int m_missing = 0;
};

}  // namespace

std::string checkSelectedApp(Findings& findings, const std::vector<CheckedApp>& apps) {
    const BXString path = BXVek::getApplicationFile();
    std::string text;
    BXString id;
    if (!readHubLine(findings, path, text, id)) return "";
    for (const CheckedApp& app : apps) {
        if (id.equalsNoCase(app.id.c_str())) return app.id;
    }
    // What is wrong with a folder that is there has been found.
    if (lookAt(BXVek::getAppFolder(id).c_str()).kind != Kind::Missing) return id.c_str();
    std::vector<std::string> ids;
    for (const CheckedApp& app : apps) ids.push_back(app.id);
    const std::vector<std::string> near = nearWords(id.c_str(), ids);
    findings.add("selected-app-missing", path.c_str(), 1,
                 fmt::format("The selected application \"{}\" is not there.", id.c_str()),
                 near.empty() ? "Select another one in the host, or put its folder into VekApps."
                              : fmt::format("Write {}, without blanks around it, if that is meant.",
                                            orList(near)));
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
    const std::string folder = asRead.c_str();
    if (!checkAbsolute(findings, folder, path.c_str(), 1, "The path")) return;
    if (lookAt(folder).kind == Kind::Folder) return;
    findings.add("project-folder-missing", path.c_str(), 1,
                 fmt::format("The project folder \"{}\" is not there.", folder),
                 "Make the folder, or choose another project in the host.");
}

std::size_t checkObjectList(Findings& findings, const std::vector<CheckedApp>& apps) {
    const std::string path = BXVek::getObjectListFile().c_str();
    std::string text;
    if (!readText(findings, path, kSharedFileMode, kLargestList, text)) return 0;
    const std::vector<TextLine> lines = linesOf(text);
    ObjectCheck check(findings, path, apps);
    for (const TextLine& line : lines) check.check(line);
    check.tellWhatWasNotSaid();
    return lines.size();
}
