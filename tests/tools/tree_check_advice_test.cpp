// What a person is told to do, where a wrong word would make it worse.

#include <map>

#include "tests/tools/check_plant_kit.h"
#include "tests/tools/tree_to_check.h"

namespace {

using Advices = std::map<std::string, std::string>;

// The advice on the only mistake of an application whose EDIT_COMMAND has this value.
std::string adviceForEdit(const std::string& value) {
    const std::string path = Tree::app("App", "Vek_Info.txt");
    writeFile(path, "NAME App\nEXTENSION .vek\nINIT_COMMAND init.sh\nEDIT_COMMAND " + value + "\n");
    return only(checkTree()).advice;
}

// The same where the line of another key is this.
std::string adviceForLine(const std::string& key, const std::string& line) {
    const Advices lines = {{"NAME", "NAME App"},
                           {"EXTENSION", "EXTENSION .vek"},
                           {"INIT_COMMAND", "INIT_COMMAND init.sh"},
                           {"EDIT_COMMAND", "EDIT_COMMAND edit.sh"}};
    std::string text;
    for (const auto& [name, good] : lines) text += (name == key ? line : good) + "\n";
    writeFile(Tree::app("App", "Vek_Info.txt"), text);
    return only(checkTree()).advice;
}

std::string bytesOf(int line, const std::string& text) {
    return std::string(static_cast<std::size_t>(line - 1), '\n') + text;
}

}  // namespace

TEST(TreeCheck, NeverOffersTheFileOfAnotherCommand) {
    for (const char* gone : {"edit.sh", "init.sh"}) {
        const TreeToCheck tree;
        addGoodApp("App");
        fs::remove(Tree::app("App", gone));
        EXPECT_EQ(only(checkTree()).advice,
                  "Put the file into this folder, or name another one that is there for it.");
    }
}

TEST(TreeCheck, BringsAShippedFile) {
    for (const char* gone : {"edit.sh", "init.sh", "locate.sh", "Example.app"}) {
        const TreeToCheck tree;
        fs::remove_all(Tree::app("Example", gone));
        EXPECT_EQ(only(checkTree()).path, Tree::app("Example", gone));
        EXPECT_EQ(only(checkTree()).advice, "Run vek init, which brings it.");
        EXPECT_EQ(makeTree(Tree::root(), VEK_BUILD_DIR "/apps").count(TreeStep::Outcome::Failed),
                  0u);
        EXPECT_EQ(codesOf(checkTree()), Found()) << gone;
    }
}

TEST(TreeCheck, SaysThatACommandIsAFileAlone) {
    const TreeToCheck tree;
    addGoodApp("App");
    writeFile(Tree::app("App", "edit.py"), "import sys\n");
    addBundle(Tree::app("App", "My.app"));
    const std::string aFile =
        "A command is a file of this folder: put a script (.sh) there that starts this, and name "
        "the script.";
    for (const auto& [value, advice] : Advices{
             {"\"env edit.py\"",
              "Write EDIT_COMMAND \"edit.py\", a file's name alone; what runs it goes behind #! in "
              "its first line."},
             {"\"sh ./edit.sh\"", "Write EDIT_COMMAND \"edit.sh\", a file's name alone."},
             {"\"sh " + Tree::app("App", "edit.sh") + "\"",
              "Write EDIT_COMMAND \"edit.sh\", a file's name alone."},
             {"\"/bin/true\"", aFile},
             {"\"open -a Paint\"", aFile},
             {"\"true -v\"", aFile},
             {"\"My.app/\"", "Write My.app, without the '/' at its end."},
             {"\"" + Tree::app("App", "edit.sh") + "\"",
              "Write EDIT_COMMAND \"edit.sh\", the name that it has here."}}) {
        EXPECT_EQ(adviceForEdit(value), advice) << value;
    }
}

TEST(TreeCheck, NamesTheExtensionThatIsMeant) {
    const TreeToCheck tree;
    addGoodApp("App");
    const std::string another =
        "Write a dot and letters or digits behind it, of one kind of file alone, for example "
        "EXTENSION \".vek\".";
    for (const auto& [value, advice] :
         Advices{{"*.vek", "Write EXTENSION \".vek\"."},
                 {"\"*.vek\"", "Write EXTENSION \".vek\"."},
                 {".vek;", "Write EXTENSION \".vek\"."},
                 {".vek,", "Write EXTENSION \".vek\"."},
                 {"..vek", "Write EXTENSION \".vek\"."},
                 {"\".vek \"", "Write EXTENSION \".vek\"."},
                 {"vek", "Write EXTENSION \".vek\"."},
                 {"\".vek,.ma\"", another},
                 {".vek/x", another},
                 {".vek!", another},
                 {"\".\"", another},
                 {"'.vek'", "Write EXTENSION \".vek\", with straight double quotes."},
                 {"“.vek”", "Write EXTENSION \".vek\", with straight double quotes."},
                 {".vek\xC2\xA0", "Write EXTENSION \".vek\", with ordinary blanks."}}) {
        EXPECT_EQ(adviceForLine("EXTENSION", "EXTENSION " + value), advice) << value;
    }
    for (const char* fine : {".vek", "\".c4d\"", ".tar.gz", ".my-own_2", ".gebä", ".c++"}) {
        writeFile(Tree::app("App", "Vek_Info.txt"),
                  "NAME App\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\nEXTENSION " +
                      std::string(fine) + "\n");
        EXPECT_EQ(codesOf(checkTree()), Found()) << fine;
    }
}

