#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/check_plant_kit.h"

namespace fs = std::filesystem;

namespace {

// An application with this file in it, and this mode of the file or of a folder on the way.
Plant belowOf(const char* id, const char* file, const char* closed, mode_t mode, const char* code) {
    return {id, kNothing, [=] {
                addGoodApp(id);
                const std::string path = Tree::app(id, file);
                makeFolders(path.substr(0, path.rfind('/')));
                writeFile(path, "#!/bin/sh\n");
                setMode(path, 0755);
                setMode(Tree::app(id, closed), mode);
                return Found{code + (" VekApps/" + std::string(id) + "/" + closed)};
            }};
}

}  // namespace

std::vector<Plant> plantsOfApplications() {
    return {
        {"no application", kNothing,
         [] {
             fs::remove_all(root("VekApps"));
             makeShared(root("VekApps"));
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
        lineOf("a quote without its partner", "unpaired-quote", "TAMPLATE t\""),
        lineOf("a switch in quotes", "unclear-switch", "NORMAL_MAP_FLIP_Z \"No\""),
        descriptorOf("Empty", "", "descriptor-empty"),
        descriptorOf("Blank", " \r\n\t\n", "descriptor-empty"),
        descriptorOf("Nameless", "EXTENSION .ma\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "name-missing", kOthers),
        descriptorOf("NoExtension", "NAME x\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "extension-missing"),
        descriptorOf("EmptyExtension",
                     "NAME y\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\nEXTENSION \"\"\n",
                     "extension-missing:4"),
        descriptorOf("Dotless", "NAME z\nEXTENSION vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh",
                     "extension-without-dot:2"),
        descriptorOf("BlankExtension",
                     "NAME q\nEXTENSION \".vek \"\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "odd-extension:2"),
        descriptorOf("FolderExtension",
                     "NAME f\nEXTENSION .vek/x\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "odd-extension:2"),
        descriptorOf("DotExtension",
                     "NAME d\nEXTENSION \".\"\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "odd-extension:2"),
        descriptorOf("NoEdit", "NAME e\nEXTENSION .vek\nINIT_COMMAND init.sh\n", "command-missing"),
        descriptorOf("NoInit", "NAME i\nEXTENSION .vek\nEDIT_COMMAND edit.sh\n", "command-missing"),
        descriptorOf("MisspeltExtension",
                     "NAME m\nEXTENTION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "misspelt-key:2"),
        descriptorOf("Locates", four + "LOCATE_COMMAND \"locate.sh\"\n", "command-file-missing:5"),
    };
}

std::vector<Plant> plantsOfCommands() {
    return {
        descriptorOf("Typo",
                     "NAME t\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"Edit.sh\"\n",
                     "command-file-missing:4", kOthers),
        descriptorOf("BlankBeforeQuote",
                     "NAME b\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh \"-v\"\n",
                     "blank-in-command:4", kOthers),
        descriptorOf("BlankArgument",
                     "NAME c\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"edit.sh -v\"\n",
                     "blank-in-command:4"),
        descriptorOf("BlankBehind",
                     "NAME h\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"edit.sh \"\n",
                     "blank-in-command:4"),
        descriptorOf("OutsideTheQuotes",
                     "NAME o\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"edit.sh\" -v\n",
                     "unpaired-quote:4"),
        descriptorOf(
            "TwoPairs",
            "NAME p\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"edit.sh\" \"-v\"\n",
            "blank-in-command:4"),
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
        editOf("FolderInterpreter", "folder.py", "#!/usr/bin\n", 0755, "interpreter-missing:1"),
        editOf("NoProgram", "noprogram", "echo 1\n", 0755, "command-not-runnable"),
        editOf("Blanks", "my program", "#!/bin/sh\n", 0755, "blank-in-path"),
        editOf("Bundle", "Bundle.app", "no folder", 0755, "broken-bundle"),
        editOf("EmptyScript", "nothing.sh", "", 0755, "command-empty", kNothing),
        editOf("Env", "env.py", "#!/usr/bin/env -S nosuchprog -u\n", 0755, "interpreter-missing:1",
               kNothing),
        editOf("Both", "this&that", "#!/bin/sh\n", 0755, "sign-in-path", kNothing),
        editOf("Braces", "{edit,it}", "#!/bin/sh\n", 0755, "sign-in-path", kNothing),
        editOf("Rights", "rights", "#!/bin/sh\n", 04755, "runs-as-owner", kNothing),
        editOf("Dollar", "edit$x.sh", "#!/bin/sh\n", 0755, "sign-in-path", kNothing),
        {"an executable in a folder whose name ends a command", kNothing,
         [] {
             addGoodApp("A;B");
             const std::string text = readFile(Tree::app("A;B", "Vek_Info.txt"));
             writeFile(Tree::app("A;B", "Vek_Info.txt"),
                       text.substr(0, text.find("edit.sh")) + "edit\"\n");
             writeFile(Tree::app("A;B", "edit"), "#!/usr/bin/env A=1 sh\n");
             setMode(Tree::app("A;B", "edit"), 0755);
             return Found{"sign-in-path VekApps/A;B/edit"};
         }},
        belowOf("ClosedBundle", "Example.app/Contents/MacOS/Example", "Example.app", 0700,
                "folder-not-shared"),
        belowOf("ClosedContents", "Example.app/Contents/MacOS/Example", "Example.app/Contents",
                0700, "folder-not-shared"),
        belowOf("NoBundle", "Example.app/Contents/MacOS/Example", "Example.app", 0,
                "folder-unreadable"),
        belowOf("AddOn", "addon/vek/part.py", "addon", 0700, "folder-not-shared"),
        belowOf("Common", "common.sh", "common.sh", 0600, "file-not-shared"),
        {"a command in a folder of its own that is closed", kNothing,
         [] {
             addGoodApp("Bin", "LOCATE_COMMAND \"bin/locate.sh\"\n");
             makeFolders(Tree::app("Bin", "bin"));
             writeFile(Tree::app("Bin", "bin/locate.sh"), "#!/bin/sh\n");
             setMode(Tree::app("Bin", "bin"), 0700);
             return Found{"folder-not-shared VekApps/Bin/bin"};
         }},
        {"a command in a linked folder behind a closed one", kNothing,
         [] {
             addGoodApp("LinkedBin", "LOCATE_COMMAND \"bin/locate.sh\"\n");
             makeFolders(root("VekProjects/closed/bin"));
             writeFile(root("VekProjects/closed/bin/locate.sh"), "#!/bin/sh\n");
             setMode(root("VekProjects/closed"), 0700);
             fs::create_symlink("../../VekProjects/closed/bin", Tree::app("LinkedBin", "bin"));
             return Found{"command-not-runnable VekApps/LinkedBin/bin/locate.sh"};
         }},
        {"a command in a folder of its own that cannot be looked into", kNothing,
         [] {
             addGoodApp("NoBin", "LOCATE_COMMAND \"bin/locate.sh\"\n");
             makeFolders(Tree::app("NoBin", "bin"));
             writeFile(Tree::app("NoBin", "bin/locate.sh"), "#!/bin/sh\n");
             setMode(Tree::app("NoBin", "bin"), 0);
             return Found{"folder-unreadable VekApps/NoBin/bin"};
         }},
    };
}

std::vector<Plant> plantsOfSwitches() {
    return {
        linesOf("Cancel", "EXPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\nIMPORT_FLIP_X 1\nIMPORT_FLIP_Z 1\n",
                "mirrors-cancel:6"),
        linesOf("Three",
                "EXPORT_MFLIP_X\nEXPORT_MFLIP_Y\nEXPORT_MSWITCH_YZ\n"
                "IMPORT_MFLIP_X\nIMPORT_MFLIP_Y\nIMPORT_MSWITCH_YZ\n",
                "mirrors-without-need:7"),
        linesOf("OneWay", "IMPORT_FLIP_Y yes\nEXPORT_FLIP_Y no\n", "round-trip-turns:5"),
        linesOf("NormalsOneWay", "EXPORT_FLIP_NORMALS TRUE\n", "round-trip-turns:5"),
        linesOf("TurnedTwice",
                "EXPORT_SWITCH_YZ #t\nIMPORT_SWITCH_YZ #t\n"
                "EXPORT_FLIP_NORMALS #t\nIMPORT_FLIP_NORMALS #t\n",
                "normals-turned-twice:7"),
    };
}
