#include "tools/vek/program_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "os/bx_file.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = TreeLook::Kind;
using Fault = std::optional<ProgramFault>;

constexpr mode_t kReadable = 0444;
constexpr mode_t kRunnable = 0555;

// The head of a program; a whole script as a rule.
std::string headOf(const std::string& path) {
    std::string head(1 << 16, '\0');
    const BXFile file(path.c_str(), BXFile::Access::Read);
    head.resize(file.isOpen() ? file.readAt(0, head.data(), head.size()) : 0);
    return head;
}

bool beginsWith(const std::string& text, const std::string& begin) {
    return text.compare(0, begin.size(), begin) == 0;
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
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
    return std::any_of(std::begin(magics), std::end(magics),
                       [&](const std::string& magic) { return beginsWith(head, magic); });
}

bool isNoText(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\f';
}

// The lines of a script. A program may be packed behind them: its bytes are none of the script's.
std::string scriptIn(const std::string& head) {
    return {head.begin(), std::find_if(head.begin(), head.end(), isNoText)};
}

std::string firstLineOf(const std::string& text) {
    return text.substr(0, text.find_first_of("\r\n"));
}

// The first line that ends with a carriage return; 0 where none does.
int lineOfCarriageReturn(const std::string& script) {
    const bool isOfOldMacs = script.find('\n') == script.npos;
    int line = 1;
    for (std::size_t i = 0; i < script.size(); ++i) {
        const bool endsHere = i + 1 == script.size() || script[i + 1] == '\n' || isOfOldMacs;
        if (script[i] == '\r' && endsHere) return line;
        if (script[i] == '\n') ++line;
    }
    return 0;
}

Fault faultOfEncoding(const std::string& head, ProgramForm form) {
    if (beginsWith(head, "\xFF\xFE") || beginsWith(head, "\xFE\xFF")) {
        return ProgramFault{"not-text", 0, "This is UTF-16, which no shell reads.",
                            "Save it again as plain text or as UTF-8 without a mark."};
    }
    if (beginsWith(head, "{\\rtf")) {
        return ProgramFault{"not-text", 0, "This is a formatted document (RTF), and no script.",
                            "Save it again as plain text."};
    }
    const std::string mark = "\xEF\xBB\xBF";
    if (beginsWith(head, mark) && (form == ProgramForm::Script || beginsWith(head, mark + "#!"))) {
        return ProgramFault{"byte-order-mark", 1,
                            "The file begins with a byte-order mark, which becomes part of its "
                            "first line.",
                            "Save it again as UTF-8 without a byte-order mark."};
    }
    return {};
}

// The words of a first line behind its #!, without env and what belongs to that.
std::vector<std::string> wordsToRun(const std::string& firstLine) {
    std::istringstream line(firstLine.substr(2));
    std::vector<std::string> words;
    for (std::string word; line >> word;) words.push_back(word);
    if (words.empty()) return words;
    // Nobody looks for it; it would have to lie where the host happens to work.
    if (words[0].find('/') == words[0].npos) words[0] = "./" + words[0];
    if (!endsWith(words[0], "/env") || !isThere(words[0])) return words;
    std::size_t at = 1;
    for (; at < words.size(); ++at) {
        std::string& word = words[at];
        if (word == "-u") {
            ++at;  // what env is to forget
        } else if (beginsWith(word, "-S") && word.size() > 2) {
            word.erase(0, 2);
            if (word.find('=') == word.npos) break;
        } else if (word[0] != '-' && word.find('=') == word.npos) {
            break;
        }
    }
    words.erase(words.begin(), words.begin() + static_cast<int>(std::min(at, words.size())));
    return words;
}

// Empty where the first line names none.
std::string interpreterOf(const std::string& firstLine) {
    const std::vector<std::string> words = wordsToRun(firstLine);
    return words.empty() ? "" : words[0];
}

std::string nameOfInterpreter(const std::string& script) {
    const std::string program = interpreterOf(firstLineOf(script));
    return program.substr(program.rfind('/') + 1);
}

bool isRunnableFile(const std::string& path) {
    const TreeLook look = lookAt(path);
    return look.kind == Kind::File && (look.mode & 0111) != 0;
}

Fault faultOfInterpreter(const std::string& firstLine) {
    const std::string program = interpreterOf(firstLine);
    if (program.empty() || canBeFound(program)) return {};
    const Kind kind = lookAt(program).kind;
    const char* const fault = kind == Kind::Folder ? "and is a folder"
                              : kind == Kind::File ? "and is no program"
                                                   : "and is not on this machine";
    return ProgramFault{
        "interpreter-missing", 1, fmt::format("{} is to run it, {}.", program, fault),
        kind == Kind::File ? "Name a program in the first line that is there."
                           : "Install that program, or name one that is there in the first line."};
}