TEST(TreeCheck, SaysWhichQuotesAndBlanksToWrite) {
    const TreeToCheck tree;
    addGoodApp("App");
    const std::string name = "Write NAME \"My App\", with ";
    for (const auto& [line, advice] :
         Advices{{"NAME “My App”", name + "straight double quotes."},
                 {"NAME 'My App'", name + "straight double quotes."},
                 {"NAME ‘My App’", name + "straight double quotes."},
                 {"NAME „My App“", name + "straight double quotes."},
                 {"NAME \"My App”", name + "straight double quotes."},
                 {"NAME\xC2\xA0\"My App\"", name + "ordinary blanks."},
                 {"\"NAME\" App", "Write NAME without quotes."},
                 {"“NAME” App", "Write NAME without quotes."},
                 {"\xC2\xA0NAME App", "Write NAME at the beginning of the line."}}) {
        EXPECT_EQ(adviceForLine("NAME", line), advice) << line;
    }
    addGoodApp("App", "IMPORT_POLYGROUPS “No”\n");
    EXPECT_EQ(only(checkTree()).advice,
              "Write IMPORT_POLYGROUPS TRUE or IMPORT_POLYGROUPS FALSE, without quotes.");
    EXPECT_EQ(adviceForEdit("“edit.sh”"),
              "Write EDIT_COMMAND \"edit.sh\", with straight double quotes.");
    EXPECT_EQ(adviceForEdit("edit.sh“-v”"),
              "Write EDIT_COMMAND and the value, with straight double quotes.");
    for (const char* fine : {"NAME Bob's App", "NAME \"Bob’s App\"", "NAME The “App”",
                             "NAME \"My\xC2\xA0 App\"", "NAME 'n"}) {
        addGoodApp("App");
        const std::string text = readFile(Tree::app("App", "Vek_Info.txt"));
        writeFile(Tree::app("App", "Vek_Info.txt"), fine + text.substr(text.find('\n')));
        EXPECT_EQ(codesOf(checkTree()), Found()) << fine;
    }
}

TEST(TreeCheck, ProposesNoKeyThatIsThere) {
    const TreeToCheck tree;
    addGoodApp("App", "GAME 1\n");
    EXPECT_STREQ(only(checkTree()).kind->code, "unknown-key");
    EXPECT_EQ(only(checkTree()).advice,
              "Take the line away, or put // in front of it if it is a comment.");
}

TEST(TreeCheck, TakesASwitchForOnThatIsMeantToBe) {
    const TreeToCheck tree;
    for (const char* on : {"\"TRUE\"", "On", "y", "“Yes”"}) {
        addGoodApp("App", "EXPORT_FLIP_X " + std::string(on) + "\nIMPORT_FLIP_X TRUE\n");
        EXPECT_EQ(codesOf(checkTree()), Found()) << on;
    }
    for (const char* off : {"\"No\"", "Off", "n"}) {
        addGoodApp("App", "IMPORT_POLYGROUPS " + std::string(off) + "\n");
        EXPECT_STREQ(only(checkTree()).kind->code, "unclear-switch") << off;
    }
}

TEST(TreeCheck, FindsASecondKeyOnlyWhereItIsOne) {
    for (const auto& [line, found] : Advices{{"TAMPLATE \"a\" EXTENSION \".b\"", "two-keys"},
                                             {"TAMPLATE a EXPORT_FLIP_X TRUE", "two-keys"},
                                             {"TAMPLATE \"an EXTENSION of it\"", ""},
                                             {"TAMPLATE an extension", ""},
                                             {"TAMPLATE THE EXTENSION OF MY NAME", ""},
                                             {"TAMPLATE a // EXTENSION is above", ""}}) {
        const TreeToCheck tree;
        addGoodApp("App", line + "\n");
        if (found.empty()) {
            EXPECT_EQ(codesOf(checkTree()), Found()) << line;
        } else {
            EXPECT_STREQ(only(checkTree()).kind->code, found.c_str()) << line;
        }
    }
}

