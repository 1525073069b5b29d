#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/check_plant_kit.h"

namespace fs = std::filesystem;

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
        {"a project folder that its owner may not write", kNothing,
         [] {
             makeFolders(root("VekProjects/mine"));
             setMode(root("VekProjects/mine"), 0577);
             writeFile(Tree::hub("Vek_ProjectPath.txt"), root("VekProjects/mine"));
             return Found{"project-folder-closed VekHub/Vek_ProjectPath.txt:1"};
         }},
        {"a project folder behind a closed one", kNothing,
         [] {
             makeFolders(root("VekProjects/closed/mine"));
             setMode(root("VekProjects/closed"), 0);
             writeFile(Tree::hub("Vek_ProjectPath.txt"), root("VekProjects/closed/mine"));
             return Found{"project-folder-closed VekHub/Vek_ProjectPath.txt:1"};
         }},
        {"applications behind a link into a closed folder", kNothing,
         [] {
             makeFolders(root("VekProjects/closed"));
             setMode(root("VekProjects/closed"), 0700);
             fs::rename(root("VekApps"), root("VekProjects/closed/apps"));
             fs::create_symlink("VekProjects/closed/apps", root("VekApps"));
             return Found{"folder-not-shared VekApps"};
         }},
        {"a hub file behind a link into a closed folder", kNothing,
         [] {
             makeFolders(root("VekProjects/closed"));
             setMode(root("VekProjects/closed"), 0700);
             fs::rename(Tree::objectList(), root("VekProjects/closed/list"));
             fs::create_symlink(root("VekProjects/closed/list"), Tree::objectList());
             return Found{"file-not-shared VekHub/Vek_ObjectList.txt"};
         }},
        {"a command behind a link into a closed folder", kNothing,
         [] {
             addGoodApp("Linking");
             makeFolders(root("VekProjects/closed"));
             setMode(root("VekProjects/closed"), 0700);
             fs::rename(Tree::app("Linking", "edit.sh"), root("VekProjects/closed/edit.sh"));
             fs::create_symlink("../../VekProjects/closed/edit.sh",
                                Tree::app("Linking", "edit.sh"));
             return Found{"command-not-runnable VekApps/Linking/edit.sh"};
         }},
        {"a project folder with its volume", kNothing,
         [] {
             writeFile(Tree::hub("Vek_ProjectPath.txt"),
                       "Macintosh HD:" + root("VekProjects/Default"));
             return Found{"volume-prefix VekHub/Vek_ProjectPath.txt:1"};
         }},
        {"an object with its volume", kNothing,
         [] {
             writeFile(Tree::project("a.vek"), "Vekb");
             return Found{"volume-prefix VekHub/Vek_ObjectList.txt:" +
                          appendLine(Tree::objectList(), "Macintosh HD:" + Tree::project("a"))};
         }},
        {"objects in a closed folder", kNothing,
         [] {
             makeFolders(root("VekProjects/closed/mine"));
             setMode(root("VekProjects/closed"), 0);
             appendLine(Tree::objectList(), root("VekProjects/closed/mine/a"));
             appendLine(Tree::objectList(), root("VekProjects/closed/b"));
             return Found{"folder-unreadable VekProjects/closed"};
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
        {"an object that one user may read", kOthers,
         [] {
             const std::string object = Tree::root() + "/VekProjects/private";
             writeFile(object + ".vek", "Vekb");
             setMode(object + ".vek", 0600);
             appendLine(Tree::objectList(), object);
             return Found{"file-not-shared VekProjects/private.vek"};
         }},
        {"an object in a folder of one user", kNothing,
         [] {
             makeFolders(Tree::project("mine/inner"));
             writeFile(Tree::project("mine/inner/a.ma"), "//Maya");
             setMode(Tree::project("mine"), 0700);
             appendLine(Tree::objectList(), Tree::project("mine/inner/a"));
             return Found{"folder-not-shared VekProjects/Default/mine"};
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

// Another user's folders are that user's to open.
std::vector<Plant> plantsOfRoot() {
    if (geteuid() != 0) return {};
    return {
        {"a project folder that only root may write", kNothing,
         [] {
             makeFolders(root("VekProjects/mine"));
             setMode(root("VekProjects/mine"), 0755);
             writeFile(Tree::hub("Vek_ProjectPath.txt"), root("VekProjects/mine"));
             return Found{"project-folder-closed VekHub/Vek_ProjectPath.txt:1"};
         }},
        {"an open project folder in one that root keeps closed", kNothing,
         [] {
             makeShared(root("VekProjects/closed/mine"));
             setMode(root("VekProjects/closed"), 0700);
             writeFile(Tree::hub("Vek_ProjectPath.txt"), root("VekProjects/closed/mine"));
             return Found{"project-folder-closed VekHub/Vek_ProjectPath.txt:1"};
         }},
        {"an open project folder behind a link into a closed one", kNothing,
         [] {
             makeShared(root("VekProjects/closed/mine"));
             setMode(root("VekProjects/closed"), 0700);
             fs::create_symlink("closed/mine", root("VekProjects/link"));
             writeFile(Tree::hub("Vek_ProjectPath.txt"), root("VekProjects/link"));
             return Found{"project-folder-closed VekHub/Vek_ProjectPath.txt:1"};
         }},
    };
}
