#include "tests/tools/check_plants.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/check_plant_kit.h"

namespace fs = std::filesystem;

namespace {

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
             fs::remove(Tree::app("Example", "Vek_InstallList.txt"));
             fs::create_symlink("/no/where", Tree::app("Example", "Vek_InstallList.txt"));
             return Found{"broken-link VekApps/Example/Vek_InstallList.txt"};
         }},
        {"the copy of an interrupted init", kOthers,
         [] {
             writeFile(Tree::app("Example", ".vek-init-12-3"), "#!/bi");
             return Found{"left-over-file VekApps/Example/.vek-init-12-3"};
         }},
        {"a hub that is a link to an empty folder", kNothing,
         [] {
             fs::remove_all(root("VekHub"));
             makeShared(root("VekProjects/hub"));
             fs::create_symlink("VekProjects/hub", root("VekHub"));
             return Found{"linked-folder VekHub"};
         }},
        {"projects that are a link to an empty folder", kNothing,
         [] {
             fs::remove_all(root("VekProjects"));
             makeShared(root("VekHub/projects"));
             fs::create_symlink("VekHub/projects", root("VekProjects"));
             return Found{"linked-folder VekProjects"};
         }},
        {"an application in the hub", kOthers,
         [] {
             addGoodApp("../VekHub/Strayed");
             return Found{"application-elsewhere VekHub/Strayed"};
         }},
        {"an application at the top of the tree", kNothing,
         [] {
             addGoodApp("../VekHub/Strayed");
             fs::rename(Tree::hub("Strayed"), root("Strayed"));
             return Found{"application-elsewhere Strayed"};
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
        fileOf("Formatted", "Vek_Info.txt", "{\\rtf1\\ansi NAME \"x\"}", "not-text", kNothing),
        fileOf("Marked", "Vek_Info.txt", "\xEF\xBB\xBFNAME \"x\"\n", "byte-order-mark:1", kNothing),
    };
}

std::vector<Plant> plantsOfConfigurations() {
    static const char config[] = "Vek_Config.txt";
    return {
        fileOf("NoEquals", config, "\nPATH \"/tmp\"\n", "config-without-equals:2", kNothing),
        fileOf("Misspelt", config, "APP_UNLOCKED = TRUE\n", "misspelt-setting:1", kNothing),
        fileOf("Twice", config, "PATH = \"/bin/sh\"\r\nX = 1\r\npath = \"/x\"\r\n",
               "duplicate-key:3", kNothing),
        fileOf("Quote", config, "PATH = \"/tmp\n", "unpaired-quote:1", kNothing),
        fileOf("Curly", config, "PATH = “/bin/sh”\n", "odd-quotes:1", kNothing),
        fileOf("Unlocked", config, "APPS_UNLOCKED = off\n", "unclear-switch:1", kNothing),
        fileOf("Relative", config, "PATH = Relative.app\n", "relative-path:1", kNothing),
        fileOf("Prefixed", config, "PATH = \"Macintosh HD:/no/such/program\"\n",
               "application-moved:1", kNothing),
        fileOf("HalfPrefixed", config, "PATH = \"Macintosh HD:bin/sh\"\n", "relative-path:1",
               kNothing),
        fileOf("Moved", config, "PATH = \"/Applications/Moved.app\"\n", "application-moved:1"),
        fileOf("Relative", "Vek_InstallList.txt", "/\nApplications/Paint.app\n", "relative-path:2",
               kNothing),
        fileOf("Elsewhere", "Vek_InstallList.txt", "/\n \n /no/such/place\n",
               "installed-place-missing:3"),
        fileOf("Failed", "Vek_InstallLog.txt", "No room.\n", "install-failed"),
        {"a misspelt key of the hub", kOthers,
         [] {
             writeFile(Tree::hub(config), "MY_KEY = 1\nPAHT = \"/tmp\"\n");
             return Found{"misspelt-setting VekHub/Vek_Config.txt:2"};
         }},
    };
}

}  // namespace

const std::vector<Plant>& plants() {
    static const std::vector<Plant> all = [] {
        std::vector<Plant> gathered;
        for (const auto& some :
             {plantsOfFolders(), plantsOfFiles(), plantsOfTheHub(), plantsOfConfigurations(),
              plantsOfRoot(), plantsOfApplications(), plantsOfShippedFiles(), plantsOfBundles(),
              plantsOfDescriptors(), plantsOfCommands(), plantsOfSwitches()}) {
            gathered.insert(gathered.end(), some.begin(), some.end());
        }
        return gathered;
    }();
    return all;
}
