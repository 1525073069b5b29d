#include <fmt/format.h>
#include <sys/stat.h>

#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

// Whether every user gets at what lies below a folder.

namespace {

constexpr mode_t kReadable = 0444;
constexpr mode_t kPassable = 0555;

class ReachCheck {
public:
    // Of what is `isPrivate` the modes are its owner's matter, but for rights that it gives away.
    ReachCheck(Findings& findings, const std::string& top, bool isPrivate)
        : m_findings(findings), m_top(top), m_isPrivate(isPrivate) {}

    void check(const std::string& path) {
        struct stat status;
        if (lstat(path.c_str(), &status) != 0) return;
        const mode_t mode = status.st_mode & kModeBits;
        if (S_ISDIR(status.st_mode)) {
            if (m_isPrivate || checkOpen(m_findings, path)) checkFolder(path, mode);
        } else if (S_ISREG(status.st_mode)) {
            if (mode & (S_ISUID | S_ISGID)) findRights(path, mode);
            if ((mode & kReadable) != kReadable) {
                find("file-not-shared", path, mode, "can read it", "a+r");
            }
        }
    }

private:
    void checkFolder(const std::string& path, mode_t mode) {
        if ((mode & kPassable) != kPassable) {
            find("folder-not-shared", path, mode, "gets to what is in it", "a+rx");
        }
        for (const std::string& name : namesIn(path)) {
            if (!isOnesOwn(name)) check(path + "/" + name);
        }
    }

    void findRights(const std::string& path, mode_t mode) {
        m_findings.add("runs-as-owner", path, 0,
                       fmt::format("Its mode is {}: whoever starts it has its owner's rights.",
                                   modeText(mode)),
                       fmt::format("Run: chmod ug-s {}", shellWord(path)));
    }

    void find(const char* code, const std::string& path, mode_t mode, const char* what,
              const char* change) {
        if (m_isPrivate || m_findings.areAbout(path)) return;
        if (++m_count > Findings::kMostOfACode) {
            m_findings.add("folder-not-shared", m_top, 0,
                           "Much of what is in it is closed to some users.",
                           fmt::format("Run: chmod -R a+rX {}", shellWord(m_top)));
            return;
        }
        m_findings.add(code, path, 0,
                       fmt::format("Its mode is {}, so not every user {}.", modeText(mode), what),
                       fmt::format("Run: chmod {} {}", change, shellWord(path)));
    }

    Findings& m_findings;
    const std::string& m_top;
    const bool m_isPrivate;
    std::size_t m_count = 0;
};

}  // namespace

bool checkOpen(Findings& findings, const std::string& folder) {
    if (canLookInto(folder)) return true;
    findings.add(
        "folder-unreadable", folder, 0, "This user cannot look into this folder.",
        fmt::format("As its owner or an administrator, run: chmod a+rx {}", shellWord(folder)));
    return false;
}

void checkReach(Findings& findings, const std::string& top) {
    ReachCheck(findings, top, false).check(top);
}

void checkRights(Findings& findings, const std::string& top) {
    ReachCheck(findings, top, true).check(top);
}
