#include "tests/faults/stage.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/faults/fault_points.h"
#include "tests/support/bundle.h"
#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

using Ints = std::vector<std::int32_t>;
using Floats = std::vector<float>;

// Two maps, vertices and quads with their corner values.
std::string smallMesh() {
    ExchangeFile file;
    file.map(45001, "maps\\colour.tif").map(55001, "maps\\height.tif", 0.5f);
    file.vertices({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}).faces(20001, {0, 1, 2, 3});
    return file.corners(25001, {10, 11, 12, 13}).end().bytes();
}

// A square of two triangles, as the host writes it and as Maya does.
std::string scene(bool ofMaya) {
    const std::string uvs =
        ofMaya ? "\tsetAttr -s 6 \".uvst[0].uvsp\";\n"
                 "\tsetAttr -s 6 \".uvst[0].uvsp[0:5]\" -type \"float2\" 0 0 1 0 0 1 1 0 1 1 0 1;\n"
               : "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s 6 "
                 "\".uvst[0].uvsp\";\n"
                 "\tsetAttr \".uvst[0].uvsp[0:5]\" -type \"float2\" 0 0 1 0 0 1 1 0 1 1 0 1;\n";
    const std::string fc = ofMaya ? "\tsetAttr -s 2 \".fc[0:1]\"" : "\tsetAttr \".fc[0:1]\"";
    return "//Maya ASCII scene\ncreateNode mesh -n \"square\";\n" + uvs +
           "\tsetAttr -s 4 \".vt\";\n\tsetAttr \".vt[0:3]\" 0 0 0 1 0 0 0 1 0 1 1 0;\n"
           "\tsetAttr -s 5 \".ed\";\n\tsetAttr \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
           "\tsetAttr -s 2 \".fc\";\n" +
           fc + " -type \"polyFaces\" f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5;\n" +
           "// kept text\n// End of square.ma\n";
}

}  // namespace

// Of quads: the walk over triangles goes on into the corner values, and rewinds some of them twice.
std::string Stage::largeMesh() {
    Ints faces, corners;
    for (int i = 0; i < 60000; ++i) {
        faces.push_back(i % 20000);
        corners.push_back(i);
    }
    ExchangeFile file;
    file.vertices(Floats(60000, 2.0f)).faces(20001, faces).corners(25001, corners);
    return file.end().bytes();
}

std::string Stage::longList() {
    std::string list;
    for (int i = 0; i < 40; ++i) {
        list += "/" + std::string(9000, 'o') + std::to_string(i) + "\n";
    }
    return list;
}

Stage::Stage() {
    m_standIns.add("zenity", "echo /chosen/mesh.obj");
    HostWindow* const root = &windows.add(nullptr, "Root");
    HostWindow* const menu = &windows.add(root, "Menu");
    for (const char* name : {"A", "B", "C"}) windows.add(menu, name);
    m_bridge = &windows.add(root, "Bridge");
    item = &windows.add(m_bridge, "Item");
    addFiles();
    World world;
    world.shell = [this](const char* command) { return runInShell(command); };
    world.sleep = [this] {
        if (m_log && --m_pausesLeft == 0) writeFile(Tree::app("App", "Vek_InstallLog.txt"), m_log);
    };
    world.processes = file("processes");
    setWorld(std::move(world));
}

Stage::~Stage() {
    setWorld(World());
}

