#include <fmt/format.h>

#include "tools/vek/real_way.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/shipped_apps.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

// What ships of an application, held against what the tree has of it.

namespace {

using Kind = TreeLook::Kind;

class ShippedCheck {
public:
    ShippedCheck(Findings& findings, const std::string& shipped, const std::string& folder)
        : m_findings(findings), m_shipped(shipped), m_folder(folder) {}

    // `below` is empty, or ends with a '/'.
    void checkFolder(const std::string& below) {
        std::error_code ignored;
        for (const auto& entry : shippedEntries(m_shipped + "/" + below, ignored)) {
            const std::string name = entry.path().filename().string();
            const bool isTheBridges = below.empty() && contains(appFiles(), name);
            if (isTheBridges || isOnesOwn(name)) continue;
            const bool isFolder = entry.is_directory(ignored) && !entry.is_symlink(ignored);
            if (checkEntry(m_folder + "/" + below + name, isFolder)) {
                checkFolder(below + name + "/");
            }
        }
    }

private:
    // Whether it is a folder that can be looked into.
    bool checkEntry(const std::string& path, bool isFolder) {
        const Kind kind = lookAt(path).kind;
        if (kind == Kind::Missing) {
            findMissing(path, isFolder);
            return false;
        }
        findOther(path, kind, isFolder);
        return isFolder && kind == Kind::Folder && canLookInto(path);
    }

    // What is there is not what ships.
    void findOther(const std::string& path, Kind kind, bool isFolder) {
        if (kind == Kind::BrokenLink) {
            m_findings.add("broken-link", path, 0, "This link leads nowhere.",
                           "Make what it leads to, or remove the link and run vek init.");
        } else if (isFolder && kind != Kind::Folder && kind != Kind::Hidden) {
            m_findings.add("not-a-folder", path, 0, "This should be a folder, and is none.",
                           "Move it away and run vek init.");
        } else if (!isFolder && kind != Kind::File && kind != Kind::Hidden) {
            m_findings.add("not-a-file", path, 0, "This should be a file, and is none.",
                           "Move it away and run vek init.");
        } else if (isLink(path) &&
                   (kind == Kind::Hidden || !closedOnTheWayFrom(m_folder, path).empty())) {
            m_findings.add(isFolder ? "folder-not-shared" : "file-not-shared", path, 0,
                           "It is a link to a place that some users cannot reach.",
                           "Remove the link and run vek init.");
        }
    }

    // vek init makes nothing behind links.
    void findMissing(const std::string& path, bool isFolder) {
        const std::string link = linkOnTheWayTo(path);
        if (!link.empty()) {
            m_findings.add("linked-folder", link, 0,
                           fmt::format("This is a link, and what it leads to lacks {}.",
                                       path.substr(link.size() + 1)),
                           "Put that there yourself, or remove the link and run vek init.");
            return;
        }
        m_findings.add("shipped-file-missing", path, 0,
                       isFolder ? "This folder of a shipped application is not there."
                                : "This file of a shipped application is not there.",
                       "Run vek init, which brings it.");
    }

    std::string linkOnTheWayTo(const std::string& path) const {
        for (std::size_t end = path.find('/', m_folder.size() + 1); end != path.npos;
             end = path.find('/', end + 1)) {
            if (isLink(path.substr(0, end))) return path.substr(0, end);
        }
        return "";
    }

    Findings& m_findings;
    const std::string m_shipped;
    const std::string& m_folder;
};

}  // namespace

bool isOnesOwn(const std::string& name) {
    return name[0] == '.' || name == "__pycache__";
}

bool isShippedApp(const std::string& id) {
    std::error_code ignored;
    return contains(shippedApps(shippedAppsFolder(), ignored), id);
}

void checkShippedFiles(Findings& findings, const std::string& id, const std::string& folder) {
    ShippedCheck(findings, shippedAppsFolder() + "/" + id, folder).checkFolder("");
}
