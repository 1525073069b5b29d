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
                if (std::string(file) == "Example.app") {
                    addBundle(Tree::app(id, file));
                } else {
                    writeFile(Tree::app(id, file), "#!/bin/sh\n");
                }
                setMode(Tree::app(id, closed), mode);
                return Found{code + (" VekApps/" + std::string(id) + "/" + closed)};
            }};
}

// An application with a bundle, of whose folder Contents this is made.
Plant bundleOf(const char* id, const std::function<void(const std::string&)>& change,
               const char* below, const char* found) {
    return {id, kNothing, [=] {
                addGoodApp(id);
                const std::string bundle = Tree::app(id, "My.app");
                addBundle(bundle);
                change(bundle + "/Contents");
                const std::string where =
                    std::string(below) == "/.." ? "" : "/Contents" + std::string(below);
                return foundIn("VekApps/" + std::string(id) + "/My.app" + where, found);
            }};
}

// One whose program has these bytes.
Plant programOf(const char* id, const std::string& bytes, const char* found) {
    return bundleOf(
        id, [=](const std::string& path) { writeFile(path + "/MacOS/Example", bytes); },
        "/MacOS/Example", found);
}

}  // namespace

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
        descriptorOf(
            "Backquote",
            "NAME q\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND \"edit.sh\"`x\"\"\n",
            "sign-in-argument:4", kOthers),
        descriptorOf(
            "TwoWords",
            "NAME w\nEXTENSION .vek\nINIT_COMMAND \"init.sh\"a b\"\"\nEDIT_COMMAND edit.sh\n",
            "sign-in-argument:3"),
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
        editOf("WindowsBelow", "windows.sh", "\n\necho\r\n", 0755, "script-line-ends:3", kNothing),
        editOf("OldMac", "mac.sh", "#!/bin/sh\recho", 0755, "script-line-ends:1", kNothing),
        editOf("Python", "python.sh", "#!/usr/bin/env python3\nimport sys\n", 0755,
               "script-not-for-sh:1", kNothing),
        editOf("Bash", "bash.sh", "#!/bin/bash\n# plain\nif [[ -n $1 ]]; then exit; fi\n", 0755,
               "script-for-other-shell:1", kNothing),
        editOf("Code", "code.sh",
               "\x7F"
               "ELF",
               0755, "command-not-runnable", kNothing),
        editOf("Utf16Script", "wide.sh", std::string("\xFF\xFE#\0!\0", 6), 0755, "not-text",
               kNothing),
        editOf("FormattedScript", "formatted.sh", "{\\rtf1 echo}", 0755, "not-text", kNothing),
        editOf("MarkedScript", "marked.sh", "\xEF\xBB\xBF#!/bin/sh\n", 0755, "byte-order-mark:1",
               kNothing),
        editOf("MarkedProgram", "marked", "\xEF\xBB\xBF#!/bin/sh\n", 0755, "byte-order-mark:1",
               kNothing),
        editOf("NoInterpreter", "data.py", "#!/etc/passwd\n", 0755, "interpreter-missing:1",
               kNothing),
        editOf("Split", "split.py", "#!/usr/bin/env -Snosuchprog -u\n", 0755,
               "interpreter-missing:1", kNothing),
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

std::vector<Plant> plantsOfBundles() {
    return {
        belowOf("ClosedBundle", "Example.app", "Example.app", 0700, "folder-not-shared"),
        belowOf("ClosedContents", "Example.app", "Example.app/Contents", 0700, "folder-not-shared"),
        belowOf("NoBundle", "Example.app", "Example.app", 0, "folder-unreadable"),
        bundleOf(
            "NoProgram", [](const std::string& path) { fs::remove(path + "/MacOS/Example"); },
            "/Info.plist", "broken-bundle"),
        bundleOf(
            "NoList", [](const std::string& path) { fs::remove(path + "/Info.plist"); }, "/..",
            "broken-bundle"),
        bundleOf(
            "Junk", [](const std::string& path) { writeFile(path + "/Info.plist", "junk"); },
            "/Info.plist", "broken-bundle"),
        programOf("EmptyBundle", "", "broken-bundle"),
        programOf("TextBundle", "hello\n", "broken-bundle"),
        programOf("WindowsBundle", "#!/bin/sh\r\n", "script-line-ends:1"),
        programOf("NoRunner", "#!/no/such\n", "interpreter-missing:1"),
        bundleOf(
            "ClosedProgram",
            [](const std::string& path) { setMode(path + "/MacOS/Example", 0744); },
            "/MacOS/Example", "broken-bundle"),
    };
}
