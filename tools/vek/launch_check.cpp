#include <fmt/format.h>

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "foundation/bx_string.h"
#include "os/bx_file.h"
#include "tools/vek/near_words.h"
#include "tools/vek/real_way.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/shell_signs.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

// The commands of a descriptor, as the bridge launches them: what stands before the first double
// quote is the name of a file in the application's folder.

namespace {

using Kind = TreeLook::Kind;

constexpr mode_t kReadable = 0444;
constexpr mode_t kRunnable = 0555;

bool endsWith(const std::string& text, const char* end) {
    return BXString(text.c_str()).endsWith(end, true);
}

std::string withoutBlanksBehind(const std::string& text) {
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

// The head of a program; a whole script as a rule.
std::string headOf(const std::string& path) {
    std::string head(1 << 16, '\0');
    const BXFile file(path.c_str(), BXFile::Access::Read);
    head.resize(file.isOpen() ? file.readAt(0, head.data(), head.size()) : 0);
    return head;
}

// The program that the first line of a script names, or has looked for by env; empty for none.
std::string interpreterOf(const std::string& firstLine) {
    std::istringstream words(firstLine.substr(2));
    std::string word;
    words >> word;
    // Nobody looks for it; it would have to lie where the host happens to work.
    if (!word.empty() && word.find('/') == word.npos) return "./" + word;
    if (!endsWith(word, "/env") || !isThere(word)) return word;
    while (words >> word) {
        if (word == "-u") {
            words >> word;  // what env is to forget
        } else if (word[0] != '-' && word.find('=') == word.npos) {
            return word;
        }
    }
    return "";
}

bool canBeFound(const std::string& program) {
    if (program.find('/') != program.npos) return lookAt(program).kind == Kind::File;
    const char* const path = std::getenv("PATH");
    std::istringstream folders((path ? path : "") + std::string(":/usr/local/bin:/usr/bin:/bin"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (lookAt(folder + "/" + program).kind == Kind::File) return true;
    }
    return false;
}

// Whether the file begins as executables of Linux and macOS do.
bool isExecutableCode(const std::string& head) {
    static const std::string magics[] = {
        "\x7F"
        "ELF",
        "\xFE\xED\xFA\xCE",
        "\xCE\xFA\xED\xFE",
        "\xFE\xED\xFA\xCF",
        "\xCF\xFA\xED\xFE",
        "\xCA\xFE\xBA\xBE"};
    for (const std::string& magic : magics) {
        if (head.rfind(magic, 0) == 0) return true;
    }
    return false;
}

class CommandCheck {
public:
    CommandCheck(Findings& findings, const std::string& path, const std::string& folder,
                 const Descriptor& descriptor)
        : m_findings(findings), m_path(path), m_folder(folder), m_descriptor(descriptor) {}

    void check(const std::string& key) {
        const std::string command = m_descriptor.text(key);
        if (command.empty() || m_descriptor.values.at(key).hasUnpairedQuote)
            return;  // found already
        m_key = key;
        const std::size_t quote = command.find('"');
        const std::string name = command.substr(0, quote);
        const std::string file = m_folder + "/" + name;
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
                            "Name a script, an executable or a bundle.");
        } else {
            checkProgram(file);
            checkSigns(file, name);
        }
        const bool hasBlank = quote + 1 < command.size() && std::strchr(" \t", command[quote + 1]);
        if (quote != command.npos && hasBlank && kind == Kind::File) {
            findBlank(fmt::format("The blank behind the name in \"{}\" hands over an empty "
                                  "argument in front of the others.",
                                  command),
                      name);
        }
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
        const std::vector<std::string> near = nearWords(name, namesIn(m_folder));
        m_findings.add("command-file-missing", m_path, line,
                       fmt::format("{} names no file of this folder: \"{}\".", m_key, name),
                       near.empty() ? "Put the file into this folder, or name one that is there."
                                    : fmt::format("Write {}, which is there, if that is meant.",
                                                  orList(near)));
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
        const bool isScript = endsWith(file, ".sh");
        const mode_t wanted = isScript ? kReadable : kRunnable;
        const mode_t mode = lookAt(file).mode;
        if ((mode & wanted) != wanted) {
            findNotRunnable(
                file, fmt::format("Its mode is {}, so not every user can run it.", modeText(mode)),
                fmt::format("Run: chmod {} {}", isScript ? "a+r" : "a+rx", shellWord(file)));
            return;
        }
        const std::string closed = closedBehindLinks(file);
        if (!closed.empty() && closedBehindLinks(m_folder).empty()) {
            findNotRunnable(
                file,
                fmt::format("A link leads to it through {}, which is closed to some users.",
                            closed),
                "Put a file into its place that every user can run.");
            return;
        }
        const std::string head = headOf(file);
        if (head.empty()) {
            m_findings.add("command-empty", file, 0, "The file is empty, so it does nothing.",
                           "Write the command, or copy the file again.");
            return;
        }
        const bool hasInterpreter = head.rfind("#!", 0) == 0;
        const std::string firstLine = head.substr(0, head.find('\n'));
        if ((isScript || hasInterpreter) && firstLine.size() > 1 && firstLine.back() == '\r') {
            m_findings.add("script-line-ends", file, 1,
                           "Its lines end with a carriage return, which the shell takes for a part "
                           "of each command.",
                           "Save it again with Unix line ends.");
        } else if (!isScript && hasInterpreter) {
            checkInterpreter(file, firstLine);
        } else if (!isScript && !isExecutableCode(head)) {
            findNotRunnable(file, "It is no executable, and no script that begins with #!.",
                            "Begin it with #!/bin/sh or another interpreter, give a shell script "
                            "a name that ends in .sh, or put the executable there again.");
        }
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

    void checkInterpreter(const std::string& file, const std::string& firstLine) {
        const std::string program = interpreterOf(firstLine);
        if (program.empty() || canBeFound(program)) return;
        const bool isFolder = lookAt(program).kind == Kind::Folder;
        m_findings.add("interpreter-missing", file, 1,
                       fmt::format("{} is to run it, and is {}.", program,
                                   isFolder ? "a folder" : "not on this machine"),
                       "Install that program, or name one that is there in the first line.");
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
