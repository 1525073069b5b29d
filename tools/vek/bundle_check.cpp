#include <fmt/format.h>

#include "foundation/bx_string.h"
#include "tools/vek/real_way.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;

constexpr mode_t kRunnable = 0555;

constexpr char kAdvice[] = "Put the whole bundle itself there.";

// The closed folder through which the bundle's own link leads; root gets through it all the same.
std::string closedByItsLink(const std::string& bundle, const std::string& folder) {
    const bool isItsOwn = isLink(bundle) && closedBehindLinks(folder).empty();
    return isItsOwn ? closedBehindLinks(bundle) : "";
}

}  // namespace

void checkBundle(Findings& findings, const std::string& bundle) {
    const std::string programs = bundle + "/Contents/MacOS";
    for (const std::string& folder : {bundle, bundle + "/Contents", programs}) {
        if (lookAt(folder).kind == Kind::Folder && !checkOpen(findings, folder)) return;
    }
    for (const std::string& name : namesIn(programs)) {
        const TreeLook look = lookAt(programs + "/" + name);
        if (look.kind == Kind::File && (look.mode & kRunnable) == kRunnable) return;
    }
    findings.add("broken-bundle", bundle, 0,
                 "There is no program in its folder Contents/MacOS that every user can run.",
                 "Put the whole bundle there again, with its permissions.");
}

void checkBundles(Findings& findings, const std::string& folder) {
    for (const std::string& name : namesIn(folder)) {
        if (!BXString(name.c_str()).endsWith(".app", true)) continue;
        const std::string bundle = folder + "/" + name;
        const Kind kind = lookAt(bundle).kind;
        if (kind == Kind::BrokenLink) {
            findings.add("broken-link", bundle, 0, "This link leads nowhere.",
                         "Make what it leads to, or put a bundle into its place.");
        } else if (kind == Kind::Hidden) {
            findings.add("broken-bundle", bundle, 0, kHiddenLink, kAdvice);
        } else if (const std::string closed = closedByItsLink(bundle, folder); !closed.empty()) {
            findings.add(
                "broken-bundle", bundle, 0,
                fmt::format("A link leads to it through {}, which is closed to some users.",
                            closed),
                kAdvice);
        } else {
            checkBundle(findings, bundle);
            checkReach(findings, bundle);
        }
    }
}
