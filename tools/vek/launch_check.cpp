#include <fmt/format.h>

#include <cctype>
#include <cstring>

#include "foundation/bx_string.h"
#include "tools/vek/command_advice.h"
#include "tools/vek/program_check.h"
#include "tools/vek/real_way.h"
#include "tools/vek/shell_signs.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

// The commands of a descriptor, as the bridge launches them: what stands before the first double
// quote is the name of a file in the application's folder.

namespace {

using Kind = TreeLook::Kind;

bool endsWith(const std::string& text, const char* end) {
    return BXString(text.c_str()).endsWith(end, true);
}

std::string withoutBlanksBehind(const std::string& text) {
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

class CommandCheck {
public:
    CommandCheck(Findings& findings, const std::string& path, const std::string& folder,
                 const Descriptor& descriptor)
        : m_findings(findings), m_path(path), m_folder(folder), m_descriptor(descriptor) {}

    void check(const std::string& key) {
        const std::string command = m_descriptor.text(key);
        if (command.empty() || m_descriptor.values.at(key).isFaulty) return;  // found already
        m_key = key;
        const std::size_t quote = command.find('"');
        const std::string name = command.substr(0, quote);
        const std::string file = m_folder + "/" + name;
        if (m_findings.areAbout(file)) return;  // it ships, and is looked at already
        const Kind kind = lookAt(file).kind;
        if (kind == Kind::Missing || name.empty()) {
            findMissing(name, command);
        } else if (kind == Kind::BrokenLink) {
            m_findings.add("broken-link", file, 0, "This link leads nowhere.",
                           "Make what it leads to, or put a file into its place.");
        } else if (kind == Kind::Hidden) {
            findHidden(file);
        } else if (endsWith(name, ".app")) {
            checkBundle(m_findings, file);
        } else if (kind != Kind::File) {
            findNotRunnable(file, "This is no file that could be run.",
                            endsWith(name, ".app/")
                                ? fmt::format("Write {}, without the '/' at its end.",
                                              name.substr(0, name.size() - 1))
                                : "Name a script, an executable or a bundle.");
        } else {
            checkProgram(file);
            checkSigns(file, name);
        }
        const bool isRun = kind == Kind::File || (kind == Kind::Folder && endsWith(name, ".app"));
        if (isRun && quote != command.npos) checkArgument(name, command.substr(quote));
    }

private:
    void findBlank(const std::string& what, const std::string& file) {
        const std::string command = m_descriptor.text(m_key);
        const bool hasArgument = withoutBlanksBehind(command) != file;
        m_findings.add("blank-in-command", m_path, m_descriptor.lineOf(m_key), what,
                       hasArgument ? fmt::format("Write {} \"{}\"argument\"\", with no blank in "
                                                 "front of the argument's quote.",
                                                 m_key, file)
                                   : fmt::format("Write {} \"{}\".", m_key, file));
    }

    void checkArgument(const std::string& name, const std::string& argument) {
        if (argument.size() > 1 && std::strchr(" \t", argument[1])) {
            findBlank(fmt::format("The blank behind the name in \"{}\" hands over an empty "
                                  "argument in front of the others.",
                                  name + argument),
                      name);
            return;
        }
        std::string signs;
        if (!endsWith(name, ".app")) {
            signs = signsThatBreakArgument(
                argument, endsWith(name, ".sh") ? ShellForm::Quoted : ShellForm::Bare);
        }
        if (signs.empty() && m_key == "INIT_COMMAND") {
            signs = signsThatBreakArgument(argument, ShellForm::Administrator);
        }
        if (signs.empty()) return;
        m_findings.add("sign-in-argument", m_path, m_descriptor.lineOf(m_key),
                       fmt::format("The shell that starts {} takes this in its argument for its "
                                   "own: {}",
                                   name, signs == " " ? "a blank" : signs),
                       "Take it out of the argument, and have the file itself do what it stands "
                       "for.");
    }

    void findMissing(const std::string& name, const std::string& command) {
        const std::string trimmed = withoutBlanksBehind(name);
        const std::string firstWord = name.substr(0, name.find(' '));
        const int line = m_descriptor.lineOf(m_key);
        for (const std::string& file : {trimmed, firstWord}) {
            if (file.empty() || file == name || !isThere(m_folder + "/" + file)) continue;
            return findBlank(
                fmt::format("The blank in \"{}\" counts as a part of the file's name.", command),
                file);
        }
        m_findings.add("command-file-missing", m_path, line,
                       fmt::format("{} names no file of this folder: \"{}\".", m_key, name),
                       adviceForCommand(m_key, name, m_folder, m_descriptor));
    }

    void findNotRunnable(const std::string& file, const std::string& what,
                         const std::string& advice) {
        m_findings.add("command-not-runnable", file, 0, what, advice);
    }

    void findHidden(const std::string& file) {
        const std::string closed = closedFolderOf(file);
        if (!isLink(file) && mayBeOpened(closed) && !checkOpen(m_findings, closed)) return;
        findNotRunnable(file,
                        isLink(file)
                            ? kHiddenLink
                            : fmt::format("This user cannot reach it: {} is closed.", closed),
                        "Put a file into its place that every user can run.");
    }

    void checkProgram(const std::string& file) {
        const ProgramForm form =
            endsWith(file, ".sh") ? ProgramForm::Script : ProgramForm::Executable;
        if (const auto fault = faultOfMode(file, form)) return findFault(file, *fault);
        const std::string closed = closedOnTheWayFrom(m_folder, file);
        if (!closed.empty()) {
            findNotRunnable(
                file,
                fmt::format("A link leads to it through {}, which is closed to some users.",
                            closed),
                "Put a file into its place that every user can run.");
            return;
        }
        if (const auto fault = faultOfContent(file, form)) findFault(file, *fault);
    }

    void findFault(const std::string& file, const ProgramFault& fault) {
        m_findings.add(fault.code, file, fault.line, fault.what, fault.advice);
    }

    // Signs in the folder's name that break all there is of the application are found there.
    void checkSigns(const std::string& file, const std::string& name) {
        std::string signs =
            signsThatBreak(file, endsWith(file, ".sh") ? ShellForm::Quoted : ShellForm::Bare);
        if (m_key == "INIT_COMMAND") signs += signsThatBreak(file, ShellForm::Administrator);
        std::string shown;
        for (const char sign : signs) {
            const bool isOfFolder = name.find(sign) == name.npos;
            if (isOfFolder && std::string("'\"\\$`").find(sign) != std::string::npos) continue;
            if (std::isspace(static_cast<unsigned char>(sign))) continue;
            if (shown.find(sign) == shown.npos) shown += sign;
        }
        if (signs.find_first_of(" \t") != signs.npos) {
            m_findings.add("blank-in-path", file, 0,
                           "The path of an executable is not quoted, so the blank in it ends it.",
                           "Rename the file or its folder, or start it from a script (.sh).");
        }
        if (shown.empty()) return;
        m_findings.add(
            "sign-in-path", file, 0,
            fmt::format("The shell that starts it takes this in its path for its own: {}", shown),
            "Rename it, or the folder that has this in its name.");
    }

    Findings& m_findings;
    const std::string& m_path;
    const std::string& m_folder;
    const Descriptor& m_descriptor;
    std::string m_key;
};

}  // namespace

void checkCommands(Findings& findings, const std::string& path, const std::string& folder,
                   const Descriptor& descriptor) {
    CommandCheck check(findings, path, folder, descriptor);
    for (const char* key : {"LOCATE_COMMAND", "INIT_COMMAND", "EDIT_COMMAND"}) check.check(key);
}
