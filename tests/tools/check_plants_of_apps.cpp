#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/check_plant_kit.h"

namespace fs = std::filesystem;

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
        lineOf("two keys on a line", "two-keys", "EXPORT_SWITCH_YZ TRUE IMPORT_SWITCH_YZ TRUE"),
        lineOf("a blank that is none", "odd-quotes", "NORMAL_MAP_FLIP_Y\xC2\xA0No"),
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
        descriptorOf("Unpaired", four + "TAMPLATE t\"\n", "unpaired-quote:5"),
        descriptorOf("Curly",
                     "NAME “c”\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "odd-quotes:1"),
        descriptorOf("Apostrophes",
                     "NAME a\nEXTENSION '.vek'\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "odd-quotes:2"),
        descriptorOf("CurlyCommand",
                     "NAME c\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND “edit.sh”\n",
                     "odd-quotes:4"),
        descriptorOf("TwoKeys",
                     "NAME \"k\" EXTENSION \".vek\"\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "two-keys:1"),
        descriptorOf("StarExtension",
                     "NAME s\nEXTENSION *.vek\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n",
                     "odd-extension:2"),
        descriptorOf("Version", four + "VEK_VERSION 1.5\n", "unknown-version:5"),
        descriptorOf("Locates", four + "LOCATE_COMMAND \"locate.sh\"\n", "command-file-missing:5"),
    };
}

std::vector<Plant> plantsOfShippedFiles() {
    return {
        {"a shipped script that is not there", kOthers,
         [] {
             fs::remove(Tree::app("Blender", "common.sh"));
             return Found{"shipped-file-missing VekApps/Blender/common.sh"};
         }},
        {"a shipped command that is not there", kNothing,
         [] {
             fs::remove(Tree::app("Example", "edit.sh"));
             return Found{"shipped-file-missing VekApps/Example/edit.sh"};
         }},
        {"a shipped folder that is not there", kNothing,
         [] {
             fs::remove_all(Tree::app("Blender", "addon"));
             return Found{"shipped-file-missing VekApps/Blender/addon"};
         }},
        {"a shipped bundle without its program", kNothing,
         [] {
             fs::remove(Tree::app("Example", "Example.app/Contents/MacOS/Example"));
             return Found{
                 "shipped-file-missing VekApps/Example/Example.app/Contents/MacOS/Example"};
         }},
        {"a link in place of a shipped folder", kNothing,
         [] {
             fs::remove_all(Tree::app("Blender", "addon"));
             makeFolders(Tree::project("addon"));
             fs::create_symlink(Tree::project("addon"), Tree::app("Blender", "addon"));
             return Found{"linked-folder VekApps/Blender/addon"};
         }},
        {"a file in place of a shipped folder", kNothing,
         [] {
             fs::remove_all(Tree::app("Blender", "addon"));
             writeFile(Tree::app("Blender", "addon"), "");
             return Found{"not-a-folder VekApps/Blender/addon"};
         }},
        {"a shipped file in a folder of one user", kNothing,
         [] {
             setMode(Tree::app("Blender", "addon/vek_bridge"), 0700);
             return Found{"folder-not-shared VekApps/Blender/addon/vek_bridge"};
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