TEST(TreeCheck, NamesAnApplicationThatLiesAFolderDeeper) {
    const TreeToCheck tree;
    addGoodApp("Paint");
    makeShared(Tree::root() + "/VekApps/Deep");
    fs::rename(Tree::root() + "/VekApps/Paint", Tree::app("Deep", "Paint"));
    EXPECT_EQ(only(checkTree()).advice, "Move its folder Paint, which has one, into VekApps.");
    fs::rename(Tree::root() + "/VekApps/Deep", Tree::root() + "/VekApps/paint");
    EXPECT_EQ(only(checkTree()).advice, "Move what is in its folder Paint up into this one.");
}

TEST(TreeCheck, SavesADocumentInsteadOfRenamingIt) {
    const TreeToCheck tree;
    addGoodApp("App");
    fs::rename(Tree::app("App", "Vek_Info.txt"), Tree::app("App", "Vek_Info.rtf"));
    EXPECT_EQ(only(checkTree()).advice,
              "Save Vek_Info.rtf as plain text under the name Vek_Info.txt if that is meant.");
}

TEST(TreeCheck, NamesTheIdOfTheApplicationThatIsMeant) {
    const TreeToCheck tree;
    addGoodApp("Paint");
    const std::string folder = Tree::root() + "/VekApps/Paint";
    for (const std::string& written :
         {std::string("The Paint"), folder, folder + "/", "file://" + folder,
          std::string("\"Paint\""), std::string("Paint\nExample")}) {
        writeFile(Tree::hub("Vek_Application.txt"), written);
        EXPECT_EQ(only(checkTree()).advice,
                  "Write Paint, the name of its folder, and nothing else.")
            << written;
    }
}

TEST(TreeCheck, NamesThePathThatIsMeant) {
    const TreeToCheck tree;
    const std::string folder = Tree::project("My Project");
    makeShared(folder);
    const std::string escaped = Tree::project("My\\ Project");
    for (const auto& [written, advice] : Advices{
             {folder + "  ", "Write " + folder + " and nothing else."},
             {escaped, "Write " + folder + " and nothing else."},
             {"\"" + folder + "\"", "Write " + folder + " and nothing else."},
             {"“" + folder + "”", "Write " + folder + " and nothing else."},
             {"file://" + Tree::project("My%20Project"), "Write " + folder + " and nothing else."},
             {"file://" + folder, "Write " + folder},
             {"\"" + folder + "\";", "Write the whole path, from its first '/' on."},
             {"smb://server/project", "Make the folder, or choose another project in the host."},
             {"~/project", "Write the whole path, from its first '/' on."}}) {
        writeFile(Tree::hub("Vek_ProjectPath.txt"), written);
        EXPECT_EQ(only(checkTree()).advice, advice) << written;
    }
}

TEST(TreeCheck, NamesTheObjectThatIsMeant) {
    const TreeToCheck tree;
    writeFile(Tree::project("a b.vek"), "Vekb");
    writeFile(Tree::project("c.obj"), "v 0 0 0\n");
    const std::string object = Tree::project("a b");
    for (const auto& [written, advice] : Advices{
             {Tree::project("a\\ b"), "Write " + object + " and nothing else."},
             {"\"" + object + "\"", "Write " + object + " and nothing else."},
             {"file://" + object, "Write " + object},
             {"# objects", "Take the line away if it is a comment: there are none in this file."},
             {Tree::project("c.obj"),
              "Write it without .obj, and export the object as one of those: c.obj itself is "
              "not read."}}) {
        writeFile(Tree::objectList(), written);
        EXPECT_EQ(only(checkTree()).advice, advice) << written;
    }
}

TEST(TreeCheck, LeavesObjectsOutsideTheTreeToTheirOwner) {
    const TreeToCheck tree;
    const TempFolder outside;
    makeFolders(outside / "mine");
    writeFile(outside / "mine/a.vek", "Vekb");
    ASSERT_EQ(chmod((outside / "mine/a.vek").c_str(), 0600), 0);
    ASSERT_EQ(chmod((outside / "mine").c_str(), 0700), 0);
    writeFile(Tree::objectList(), (outside / "mine") + "/a");
    EXPECT_EQ(codesOf(checkTree()), Found());
}