void Stage::addFiles() const {
    writeFile(Tree::hub("Vek_Config.txt"), "OTHER = 1\n");
    writeFile(Tree::hub("Vek_Application.txt"), "App");
    writeFile(Tree::hub("Vek_ProjectPath.txt"), "/projects/one\n");
    writeFile(Tree::hub("Vek_ObjectPath.txt"), "/former/object");
    writeFile(Tree::objectList(), file("mesh") + "\n" + file("second") + "\n/third\n");
    makeFolders(Tree::hub("VekLocateApp.app"));
    m_tree.addApp("App",
                  "NAME \"An application\"\nEXTENSION .vek\nTAMPLATE \"t.txt\"\nEXPORT_FLIP_X 1\n"
                  "EXPORT_SWITCH_YZ 1\nEXPORT_FLIP_Z 1\nIMPORT_FLIP_Y 1\nINIT_COMMAND \"init.sh\"\n"
                  "EDIT_COMMAND \"edit\"-v\"\"\nLOCATE_COMMAND \"Locate.app\"\n");
    makeBundle(Tree::app("App", "Locate.app"), "1", "#!/bin/sh\nexit 0\n");
    writeFile(Tree::app("App", "Vek_InstallList.txt"), "/Applications/Former\n");
    m_tree.addApp("Maya", "NAME \"Maya\"\nEXTENSION .ma\n");
    writeFile(Tree::app("Maya", "Vek_Config.txt"),
              "SMOOTH_ANGLE = 40\nAPPS_UNLOCKED = TRUE\nPATH = \"/Applications/Maya.app\"\n");
    makeFolders(Tree::project("textures"));
    writeFile(Tree::project("a.vek"), "a");
    writeFile(Tree::project("textures/b.tif"), "b");

    makeFolders(file("empty"));
    writeFile(file("mesh.vek"), smallMesh());
    writeFile(file("scene.ma"), scene(false));
    writeFile(file("maya.ma"), scene(true));
    writeFile(file("prefs.txt"), "NAME = \"a text\"\nNUMBER = 7.9\nFLAG = No\nREST = x\n");

    // A process that runs a bundle, and one that runs a bundle's script.
    makeBundle(file("Edit.app"), "1", "#!/bin/sh\nexit 0\n");
    makeFolders(file("processes/41"));
    makeFolders(file("processes/42"));
    const std::string script = file("Edit.app/Contents/MacOS/program");
    fs::create_symlink("/bin/true", file("processes/41/exe"));
    writeFile(file("processes/41/cmdline"), "true");
    fs::create_symlink(fs::canonical("/bin/sh"), file("processes/42/exe"));
    fs::create_symlink(Tree::root() + "/files", file("processes/42/cwd"));
    writeFile(file("processes/42/cmdline"),
              std::string("/bin/sh\0Edit.app/Contents/MacOS/program\0", 41));
}

void Stage::reset(const std::function<void()>& more) {
    for (const auto& entry : fs::directory_iterator(Tree::root())) fs::remove_all(entry);
    for (const char* folder : {"/VekHub", "/VekApps", "/VekProjects/Default"}) {
        makeFolders(Tree::root() + folder);
    }
    addFiles();
    if (more) more();
    takeItemBack();
    m_commands.clear();
    m_pausesLeft = m_pauses;
}

// Out of the menu and under the bridge's window again, by hand.
void Stage::takeItemBack() {
    if (item->previous) item->previous->next = item->next;
    if (item->next) item->next->previous = item->previous;
    if (item->parent && item->parent->child == item) item->parent->child = item->next;
    item->parent = m_bridge;
    item->next = item->previous = nullptr;
    m_bridge->child = item;
}

Stage::State Stage::state() const {
    State state;
    for (const auto& entry : fs::recursive_directory_iterator(Tree::root())) {
        const std::string path = entry.path().string().substr(Tree::root().size());
        if (entry.is_symlink()) {
            state[path] = fs::read_symlink(entry).string();
        } else if (entry.is_directory()) {
            state[path + "/"] = "";
        } else {
            state[path] = readFile(entry.path().string());
        }
    }
    state["(commands)"] = m_commands;
    state["(windows)"] = windows.draw();
    return state;
}

void Stage::setInstallerLog(const char* text, int pauses) {
    m_log = text;
    m_pauses = m_pausesLeft = pauses;
}

int Stage::runInShell(const std::string& command) {
    m_commands += command + "\n";
    const bool installs = command.find("init.sh") != std::string::npos;
    if (installs && m_log && m_pauses == 0) {
        writeFile(Tree::app("App", "Vek_InstallLog.txt"), m_log);
    }
    return 0;
}