// What Bash and its like have and a plain sh has not; what stands in quotes aside.
bool usesOtherShell(const std::string& script) {
    std::istringstream lines(script);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find_first_not_of(" \t");
        if (begin == line.npos || line[begin] == '#') continue;
        const std::string code = line.substr(begin, line.find_first_of("'\"") - begin);
        for (const char* word : {"[[ ", "((", "source ", "declare ", "typeset ", "function "}) {
            if (beginsWith(code, word)) return true;
        }
        for (const char* part : {" [[ ", "=(", "<<<", " <(", " >("}) {
            if (code.find(part) != code.npos) return true;
        }
    }
    return false;
}

bool isPlainShell(const std::string& name) {
    return name == "sh" || name == "dash";
}

bool isShell(const std::string& name) {
    if (isPlainShell(name)) return true;
    static const std::vector<std::string> shells = {"ash",   "bash",  "busybox", "ksh", "mksh",
                                                    "pdksh", "rbash", "yash",    "zsh"};
    return contains(shells, name.substr(0, name.find_last_not_of("0123456789.-") + 1));
}

// sh reads the script, and the first line is a comment to it.
Fault faultOfShell(const std::string& script) {
    const std::string name = nameOfInterpreter(script);
    if (name.empty() || isPlainShell(name)) return {};
    if (!isShell(name)) {
        return ProgramFault{
            "script-not-for-sh", 1,
            fmt::format("The bridge has sh run what ends in .sh, and this is written for {}.",
                        name),
            "Give it a name that does not end in .sh, name that in the descriptor, and run chmod "
            "a+rx on it."};
    }
    if (!usesOtherShell(script)) return {};
    return ProgramFault{
        "script-for-other-shell", 1,
        fmt::format("The bridge has sh run what ends in .sh, and this has what {} knows and a "
                    "plain sh does not.",
                    name),
        fmt::format("Write it for sh, or give it a name without .sh, so that its first line has "
                    "{} run it.",
                    name)};
}

}  // namespace

bool canBeFound(const std::string& program) {
    if (program.find('/') != program.npos) return isRunnableFile(program);
    const char* const path = std::getenv("PATH");
    std::istringstream folders((path ? path : "") + std::string(":/usr/local/bin:/usr/bin:/bin"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (isRunnableFile(folder + "/" + program)) return true;
    }
    return false;
}

Fault faultOfMode(const std::string& file, ProgramForm form) {
    const bool isScript = form == ProgramForm::Script;
    const mode_t wanted = isScript ? kReadable : kRunnable;
    const mode_t mode = lookAt(file).mode;
    if ((mode & wanted) == wanted) return {};
    return ProgramFault{
        "command-not-runnable", 0,
        fmt::format("Its mode is {}, so not every user can run it.", modeText(mode)),
        fmt::format("Run: chmod {} {}", isScript ? "a+r" : "a+rx", shellWord(file))};
}

Fault faultOfContent(const std::string& file, ProgramForm form) {
    const bool isScript = form == ProgramForm::Script;
    const std::string head = headOf(file);
    if (head.empty()) {
        return ProgramFault{"command-empty", 0, "The file is empty, so it does nothing.",
                            "Write the command, or copy the file again."};
    }
    if (const Fault fault = faultOfEncoding(head, form)) return fault;
    if (isExecutableCode(head)) {
        if (!isScript) return {};
        return ProgramFault{"command-not-runnable", 0,
                            "It is an executable, and the bridge has sh read what ends in .sh.",
                            "Give it a name that does not end in .sh, and name that in the "
                            "descriptor."};
    }
    const bool hasInterpreter = beginsWith(head, "#!");
    if (!isScript && !hasInterpreter) {
        return ProgramFault{"command-not-runnable", 0,
                            "It is no executable, and no script that begins with #!.",
                            "Begin it with #!/bin/sh or another interpreter, give a shell script "
                            "a name that ends in .sh, or put the executable there again."};
    }
    const std::string script = scriptIn(head);
    const int line = lineOfCarriageReturn(script);
    // Behind the first line other interpreters take either.
    if (line == 1 || (line > 1 && (isScript || isShell(nameOfInterpreter(script))))) {
        return ProgramFault{"script-line-ends", line,
                            "Its lines end with a carriage return, which the shell takes for a "
                            "part of each command.",
                            "Save it again with Unix line ends."};
    }
    if (!isScript) return faultOfInterpreter(firstLineOf(script));
    return hasInterpreter ? faultOfShell(script) : Fault();
}
