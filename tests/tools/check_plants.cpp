#include "tests/tools/check_plants.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace fs = std::filesystem;

namespace {

using Found = std::vector<std::string>;

constexpr Plant::With kOthers = Plant::With::Others;
constexpr Plant::With kNothing = Plant::With::Nothing;

void setMode(const std::string& path, mode_t mode) {
    ASSERT_EQ(chmod(path.c_str(), mode), 0) << path;
}

// A file that every user may write.
void writeShared(const std::string& path, const std::string& bytes) {
    writeFile(path, bytes);
    setMode(path, 0666);
}

void makeShared(const std::string& folder) {
    makeFolders(folder);
    setMode(folder, 0777);
}

std::string root(const std::string& name) {
    return Tree::root() + "/" + name;
}

int countLines(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

// The number of the line that was added.
std::string appendLine(const std::string& path, const std::string& line) {
    const std::string text = readFile(path) + line + "\n";
    writeFile(path, text);
    return std::to_string(countLines(text));
}

// A wrong line in the descriptor of an application that has others, too.
Plant lineOf(const char* mistake, const char* code, const char* line) {
    return {mistake, kOthers, [=] {
                if (!fileIsThere(Tree::app("Lines", "Vek_Info.txt"))) addGoodApp("Lines");
                const std::string number = appendLine(Tree::app("Lines", "Vek_Info.txt"), line);
                return Found{std::string(code) + " VekApps/Lines/Vek_Info.txt:" + number};
            }};
}

// A wrong line in the object list.
Plant objectOf(const char* mistake, const char* code, const std::string& line) {
    return {mistake, kOthers, [=] {
                const std::string number = appendLine(Tree::objectList(), line);
                return Found{std::string(code) + " VekHub/Vek_ObjectList.txt:" + number};
            }};
}

// An application whose descriptor is this; its id is the mistake.
Plant descriptorOf(const char* id, const std::string& descriptor, const Found& found,
                   Plant::With with = kNothing) {
    return {id, with, [=] {
                addGoodApp(id);
                writeFile(Tree::app(id, "Vek_Info.txt"), descriptor);
                Found all;
                for (const std::string& one : found) {
                    const std::size_t colon = one.find(':');
                    all.push_back(one.substr(0, colon) + " VekApps/" + id + "/Vek_Info.txt" +
                                  (colon == one.npos ? "" : one.substr(colon)));
                }
                return all;
            }};
}

// An application with these lines behind the first four of its descriptor.
Plant linesOf(const char* id, const char* lines, const Found& found) {
    return {id, kOthers, [=] {
                addGoodApp(id, lines);
                Found all;
                for (const std::string& one : found) {
                    const std::size_t colon = one.find(':');
                    all.push_back(one.substr(0, colon) + " VekApps/" + id + "/Vek_Info.txt" +
                                  one.substr(colon));
                }
                return all;
            }};
}

// An application with a file of this name and these bytes.
Plant fileOf(const char* id, const char* name, const std::string& bytes, const std::string& found,
             Plant::With with = kOthers) {
    return {id, with, [=] {
                addGoodApp(id);
                writeShared(Tree::app(id, name), bytes);
                const std::size_t colon = std::min(found.find(':'), found.size());
                return Found{found.substr(0, colon) + " VekApps/" + id + "/" + name +
                             found.substr(colon)};
            }};
}

Plant modeOf(const char* id, const char* name, mode_t mode, const char* code) {
    return {id, kOthers, [=] {
                addGoodApp(id);
                const std::string path = std::string("VekApps/") + id + (*name ? "/" : "") + name;
                setMode(root(path), mode);
                return Found{std::string(code) + " " + path};
            }};
}

// A file in place of the edit.sh that the descriptor names; `code` is found of it.
Plant editOf(const char* id, const char* name, const std::string& bytes, mode_t mode,
             const std::string& found) {
    return {id, kOthers, [=] {
                addGoodApp(id);
                const std::string text = readFile(Tree::app(id, "Vek_Info.txt"));
                writeFile(Tree::app(id, "Vek_Info.txt"),
                          text.substr(0, text.find("edit.sh")) + name + "\"\n");
                writeFile(Tree::app(id, name), bytes);
                setMode(Tree::app(id, name), mode);
                const std::size_t colon = std::min(found.find(':'), found.size());
                return Found{found.substr(0, colon) + " VekApps/" + id + "/" + name +
                             found.substr(colon)};
            }};
}

std::vector<Plant> plantsOfFolders() {
    return {
        {"a missing folder", kOthers,
         [] {
             fs::remove_all(root("VekProjects/Default"));
             return Found{"folder-missing VekProjects/Default"};
         }},
        {"a missing hub", kNothing,
         [] {
             fs::remove_all(root("VekHub"));
             return Found{"folder-missing VekHub"};
         }},
        {"a missing folder of applications", kNothing,
         [] {
             writeFile(Tree::hub("Vek_Application.txt"), "Example\n");
             fs::remove_all(root("VekApps"));
             return Found{"folder-missing VekApps"};
         }},
        {"a file in place of a folder", kNothing,
         [] {
             fs::remove_all(root("VekProjects"));
             writeFile(root("VekProjects"), "");
             return Found{"not-a-folder VekProjects"};
         }},
        {"a loop in place of a folder", kNothing,
         [] {
             fs::remove_all(root("VekProjects"));
             fs::create_symlink("VekProjects", root("VekProjects"));
             return Found{"broken-link VekProjects"};
         }},
        modeOf("Closed", "", 0, "folder-unreadable"),
        modeOf("Private", "", 0755, "folder-not-shared"),
        modeOf("Sticky", "", 01777, "folder-sticky"),
        {"a missing text file", kOthers,
         [] {
             fs::remove(Tree::hub("Vek_ObjectPath.txt"));
             return Found{"file-missing VekHub/Vek_ObjectPath.txt"};
         }},
        {"a folder in place of a text file", kOthers,
         [] {
             addGoodApp("Folder");
             makeShared(Tree::app("Folder", "Vek_InstallList.txt"));
             return Found{"not-a-file VekApps/Folder/Vek_InstallList.txt"};
         }},
        {"a pipe in place of the object list", kNothing,
         [] {
             fs::remove(Tree::objectList());
             EXPECT_EQ(mkfifo(Tree::objectList().c_str(), 0666), 0);
             return Found{"not-a-file VekHub/Vek_ObjectList.txt"};
         }},
        {"a link that leads nowhere", kOthers,
         [] {
             addGoodApp("Dangling");
             fs::create_symlink("/no/where", Tree::app("Dangling", "Vek_Config.txt"));
             return Found{"broken-link VekApps/Dangling/Vek_Config.txt"};
         }},
        {"the copy of an interrupted init", kOthers,
         [] {
             addGoodApp("Left");
             writeFile(Tree::app("Left", ".vek-init-12-3"), "#!/bi");
             return Found{"left-over-file VekApps/Left/.vek-init-12-3"};
         }},
        {"a helper without a program", kOthers,
         [] {
             makeFolders(Tree::hub("VekLocateApp.app/Contents/MacOS"));
             return Found{"broken-bundle VekHub/VekLocateApp.app"};
         }},
    };
}

std::vector<Plant> plantsOfFiles() {
    return {
        {"a descriptor that may not be read", kOthers,
         [] {
             addGoodApp("Unreadable");
             setMode(Tree::app("Unreadable", "Vek_Info.txt"), 0);
             return Found{"file-unreadable VekApps/Unreadable/Vek_Info.txt"};
         }},
        {"a selection that only one user may write", kOthers,
         [] {
             setMode(Tree::hub("Vek_ProjectPath.txt"), 0644);
             return Found{"file-not-shared VekHub/Vek_ProjectPath.txt"};
         }},
        fileOf("Large", "Vek_InstallList.txt", std::string((16 << 20) + 1, ' '), "file-too-large"),
        {"a selection that is too long", kNothing,
         [] {
             writeFile(Tree::hub("Vek_Application.txt"), std::string(4097, 'x'));
             return Found{"file-too-large VekHub/Vek_Application.txt"};
         }},
        fileOf("Binary", "Vek_Config.txt", std::string("PATH = \0\1", 9), "not-text"),
        fileOf("Utf16", "Vek_Info.txt", std::string("\xFF\xFEN\0A\0", 6), "not-text", kNothing),
        fileOf("Marked", "Vek_Info.txt", "\xEF\xBB\xBFNAME \"x\"\n", "byte-order-mark:1", kNothing),
    };
}

std::vector<Plant> plantsOfTheHub() {
    return {
        {"a selected application that is not there", kOthers,
         [] {
             writeFile(Tree::hub("Vek_Application.txt"), "Exampel\n");
             return Found{"selected-app-missing VekHub/Vek_Application.txt:1"};
         }},
        {"a selected application with a blank behind it", kNothing,
         [] {
             writeFile(Tree::hub("Vek_Application.txt"), "Example \n");
             return Found{"selected-app-missing VekHub/Vek_Application.txt:1"};
         }},
        {"a project folder that is not there", kNothing,
         [] {
             writeFile(Tree::hub("Vek_ProjectPath.txt"), "/no/such/folder\n");
             return Found{"project-folder-missing VekHub/Vek_ProjectPath.txt:1"};
         }},
        {"two project folders", kNothing,
         [] {
             writeFile(Tree::hub("Vek_ProjectPath.txt"), "/tmp\r\n/usr\r\n");
             return Found{"project-path-lines VekHub/Vek_ProjectPath.txt:2"};
         }},
        {"a relative project folder", kOthers,
         [] {
             writeFile(Tree::hub("Vek_ProjectPath.txt"), "VekProjects/Default");
             return Found{"relative-path VekHub/Vek_ProjectPath.txt:1"};
         }},
        objectOf("an object without a file", "object-file-missing", "/no/such/object"),
        objectOf("a relative object", "relative-path", "object"),
        {"an object with its extension", kOthers,
         [] {
             const std::string object = Tree::root() + "/VekProjects/whole.VEK";
             writeFile(object, "Vekb");
             return Found{"object-has-extension VekHub/Vek_ObjectList.txt:" +
                          appendLine(Tree::objectList(), object)};
         }},
        {"an object listed twice", kOthers,
         [] {
             const std::string object = Tree::root() + "/VekProjects/twice";
             writeFile(object + ".vek", "Vekb");
             appendLine(Tree::objectList(), object);
             return Found{"object-listed-twice VekHub/Vek_ObjectList.txt:" +
                          appendLine(Tree::objectList(), "\t" + object + " ")};
         }},
        {"an object whose file is empty", kOthers,
         [] {
             const std::string object = Tree::root() + "/VekProjects/empty";
             writeFile(object + ".ma", "");
             appendLine(Tree::objectList(), object);
             return Found{"object-file-damaged VekProjects/empty.ma"};
         }},
        {"an object whose file is another one", kOthers,
         [] {
             const std::string object = Tree::root() + "/VekProjects/other";
             writeFile(object + ".vek", "# OBJ");
             appendLine(Tree::objectList(), object);
             return Found{"object-file-damaged VekProjects/other.vek"};
         }},
        {"a folder in place of an object's file", kNothing,
         [] {
             const std::string object = Tree::root() + "/VekProjects/folder";
             makeFolders(object + ".vek");
             appendLine(Tree::objectList(), object);
             return Found{"not-a-file VekProjects/folder.vek"};
         }},
    };
}

std::vector<Plant> plantsOfConfigurations() {
    static const char config[] = "Vek_Config.txt";
    return {
        fileOf("NoEquals", config, "\nPATH \"/tmp\"\n", "config-without-equals:2", kNothing),
        fileOf("Misspelt", config, "APP_UNLOCKED = TRUE\n", "misspelt-key:1", kNothing),
        fileOf("Twice", config, "PATH = \"/bin/sh\"\r\nX = 1\r\npath = \"/x\"\r\n", "duplicate-key:3",
               kNothing),
        fileOf("Quote", config, "PATH = \"/tmp\n", "unpaired-quote:1", kNothing),
        fileOf("Unlocked", config, "APPS_UNLOCKED = off\n", "unclear-switch:1", kNothing),
        fileOf("Relative", config, "PATH = Relative.app\n", "relative-path", kNothing),
        fileOf("Moved", config, "PATH = \"/Applications/Moved.app\"\n", "application-moved"),
        fileOf("Elsewhere", "Vek_InstallList.txt", "/\n \n /no/such/place\n",
               "installed-place-missing:3"),
        fileOf("Failed", "Vek_InstallLog.txt", "No room.\n", "install-failed"),
        {"a misspelt key of the hub", kOthers,
         [] {
             writeFile(Tree::hub(config), "MY_KEY = 1\nPAHT = \"/tmp\"\n");
             return Found{"misspelt-key VekHub/Vek_Config.txt:2"};
         }},
    };
}

std::vector<Plant> plantsOfApplications() {
    return {
        {"no application", kNothing,
         [] {
             fs::remove_all(root("VekApps/Example"));
             return Found{"no-application VekApps"};
         }},
        {"too many applications", kNothing,
         [] {
             for (int i = 0; i < 32; ++i) addGoodApp("App" + std::to_string(i));
             return Found{"too-many-applications VekApps"};
         }},
        {"a linked application", kOthers,
         [] {
             addGoodApp("../VekProjects/Outside");
             fs::create_symlink("../VekProjects/Outside", root("VekApps/Linked"));
             return Found{"linked-application VekApps/Linked"};
         }},
        {"an application with a quote in its name", kOthers,
         [] {
             addGoodApp("It's");
             return Found{"odd-application-name VekApps/It's"};
         }},
        {"an application with a line break in its name", kNothing,
         [] {
             addGoodApp("a\nb");
             return Found{"odd-application-name VekApps/a\nb"};
         }},
        {"ids that differ in letter case", kOthers,
         [] {
             addGoodApp("exAMPLE");
             return Found{"same-id VekApps/exAMPLE"};
         }},
        {"an application of the same name", kOthers,
         [] {
             addGoodApp("Zwin");
             const std::string text = readFile(Tree::app("Zwin", "Vek_Info.txt"));
             writeFile(Tree::app("Zwin", "Vek_Info.txt"),
                       "NAME \"Example\"" + text.substr(text.find('\n')));
             return Found{"same-name VekApps/Zwin/Vek_Info.txt"};
         }},
        {"a folder without a descriptor", kOthers,
         [] {
             makeShared(root("VekApps/None"));
             writeFile(Tree::app("None", "Vek_info.text"), "");
             return Found{"descriptor-missing VekApps/None"};
         }},
        {"a selected folder without a descriptor", kNothing,
         [] {
             makeShared(root("VekApps/None"));
             writeFile(Tree::hub("Vek_Application.txt"), "None");
             return Found{"descriptor-missing VekApps/None"};
         }},
    };
}

std::vector<Plant> plantsOfDescriptors() {
    const std::string four = "NAME x\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n";
    return {
        lineOf("a line that is no key", "unknown-key", "AUTHOR \"somebody\""),
        lineOf("a comment without a sign", "unknown-key", "This is my application."),
        lineOf("a misspelt key", "misspelt-key", "EXPORT_FLIPX TRUE"),
        lineOf("a key that is spelled right, but not as it is known", "misspelt-key",
               "TEMPLATE \"t\""),
        lineOf("a key with blanks", "misspelt-key", "group nsided polys = 1"),
        lineOf("a key in quotes", "misspelt-key", "\"EXPORT_MFLIP_X\" TRUE"),
        lineOf("a key that runs on", "key-run-on", "NORMAL_MAP_FLIP_XYZ FALSE"),
        lineOf("a key without its value", "empty-value", "LOCATE_COMMAND ="),
        lineOf("another version", "unknown-version", "VEK_VERSION 2"),
        lineOf("a key given twice", "duplicate-key", "extension: \".vek\""),
        lineOf("a switch that is off in words only", "unclear-switch", "IMPORT_POLYGROUPS off"),
        lineOf("a switch in quotes", "unclear-switch", "NORMAL_MAP_FLIP_Z \"No\""),
        descriptorOf("Empty", "", {"descriptor-empty"}, kOthers),
        descriptorOf("Blank", " \r\n\t\n", {"descriptor-empty"}),
        descriptorOf("Nameless", "EXTENSION .ma\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     {"name-missing"}, kOthers),
        descriptorOf("NoExtension", "NAME x\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     {"extension-missing"}),
        descriptorOf("EmptyExtension",
                     "NAME y\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\nEXTENSION \"\"\n",
                     {"extension-missing:4"}),
        descriptorOf("Dotless", "NAME z\nEXTENSION vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh",
                     {"extension-without-dot:2"}, kOthers),
        descriptorOf("NoEdit", "NAME e\nEXTENSION .vek\nINIT_COMMAND init.sh\n",
                     {"command-missing"}, kOthers),
        descriptorOf("NoInit", "NAME i\nEXTENSION .vek\nEDIT_COMMAND edit.sh\n",
                     {"command-missing"}),
        descriptorOf("HalfQuoted",
                     "NAME \"h\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     {"unpaired-quote:1"}, kOthers),
        descriptorOf("MisspeltExtension",
                     "NAME m\nEXTENTION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     {"misspelt-key:2"}),
        descriptorOf("Locates", four + "LOCATE_COMMAND \"locate.sh\"\n",
                     {"command-file-missing:5"}),
    };
}

std::vector<Plant> plantsOfCommands() {
    return {
        descriptorOf("Typo",
                     "NAME t\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"Edit.sh\"\n",
                     {"command-file-missing:4"}, kOthers),
        descriptorOf("BlankBeforeQuote",
                     "NAME b\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh \"-v\"\n",
                     {"blank-in-command:4"}, kOthers),
        descriptorOf("BlankArgument",
                     "NAME c\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"edit.sh -v\"\n",
                     {"blank-in-command:4"}),
        editOf("Plain", "edit", "#!/bin/sh\n", 0644, "command-not-runnable"),
        editOf("Hidden", "edit-hidden.sh", "#!/bin/sh\n", 0700, "command-not-runnable"),
        {"a command that is a folder", kNothing,
         [] {
             addGoodApp("FolderCommand");
             fs::remove(Tree::app("FolderCommand", "edit.sh"));
             makeFolders(Tree::app("FolderCommand", "edit.sh"));
             return Found{"command-not-runnable VekApps/FolderCommand/edit.sh"};
         }},
        editOf("Windows", "windows.sh", "#!/bin/sh\r\necho\r\n", 0755, "script-line-ends:1"),
        editOf("Interpreter", "edit.py", "#!/no/such/python -u\n", 0755, "interpreter-missing:1"),
        editOf("Blanks", "my program", "#!/bin/sh\n", 0755, "blank-in-path"),
        editOf("Bundle", "Bundle.app", "no folder", 0755, "broken-bundle"),
    };
}

std::vector<Plant> plantsOfSwitches() {
    return {
        linesOf("Cancel", "EXPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\nIMPORT_FLIP_X 1\nIMPORT_FLIP_Z 1\n",
                {"mirrors-cancel:6"}),
        linesOf("Three",
                "EXPORT_MFLIP_X\nEXPORT_MFLIP_Y\nEXPORT_MSWITCH_YZ\n"
                "IMPORT_MFLIP_X\nIMPORT_MFLIP_Y\nIMPORT_MSWITCH_YZ\n",
                {"mirrors-without-need:7"}),
        linesOf("OneWay", "IMPORT_FLIP_Y yes\nEXPORT_FLIP_Y no\n", {"round-trip-turns:5"}),
        linesOf("NormalsOneWay", "EXPORT_FLIP_NORMALS TRUE\n", {"round-trip-turns:5"}),
        linesOf("TurnedTwice",
                "EXPORT_SWITCH_YZ #t\nIMPORT_SWITCH_YZ #t\n"
                "EXPORT_FLIP_NORMALS #t\nIMPORT_FLIP_NORMALS #t\n",
                {"normals-turned-twice:7"}),
    };
}

}  // namespace

void addGoodApp(const std::string& id, const std::string& lines) {
    makeShared(Tree::root() + "/VekApps/" + id);
    for (const char* script : {"init.sh", "edit.sh"}) {
        writeFile(Tree::app(id, script), "#!/bin/sh\nexit 0\n");
        setMode(Tree::app(id, script), 0755);
    }
    writeFile(Tree::app(id, "Vek_Info.txt"),
              "NAME \"The " + id.substr(0, id.find('\n')) +
                  "\"\nEXTENSION \".vek\"\nINIT_COMMAND \"init.sh\"\nEDIT_COMMAND \"edit.sh\"\n" +
                  lines);
    setMode(Tree::app(id, "Vek_Info.txt"), 0644);
}

const std::vector<Plant>& plants() {
    static const std::vector<Plant> all = [] {
        std::vector<Plant> gathered;
        for (const auto& some : {plantsOfFolders(), plantsOfFiles(), plantsOfTheHub(),
                                 plantsOfConfigurations(), plantsOfApplications(),
                                 plantsOfDescriptors(), plantsOfCommands(), plantsOfSwitches()}) {
            gathered.insert(gathered.end(), some.begin(), some.end());
        }
        return gathered;
    }();
    return all;
}
