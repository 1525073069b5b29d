#include "tools/vek/command_advice.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "foundation/bx_string.h"
#include "tools/vek/near_words.h"
#include "tools/vek/program_check.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_look.h"

namespace {

using Names = std::vector<std::string>;

bool isFileIn(const std::string& folder, const std::string& name) {
    return !name.empty() && lookAt(folder + "/" + name).kind == TreeLook::Kind::File;
}

// Files that may be meant: none of the tree's own, and none that another command names.
Names filesToOffer(const std::string& key, const std::string& folder,
                   const Descriptor& descriptor) {
    Names taken = appFiles();
    taken.push_back(kDescriptorName);
    taken.push_back(kInstallLogName);
    for (const char* other : {"LOCATE_COMMAND", "INIT_COMMAND", "EDIT_COMMAND"}) {
        const std::string command = descriptor.text(other);
        if (key != other) taken.push_back(command.substr(0, command.find('"')));
    }
    Names names = namesIn(folder);
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&](const std::string& name) { return contains(taken, name); }),
                names.end());
    return names;
}

// Without the folder in front of it.
std::string belowFolder(const std::string& path, const std::string& folder) {
    const bool isBelow = path.compare(0, folder.size() + 1, folder + "/") == 0;
    return isBelow ? path.substr(folder.size() + 1) : path;
}

// The file here that a line for a terminal would have a program run.
std::string fileInLine(const std::string& line, const std::string& folder) {
    std::istringstream words(line);
    std::string word;
    words >> word;  // the program
    while (words >> word) {
        if (word.compare(0, 2, "./") == 0) word.erase(0, 2);
        const std::string file = belowFolder(word, folder);
        if (isFileIn(folder, file)) return file;
    }
    return "";
}

// A program of the system with its arguments; open is one of Macs.
bool isLineForTerminal(const std::string& line) {
    const std::size_t blank = line.find(' ');
    const std::string program = line.substr(0, blank);
    return blank != line.npos && (program == "open" || canBeFound(program));
}

}  // namespace

std::string adviceForCommand(const std::string& key, const std::string& name,
                             const std::string& folder, const Descriptor& descriptor) {
    const std::string below =
        belowFolder(name.compare(0, 2, "./") == 0 ? name.substr(2) : name, folder);
    if (below != name && isFileIn(folder, below)) {
        return fmt::format("Write {} \"{}\", the name that it has here.", key, below);
    }
    const std::string file = fileInLine(name, folder);
    const bool isScript = BXString(file.c_str()).endsWith(".sh", true);
    if (!file.empty()) {
        return fmt::format("Write {} \"{}\", a file's name alone{}.", key, file,
                           isScript ? "" : "; what runs it goes behind #! in its first line");
    }
    if (isLineForTerminal(name) || name[0] == '/') {
        return "A command is a file of this folder: put a script (.sh) there that starts this, and "
               "name the script.";
    }
    const Names near = nearWords(name, filesToOffer(key, folder, descriptor));
    return near.empty() ? "Put the file into this folder, or name another one that is there for it."
                        : fmt::format("Write {}, which is there, if that is meant.", orList(near));
}
