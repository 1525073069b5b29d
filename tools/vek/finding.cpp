#include "tools/vek/finding.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>

namespace {

constexpr Severity kError = Severity::Error;
constexpr Severity kWarning = Severity::Warning;

const FindingKind& kindOf(const std::string& code) {
    for (const FindingKind& kind : findingKinds()) {
        if (code == kind.code) return kind;
    }
    throw std::logic_error("there is no finding " + code);
}

auto orderOf(const Finding& finding) {
    return std::tie(finding.path, finding.line, finding.what);
}

}  // namespace

const char* severityWord(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

const std::vector<FindingKind>& findingKinds() {
    static const std::vector<FindingKind> kinds = {
        // The tree's folders and files.
        {"tree-missing", kError, "There is no shared tree on this machine."},
        {"folder-missing", kError, "A folder of the tree is not there."},
        {"not-a-folder", kError, "Something else stands where a folder should be."},
        {"folder-unreadable", kError, "A folder cannot be looked into."},
        {"folder-not-shared", kWarning, "Not every user may use a folder."},
        {"folder-sticky", kWarning, "Users cannot replace each other's files in a folder."},
        {"linked-folder", kWarning, "A folder is a link to one that lacks something."},
        {"file-missing", kWarning, "A text file of the hub is not there."},
        {"not-a-file", kError, "Something else stands where a text file should be."},
        {"broken-link", kError, "A link leads nowhere."},
        {"file-unreadable", kError, "A file cannot be read."},
        {"file-not-shared", kWarning, "Not every user may read, or write, a file."},
        {"file-too-large", kError, "A text file is larger than what the bridge or a user expects."},
        {"not-text", kError, "A text file holds something else than text."},
        {"byte-order-mark", kError, "A text file begins with a mark that hides its first line."},
        {"runs-as-owner", kWarning, "A program of an application runs with its owner's rights."},
        {"left-over-file", kWarning, "A copy that was interrupted lies about."},
        {"shipped-file-missing", kError, "A file of a shipped application is not there."},
        {"application-elsewhere", kWarning, "An application's folder lies outside VekApps."},
        {"broken-bundle", kError, "An application bundle holds no program that can be run."},
        // The hub.
        {"selected-app-missing", kError, "The selected application is not there."},
        {"project-path-lines", kWarning, "The project path file has more than one line."},
        {"project-folder-missing", kError, "The project folder is not there."},
        {"project-folder-closed", kWarning, "Not every user may work in the project folder."},
        {"relative-path", kError, "A path does not begin at the root."},
        {"volume-prefix", kWarning, "A path begins with the name of a volume."},
        {"object-file-missing", kError, "The file of a listed object is not there."},
        {"object-has-extension", kError, "An object is listed with the extension of its file."},
        {"object-listed-twice", kWarning, "An object is listed twice."},
        {"object-file-damaged", kError, "The file of a listed object is no exchange file."},
        // Configuration files, of the hub and of applications.
        {"config-without-equals", kError, "A line of a configuration file has no '='."},
        {"misspelt-key", kError, "A key is not one, and looks much like one."},
        {"misspelt-setting", kWarning, "A script's own key looks much like one of the bridge's."},
        {"duplicate-key", kWarning, "A key is given twice."},
        {"unpaired-quote", kError, "A double quote has no partner."},
        {"odd-quotes", kError, "Quotes or blanks are not the plain ones."},
        {"unclear-switch", kError, "A switch is neither clearly on nor clearly off."},
        {"application-moved", kWarning, "An application is not where it was located."},
        // Target applications.
        {"no-application", kWarning, "There is no target application."},
        {"too-many-applications", kError, "There are more target applications than are read."},
        {"linked-application", kWarning, "An application's folder is a link."},
        {"odd-application-name", kError,
         "An application's folder has a name that breaks commands."},
        {"same-id", kError, "Two applications' folders differ in letter case only."},
        {"same-name", kWarning, "Two applications have the same NAME."},
        {"installed-place-missing", kWarning, "A place it was installed to is not there."},
        {"install-failed", kError, "The last installation failed."},
        // Descriptors.
        {"descriptor-missing", kWarning, "An application's folder has no descriptor."},
        {"descriptor-empty", kError, "A descriptor says nothing."},
        {"unknown-key", kWarning, "A line of a descriptor begins with no key."},
        {"key-run-on", kError, "A word is read as the key that it begins with."},
        {"two-keys", kError, "A second key stands on the line of another one."},
        {"empty-value", kWarning, "A key has no value."},
        {"name-missing", kWarning, "A descriptor has no NAME."},
        {"extension-missing", kError, "A descriptor has no EXTENSION."},
        {"extension-without-dot", kError, "The EXTENSION does not begin with a dot."},
        {"odd-extension", kError, "The EXTENSION is none that files have."},
        {"unknown-version", kWarning, "VEK_VERSION is not 1."},
        {"command-missing", kError, "A descriptor lacks a command."},
        // The commands of descriptors.
        {"command-file-missing", kError, "A command names no file of the folder."},
        {"blank-in-command", kError, "A blank stands between a command's file and its argument."},
        {"command-not-runnable", kError, "A command's file cannot be run by every user."},
        {"command-empty", kError, "A command's file is empty."},
        {"script-line-ends", kError, "A script has the line ends of another system."},
        {"script-not-for-sh", kError, "A script for something else is given to sh."},
        {"script-for-other-shell", kWarning, "A script needs more than a plain sh."},
        {"interpreter-missing", kError, "The program that is to run a script is not there."},
        {"blank-in-path", kError, "A program's path has a blank in it."},
        {"sign-in-path", kError,
         "A program's path has a sign in it that a shell takes for its own."},
        {"sign-in-argument", kError,
         "A command's argument has a sign in it that a shell takes for its own."},
        // The switches of descriptors.
        {"mirrors-cancel", kWarning, "Two flips cancel each other."},
        {"mirrors-without-need", kWarning,
         "Three or four mirrors, where fewer give the same handedness."},
        {"round-trip-turns", kWarning, "What is done for export is not undone for import."},
        {"normals-turned-twice", kWarning, "Normals are flipped besides being mirrored."},
    };
    return kinds;
}

void Findings::add(const char* code, const std::string& path, int line, const std::string& what,
                   const std::string& advice) {
    const FindingKind& kind = kindOf(code);
    std::size_t& count = m_counts[{path, &kind}];
    if (count >= kMostOfACode) {
        ++count;
        return;
    }
    const std::size_t before = m_all.size();
    insert({&kind, path, line, what, advice});
    count += m_all.size() - before;
}

void Findings::insert(const Finding& finding) {
    const auto at = std::lower_bound(
        m_all.begin(), m_all.end(), finding,
        [](const Finding& a, const Finding& b) { return orderOf(a) < orderOf(b); });
    if (at != m_all.end() && at->kind == finding.kind && orderOf(*at) == orderOf(finding)) return;
    m_all.insert(at, finding);
}

void Findings::tellWhatWasLeftOut() {
    for (const auto& [place, count] : m_counts) {
        if (count <= kMostOfACode) continue;
        insert({place.second, place.first, 0,
                "This was found " + std::to_string(count - kMostOfACode) + " times more in it.",
                "Mend those that are named, and check again."});
    }
    m_counts.clear();
}

bool Findings::areAbout(const std::string& path) const {
    return std::any_of(m_all.begin(), m_all.end(),
                       [&](const Finding& finding) { return finding.path == path; });
}

bool Findings::areIn(const std::string& folder) const {
    const std::string below = folder + "/";
    return areAbout(folder) || std::any_of(m_all.begin(), m_all.end(), [&](const Finding& finding) {
               return finding.path.compare(0, below.size(), below) == 0;
           });
}

std::size_t Findings::count(Severity severity) const {
    return static_cast<std::size_t>(
        std::count_if(m_all.begin(), m_all.end(),
                      [&](const Finding& finding) { return finding.kind->severity == severity; }));
}
