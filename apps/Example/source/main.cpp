#include <cmath>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "edit.h"

// The target application "Example": edits the objects that the bridge hands over. It knows the
// exchange files and the text files of the tree, nothing else.

namespace {

const char kUsage[] =
    "usage: vek_example [--tree FOLDER] [--twist DEGREES] [--known-flaws EDGES] edit\n"
    "\n"
    "Twists every mesh that VekHub/Vek_ObjectList.txt names and hands it back as a new object.\n"
    "\n"
    "  --tree FOLDER        the shared folder tree (/Users/Shared/Kelvaro)\n"
    "  --twist DEGREES      from the bottom of a mesh to its top (90)\n"
    "  --known-flaws EDGES  edges at which the mesh was wound against itself from the start (0)\n";

// The whole text as a number, with a point whatever the locale.
template <class Number>
bool parseNumber(const std::string& text, Number& number) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    return stream >> number && stream.eof();
}

bool parseOption(const std::string& name, const std::string& value, EditOptions& options) {
    if (name == "--tree") {
        options.tree = value;
        return !value.empty();
    }
    if (name == "--twist") return parseNumber(value, options.twist) && std::isfinite(options.twist);
    if (name == "--known-flaws") {
        return value.find('-') == std::string::npos && parseNumber(value, options.knownFlaws);
    }
    return false;
}

bool parseArguments(const std::vector<std::string>& arguments, EditOptions& options) {
    std::size_t next = 0;
    while (next + 1 < arguments.size()) {
        if (!parseOption(arguments[next], arguments[next + 1], options)) return false;
        next += 2;
    }
    return next + 1 == arguments.size() && arguments[next] == "edit";
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 1 && arguments[0] == "--help") {
        std::cout << kUsage;
        return 0;
    }
    EditOptions options;
    if (!parseArguments(arguments, options)) {
        std::cerr << kUsage;
        return 2;
    }
    std::cout << std::setprecision(9);
    const std::string problem = editObjects(options, std::cout);
    std::cout.flush();
    if (problem.empty()) return 0;
    std::cerr << problem << '\n';
    return 1;
}
