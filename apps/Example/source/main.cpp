#include <cmath>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "edit.h"
#include "hub.h"
#include "session.h"

// The target application "Example": edits the objects that the bridge hands over. It knows the
// exchange files and the text files of the tree, nothing else.

namespace {

const char kUsage[] =
    "usage: Example [OPTION...] [edit | quit]\n"
    "\n"
    "  edit   twists every mesh that VekHub/Vek_ObjectList.txt names and hands it back as a new\n"
    "         object\n"
    "  quit   ends the Example that is running\n"
    "\n"
    "Without a command it stays open for a minute, or until it is told to quit.\n"
    "\n"
    "  --tree FOLDER        the shared folder tree (what the installer noted in\n"
    "                       Contents/Resources/Vek_Tree.txt)\n"
    "  --twist DEGREES      from the bottom of a mesh to its top (90)\n"
    "  --known-flaws EDGES  edges at which the mesh was wound against itself from the start (0)\n"
    "\n"
    "The last two can also stand in the tree, in VekApps/Example/Example_Settings.txt, as TWIST "
    "and\n"
    "KNOWN_FLAWS.\n";

// The whole text as a number, with a point whatever the locale.
template <class Number>
bool parseNumber(const std::string& text, Number& number) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    return stream >> number && stream.eof();
}

bool takeTwist(const std::string& text, EditOptions& options) {
    return parseNumber(text, options.twist) && std::isfinite(options.twist);
}

bool takeKnownFlaws(const std::string& text, EditOptions& options) {
    return text.find('-') == std::string::npos && parseNumber(text, options.knownFlaws);
}

struct Arguments {
    std::string tree;
    std::string twist;
    std::string knownFlaws;
    std::string command;  // empty: stay open
};

bool parseArguments(const std::vector<std::string>& given, Arguments& arguments) {
    std::size_t next = 0;
    for (; next + 1 < given.size(); next += 2) {
        const std::string& name = given[next];
        if (name == "--tree") {
            arguments.tree = given[next + 1];
        } else if (name == "--twist") {
            arguments.twist = given[next + 1];
        } else if (name == "--known-flaws") {
            arguments.knownFlaws = given[next + 1];
        } else {
            return false;
        }
        if (given[next + 1].empty()) return false;
    }
    EditOptions numbers;
    if (!arguments.twist.empty() && !takeTwist(arguments.twist, numbers)) return false;
    if (!arguments.knownFlaws.empty() && !takeKnownFlaws(arguments.knownFlaws, numbers))
        return false;
    if (next == given.size()) return true;
    arguments.command = given[next];
    return arguments.command == "edit" || arguments.command == "quit";
}

// Where the installer noted that the tree is; empty when the bridge is not installed.
std::string installedTree(const std::string& program) {
    const std::size_t slash = program.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : program.substr(0, slash);
    std::ifstream file(folder + "/../Resources/Vek_Tree.txt");
    std::string tree;
    std::getline(file, tree);
    return tree;
}

// What was given counts before what stands in the settings.
bool takeOptions(const Arguments& arguments, EditOptions& options) {
    const Hub hub(options.tree);
    const std::string twist =
        arguments.twist.empty() ? hub.setting("Example", "TWIST") : arguments.twist;
    const std::string flaws =
        arguments.knownFlaws.empty() ? hub.setting("Example", "KNOWN_FLAWS") : arguments.knownFlaws;
    return (twist.empty() || takeTwist(twist, options)) &&
           (flaws.empty() || takeKnownFlaws(flaws, options));
}

std::string run(const std::string& command, const EditOptions& options) {
    if (command == "quit") return quit(options.tree);
    if (command == "edit") return editObjects(options, std::cout);
    return stayOpen(options.tree);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> given(argv + 1, argv + argc);
    if (given.size() == 1 && given[0] == "--help") {
        std::cout << kUsage;
        return 0;
    }
    Arguments arguments;
    if (!parseArguments(given, arguments)) {
        std::cerr << kUsage;
        return 2;
    }
    EditOptions options;
    options.tree = arguments.tree.empty() ? installedTree(argv[0]) : arguments.tree;
    if (options.tree.empty()) {
        std::cerr << "The bridge is not installed in this application.\n";
        return 1;
    }
    if (!takeOptions(arguments, options)) {
        std::cerr << "TWIST or KNOWN_FLAWS in Example_Settings.txt is no such number.\n";
        return 1;
    }
    std::cout << std::setprecision(9);
    const std::string problem = run(arguments.command, options);
    std::cout.flush();
    if (problem.empty()) return 0;
    std::cerr << problem << '\n';
    return 1;
}
