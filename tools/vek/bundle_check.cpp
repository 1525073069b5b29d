#include <fmt/format.h>

#include "foundation/bx_string.h"
#include "os/bundle_folder.h"
#include "os/bx_file.h"
#include "os/property_list.h"
#include "tools/vek/program_check.h"
#include "tools/vek/real_way.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;

constexpr char kBundleItself[] = "Put the whole bundle itself there.";
constexpr char kBundleAgain[] = "Put the whole bundle there again, with its permissions.";

void findBroken(Findings& findings, const std::string& path, const std::string& what,
                const std::string& advice = kBundleAgain) {
    findings.add("broken-bundle", path, 0, what, advice);
}

// The program that the property list names; empty where it names none.
std::string programNamedBy(const std::string& info) {
    std::string text;
    std::string name;
    if (!BXFile::readWhole(info.c_str(), text, kLargestText)) return "";
    bxPropertyListText(text.data(), text.size(), "CFBundleExecutable", name);
    return name;
}

void findNoProgram(Findings& findings, const std::string& bundle, const std::string& info) {
    const std::string named = programNamedBy(info);
    if (named.empty()) {
        findBroken(findings, info, "It names no program of the bundle (CFBundleExecutable).");
    } else {
        findBroken(findings, info,
                   fmt::format("The program that it names, {}, is not in {}/Contents/MacOS.", named,
                               bundle.substr(bundle.rfind('/') + 1)));
    }
}

// The bytes of a bundle's program are not written by hand.
void findFault(Findings& findings, const std::string& program, const ProgramFault& fault) {
    const bool isOfCommands = BXString(fault.code).startsWith("command-");
    if (isOfCommands) return findBroken(findings, program, fault.what);
    findings.add(fault.code, program, fault.line, fault.what, fault.advice);
}

void checkBundleProgram(Findings& findings, const std::string& program) {
    if (const auto fault = faultOfMode(program, ProgramForm::Executable)) {
        findBroken(findings, program, fault->what, fault->advice);
    } else if (const auto inside = faultOfContent(program, ProgramForm::Executable)) {
        findFault(findings, program, *inside);
    }
}

}  // namespace

void checkBundle(Findings& findings, const std::string& bundle) {
    if (findings.areIn(bundle)) return;
    if (lookAt(bundle).kind != Kind::Folder) {
        return findBroken(findings, bundle, "This is no folder, and so no bundle.", kBundleItself);
    }
    const std::string contents = bundle + "/Contents";
    for (const std::string& folder : {bundle, contents, contents + "/MacOS"}) {
        if (lookAt(folder).kind == Kind::Folder && !checkOpen(findings, folder)) return;
    }
    const std::string info = contents + "/Info.plist";
    if (lookAt(info).kind != Kind::File) {
        return findBroken(findings, bundle,
                          "It has no Contents/Info.plist, which names its program.");
    }
    if (!BXFile(info.c_str(), BXFile::Access::Read).isOpen()) return;  // its mode is found
    const std::string program = bxExecutableOfBundle(bundle.c_str()).c_str();
    if (program.empty()) return findNoProgram(findings, bundle, info);
    checkBundleProgram(findings, program);
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
            findBroken(findings, bundle, kHiddenLink, kBundleItself);
        } else if (const std::string closed = closedOnTheWayFrom(folder, bundle); !closed.empty()) {
            findBroken(findings, bundle,
                       fmt::format("A link leads to it through {}, which is closed to some users.",
                                   closed),
                       kBundleItself);
        } else {
            checkBundle(findings, bundle);
            checkReach(findings, bundle);
        }
    }
}