TEST(TreeCheck, LeavesAloneWhatIsOneUsersOwn) {
    const TreeToCheck tree;
    addGoodApp("App");
    for (const char* own : {"edit.log", "app.pid", "Vek_Info.txt~", "cache/a"}) {
        makeFolders(Tree::app("App", "cache"));
        writeFile(Tree::app("App", own), "x");
        setMode(Tree::app("App", own), 0600);
    }
    setMode(Tree::app("App", "cache"), 0700);
    makeFolders(Tree::root() + "/VekApps/__MACOSX/App");
    EXPECT_EQ(codesOf(checkTree()), Found());
    setMode(Tree::app("App", "cache/a"), 04700);
    EXPECT_EQ(codesOf(checkTree()), Found{"runs-as-owner VekApps/App/cache/a"});
}

TEST(TreeCheck, TakesScriptsOfAnyShellThatShCanRun) {
    const TreeToCheck tree;
    addGoodApp("App");
    for (const std::string& fine :
         {std::string("#!/bin/bash\nif [ -n \"$1\" ]; then echo 'a [[ b ]]'; fi\n# [[ x ]]\n"),
          std::string("#!/bin/zsh -e\nx=$(echo 1)\n"), std::string("echo no first line\n"),
          std::string("#!/usr/bin/env sh\n[[ x ]]\n"), std::string("#!/bin/sh\ntr '\r' x\n"),
          // A program that is packed behind the script.
          std::string("#!/bin/sh\nexit\n\x1F\x8B\x08\0\r\n", 21)}) {
        writeFile(Tree::app("App", "edit.sh"), fine);
        EXPECT_EQ(codesOf(checkTree()), Found()) << fine;
    }
    writeFile(Tree::app("App", "locate.py"), "#!/usr/bin/env sleep\nimport sys\r\n");
    setMode(Tree::app("App", "locate.py"), 0755);
    addGoodApp("App", "LOCATE_COMMAND locate.py\n");
    EXPECT_EQ(codesOf(checkTree()), Found());
    for (const char* other : {"[[ -n $1 ]]\n", "x=(a b)\n", "cat <<<\"$x\"\n", "source x.sh\n"}) {
        writeFile(Tree::app("App", "edit.sh"), "#!/usr/bin/env bash\n" + bytesOf(3, other));
        EXPECT_STREQ(only(checkTree()).kind->code, "script-for-other-shell") << other;
        EXPECT_EQ(only(checkTree()).advice,
                  "Write it for sh, or give it a name without .sh, so that its first line has bash "
                  "run it.");
    }
}

TEST(TreeCheck, CountsTurnsThatFewerMirrorsDoNotMake) {
    const TreeToCheck tree;
    std::string lines;
    for (const char* key : {"FLIP_X", "FLIP_Y", "FLIP_Z", "SWITCH_YZ"}) {
        lines += std::string("EXPORT_") + key + "\nIMPORT_" + key + "\n";
        addGoodApp("App", lines);
    }
    EXPECT_EQ(only(checkTree()).what,
              "EXPORT_FLIP_X, EXPORT_FLIP_Y, EXPORT_FLIP_Z and EXPORT_SWITCH_YZ mirror 4 times, "
              "where two or none would give the same handedness.");
    EXPECT_EQ(only(checkTree()).advice,
              "Find the two or none that the application needs and take the others away; keep them "
              "only if it faces the other way.");
}

TEST(TreeCheck, TakesANameWithOddQuotesForWhatItIsWhereItIsThere) {
    const TreeToCheck tree;
    addGoodApp("App");
    const std::string descriptor = Tree::app("App", "Vek_Info.txt");
    const std::string text = readFile(descriptor);
    writeFile(descriptor,
              text.substr(0, text.find("edit.sh")) + "\u00e9dit \u00ab x \u00bb.sh\"\n");
    fs::rename(Tree::app("App", "edit.sh"), Tree::app("App", "\u00e9dit \u00ab x \u00bb.sh"));
    const std::string config = Tree::app("App", "Vek_Config.txt");
    makeFolders(Tree::project("Paint \u201cPro\u201d.app"));
    writeFile(config, "PATH = \"" + Tree::project("Paint \u201cPro\u201d.app") + "\"\n");
    ASSERT_EQ(chmod(config.c_str(), 0666), 0);
    EXPECT_EQ(codesOf(checkTree()), Found());
}

TEST(TreeCheck, OffersANearNameBeforeItTakesACommandForALineOfATerminal) {
    const TreeToCheck tree;
    addGoodApp("App");
    const std::string descriptor = Tree::app("App", "Vek_Info.txt");
    const std::string text = readFile(descriptor);
    writeFile(descriptor, text.substr(0, text.find("edit.sh")) + "install plugin.sh\"\n");
    fs::rename(Tree::app("App", "edit.sh"), Tree::app("App", "install_plugin.sh"));
    EXPECT_EQ(only(checkTree()).advice,
              "Write install_plugin.sh, which is there, if that is meant.");
}
