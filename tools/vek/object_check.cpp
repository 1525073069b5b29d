#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "bridge/bx_vek.h"
#include "formats/vek_header.h"
#include "os/bx_file.h"
#include "tools/vek/near_words.h"
#include "tools/vek/path_text.h"
#include "tools/vek/real_way.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

// The object list and the files that it names.

namespace {

using Kind = TreeLook::Kind;

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
    bool isThereAsObject(const std::string& path) const {
        return std::any_of(m_extensions.begin(), m_extensions.end(),
                           [&](const std::string& extension) { return isThere(path + extension); });
    }

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
                       adviceForMissing(line.text, path));
    }

    std::string adviceForMissing(const std::string& written, const std::string& path) const {
        const std::string plain = plainPath(written);
        if (plain != path && isThereAsObject(plain)) {
            return fmt::format("Write {} and nothing else.", plain);
        }
        const std::size_t dot = path.rfind('.');
        const bool isOtherFile = lookAt(path).kind == Kind::File && dot > path.rfind('/') + 1;
        if (!isOtherFile) return "Take the line away, or export the object again.";
        return fmt::format(
            "Write it without {}, and export the object as one of those: {} itself is not read.",
            path.substr(dot), path.substr(path.rfind('/') + 1));
    }

    void checkFile(const std::string& path) {
        const TreeLook look = lookAt(path);
        if (look.kind == Kind::File) checkSharing(path, look.mode);
        const BXFile file(path.c_str(), BXFile::Access::Read);
        if (!file.isOpen()) {
            if (m_findings.areAbout(path)) return;
            m_findings.add(look.kind == Kind::File ? "file-unreadable" : "not-a-file", path, 0,
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

    // What lies in the tree is for everybody; elsewhere it is its owner's.
    void checkSharing(const std::string& path, mode_t mode) {
        const std::string tree = BXVek::s_publicFolder.c_str() + std::string("/");
        if (path.compare(0, tree.size(), tree) != 0) return;
        for (std::size_t end = path.find('/', tree.size()); end != path.npos;
             end = path.find('/', end + 1)) {
            if (contains(treeFolders(), path.substr(tree.size(), end - tree.size()))) continue;
            checkFolder(path.substr(0, end));
        }
        if ((mode & kReadFileMode) == kReadFileMode) return;
        m_findings.add("file-not-shared", path, 0,
                       fmt::format("The object list names it, and its mode is {}, so not every "
                                   "user's application can read it.",
                                   modeText(mode)),
                       fmt::format("Run: chmod a+r {}", shellWord(path)));
    }

    void checkFolder(const std::string& folder) {
        constexpr mode_t kPassable = 0111;
        const mode_t mode = lookAt(folder).mode;
        if ((mode & kPassable) == kPassable) return;
        m_findings.add("folder-not-shared", folder, 0,
                       fmt::format("Its mode is {}, so not every user's application gets to the "
                                   "listed objects in it.",
                                   modeText(mode)),
                       fmt::format("Run: chmod a+rwx {}", shellWord(folder)));
    }

    Findings& m_findings;
    const std::string& m_list;
    std::set<std::string> m_extensions = {".vek", ".ma"};
    std::set<std::string> m_seen;
};

}  // namespace

std::size_t checkObjectList(Findings& findings, const std::vector<CheckedApp>& apps) {
    const std::string path = BXVek::getObjectListFile().c_str();
    std::string text;
    if (!readText(findings, path, kSharedFileMode, kLargestList, text)) return 0;
    const std::vector<TextLine> lines = linesOf(text);
    ObjectCheck check(findings, path, apps);
    for (const TextLine& line : lines) check.check(line);
    return lines.size();
}
