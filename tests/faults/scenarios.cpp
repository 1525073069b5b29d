#include "tests/faults/scenarios.h"

#include <cstring>
#include <filesystem>
#include <ostream>

#include "tests/support/temp_folder.h"

namespace {

template <class Number>
std::string block(Number number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

void initialize(const LoadedLibrary& library, Stage&) {
    library.call("InitializeVek", "/Applications");
}

void turnForApp(const LoadedLibrary& library, Stage& stage) {
    initialize(library, stage);
    library.call("VekSetExportScale", 1.0);
    library.call("GetVekAppIOPrefs", static_cast<double>(library.call("FindVekApp", "App")));
}

// The host's windows make their texts when they are asked for them first.
void moveAndTakeBack(const LoadedLibrary& library, Stage& stage) {
    char item[] = "Bridge:Item", anchor[] = "Menu:B";
    const auto move = reinterpret_cast<VekExport>(library.symbol("SetItemPos"));
    move(item, 0.0, anchor, 0, nullptr, 0, stage.windows.data());
    stage.takeItemBack();
}

Scenario plain(const char* name) {
    Scenario scenario;
    scenario.name = name;
    return scenario;
}

Scenario withText(const char* name, const std::string& text, float success, float failure) {
    Scenario scenario = plain(name);
    scenario.text = text;
    scenario.success = success;
    scenario.failures = {failure};
    return scenario;
}

Scenario ofApp(const char* name, float success, float failure) {
    Scenario scenario = withText(name, "", success, failure);
    scenario.application = "App";
    scenario.before = initialize;
    return scenario;
}

std::vector<Scenario> ofSetup() {
    Scenario init = withText("InitializeVek", "/Applications", 2.0f, 0.0f);
    init.failures = {0.0f, 1.0f, 2.0f};
    init.allowed = Scenario::Parts | Scenario::Torn;
    const std::string host = sizeof(void*) == 8 ? "Dorvia64.app" : "Dorvia.app";
    init.halfway = "PATH = \"/Applications/" + host + "\"\nOTHER = 1\n";
    std::vector<Scenario> all = {init};
    for (const char* name : {"VekSetExportScale", "VekSetExportOffsetX", "VekSetExportOffsetY",
                             "VekSetExportOffsetZ", "PrintInLog", "DeclareMacroActivated"}) {
        all.push_back(plain(name));
    }
    Scenario panel = withText("OpenFileDialog", "Choose a mesh", 0.0f, -1.0f);
    panel.given1 = "/chosen/mesh.obj";
    all.push_back(panel);
    return all;
}

std::vector<Scenario> ofObjects() {
    Scenario add = withText("AddVekObject", "/new/object", 1.0f, 0.0f);
    add.allowed = Scenario::Torn;
    Scenario append = withText("AddVekObjectToList", "/new/object", 0.0f, 0.0f);
    Scenario begin = append;
    begin.situation = "WithoutAList";
    begin.files = [] { std::filesystem::remove(Tree::objectList()); };
    begin.allowed = Scenario::Parts;
    Scenario clear = withText("ClearVekObjectList", "", 1.0f, 0.0f);
    Scenario create = clear;
    create.situation = "WithoutAList";
    create.files = begin.files;
    create.allowed = Scenario::Parts;
    Scenario read = withText("ReadVekObjectList", "", 3.0f, 0.0f);
    Scenario readLong = withText("ReadVekObjectList", "", 40.0f, 0.0f);
    readLong.situation = "OfManyPieces";
    readLong.files = [] { writeFile(Tree::objectList(), Stage::longList()); };
    Scenario get = plain("GetVekObjectPath");
    get.value = 2.0;
    get.given1 = "/third";
    get.before = [](const LoadedLibrary& library, Stage&) { library.call("ReadVekObjectList"); };
    Scenario release = plain("ReleaseVekObjectList");
    release.before = get.before;
    Scenario extract = withText("ExtractVekObject", "", 1.0f, 0.0f);
    extract.failures = {0.0f, 1.0f};
    extract.allowed = Scenario::Parts | Scenario::Torn;
    return {add, append, begin, clear, create, read, readLong, get, release, extract};
}

Scenario prepares(const char* name, const char* file, const char* situation) {
    Scenario scenario = withText(name, Stage::file(file), 0.0f, -1.0f);
    scenario.situation = situation;
    scenario.before = turnForApp;
    scenario.allowed = Scenario::Half;
    if (std::strcmp(file, "large.vek") == 0) {
        scenario.files = [] { writeFile(Stage::file("large.vek"), Stage::largeMesh()); };
        // The faces and their corner values.
        scenario.runs = 2;
    }
    const std::string path = file;
    if (path.substr(path.size() - 4) == ".vek") scenario.magic = "Vekb";
    return scenario;
}

std::vector<Scenario> ofExchange() {
    Scenario clear = withText("VekClearFile", Stage::file("mesh.vek"), 1.0f, 0.0f);
    Scenario create = withText("VekClearFile", Stage::file("new.vek"), 1.0f, 0.0f);
    create.situation = "ThatIsMissing";
    create.allowed = Scenario::Parts;
    Scenario clean = plain("VekCleanCaches");
    clean.allowed = Scenario::Parts;
    Scenario map = withText("GetFirstObjectTextureFileName", "", 0.0f, -1.0f);
    map.given1 = "maps/colour.tif";
    Scenario height = map;
    height.situation = "WithItsNumber";
    height.value = 2.0;
    height.given1 = "maps/height.tif";
    height.given2 = "0.500000";
    Scenario project = plain("ReadVekProjectPath");
    project.given1 = "/projects/one";
    return {prepares("VekPostExport", "mesh.vek", "OfAMesh"),
            prepares("VekPostExport", "large.vek", "OfALargeMesh"),
            prepares("VekPostExport", "scene.ma", "OfAScene"),
            prepares("VekPreImport", "mesh.vek", "OfAMesh"),
            prepares("VekPreImport", "large.vek", "OfALargeMesh"),
            prepares("VekPreImport", "maya.ma", "OfAScene"),
            clear,
            create,
            withText("VekDeleteFile", Stage::file("mesh.vek"), 1.0f, 0.0f),
            clean,
            map,
            height,
            withText("IsVekFilePathValid", Stage::file("mesh.vek"), 1.0f, 0.0f),
            project};
}

std::vector<Scenario> ofApplications() {
    std::vector<Scenario> all;
    const char* const getters[][2] = {{"GetVekAppId", "App"},
                                      {"GetVekAppName", "An application"},
                                      {"GetVekAppTamplate", "t.txt"},
                                      {"GetVekAppExt", ".vek"}};
    for (const auto& getter : getters) {
        Scenario scenario = ofApp(getter[0], 0.0f, 0.0f);
        scenario.given1 = getter[1];
        all.push_back(scenario);
    }
    Scenario prefs = ofApp("GetVekAppIOPrefs", 0.0f, 0.0f);
    prefs.application = "Maya";
    prefs.given1 = block(0);
    all.push_back(prefs);
    Scenario find = ofApp("FindVekApp", 0.0f, -1.0f);
    find.text = "app";
    find.givesIndex = true;
    all.push_back(find);
    Scenario selected = ofApp("GetVekAppIndex", 0.0f, -1.0f);
    selected.givesIndex = true;
    all.push_back(selected);
    Scenario set = ofApp("SetVekAppIndex", 0.0f, 0.0f);
    set.application = "Maya";
    set.allowed = Scenario::Torn;
    all.push_back(set);
    Scenario readPath = ofApp("ReadVekAppPath", 1.0f, 0.0f);
    readPath.application = "Maya";
    readPath.given1 = "/Applications/Maya.app";
    all.push_back(readPath);
    Scenario writePath = ofApp("WriteVekAppPath", 0.0f, 0.0f);
    writePath.application = "Maya";
    writePath.text = "/Elsewhere/Maya.app";
    writePath.allowed = Scenario::Parts | Scenario::Torn;
    all.push_back(writePath);
    Scenario installed = ofApp("VekAppIsInstalled", 1.0f, 0.0f);
    installed.text = "/applications/former/bin";
    all.push_back(installed);
    all.push_back(withText("IsAppPathValid", Stage::file("Edit.app"), 1.0f, 0.0f));
    Scenario program = withText("IsAppPathValid", Stage::file("mesh.vek"), 1.0f, 0.0f);
    program.situation = "OfAFile";
    all.push_back(program);
    return all;
}

std::vector<Scenario> ofControl() {
    Scenario install = ofApp("VekAppInstall", 0.0f, 1.0f);
    install.text = "/Applications/New";
    install.installerLog = "";
    install.pauses = 2;
    install.failures = {0.0f, 1.0f};
    install.allowed = Scenario::Parts;
    Scenario refused = install;
    refused.situation = "ThatFails";
    refused.success = 1.0f;
    refused.installerLog = "No permission.";
    refused.pauses = 0;
    refused.given1 = "No permission.";
    refused.allowed = Scenario::Parts | Scenario::Message;
    refused.messages = {
        "",
        "An error occurred during installation.\n"
        "One possible cause could be unsufficient permissions in target application installation "
        "folder.\n"
        "Please run Dorvia as an administrator and try again to install the Vek application!"};
    Scenario running = withText("VekAppIsRunning", Stage::file("Edit.app"), 1.0f, 0.0f);
    Scenario open = withText("OpenVekApplication", Stage::file("Edit.app"), 0.0f, 0.0f);
    open.situation = "ThatIsABundle";
    open.buffer1 = "an argument";
    Scenario script = withText("OpenVekApplication", Stage::file("run.sh"), 0.0f, 0.0f);
    script.situation = "ThatIsAScript";
    script.buffer1 = "an argument";
    Scenario edit = ofApp("CallVekAppCommand", 0.0f, -1.0f);
    edit.text = "edit_command";
    edit.failures = {-1.0f, 0.0f};
    Scenario locate = edit;
    locate.situation = "ThatIsABundle";
    locate.text = "LOCATE_COMMAND";
    Scenario admin = edit;
    admin.name = "CallVekAppCommandAsAdmin";
    return {install, refused, running, open, script, edit, locate, admin};
}

std::vector<Scenario> ofPreferences() {
    std::vector<Scenario> all;
    const struct {
        const char *name, *key;
        std::string given;
    } reads[] = {{"ReadConfigPrefAsString", "name", "a text"},
                 {"ReadConfigPrefAsBool", "flag", block(0)},
                 {"ReadConfigPrefAsInt", "number", block(7)},
                 {"ReadConfigPrefAsFloat", "number", block(7.9f)}};
    for (const auto& read : reads) {
        Scenario scenario = withText(read.name, Stage::file("prefs.txt"), 1.0f, 0.0f);
        scenario.buffer1 = read.key;
        scenario.given2 = read.given;
        all.push_back(scenario);
    }
    const struct {
        const char *name, *key;
        std::string value;
    } writes[] = {{"WriteConfigPrefAsString", "name", "another, longer text"},
                  {"WriteConfigPrefAsBool", "flag", block(1)},
                  {"WriteConfigPrefAsInt", "number", block(1234567)},
                  {"WriteConfigPrefAsFloat", "number", block(0.5f)}};
    for (const auto& write : writes) {
        Scenario scenario = withText(write.name, Stage::file("prefs.txt"), 1.0f, 0.0f);
        scenario.failures = {0.0f, 1.0f};
        scenario.buffer1 = write.key;
        scenario.buffer2 = write.value;
        scenario.allowed = Scenario::Parts | Scenario::Torn;
        all.push_back(scenario);
    }
    Scenario shorter = all.back();
    shorter.name = "WriteConfigPrefAsString";
    shorter.situation = "ThatIsShorter";
    shorter.buffer1 = "name";
    shorter.buffer2 = "t";
    all.push_back(shorter);
    Scenario fresh = shorter;
    fresh.situation = "ToAMissingFile";
    fresh.text = Stage::file("new.txt");
    fresh.success = 0.0f;
    fresh.failures = {0.0f};
    fresh.allowed = Scenario::Parts;
    all.push_back(fresh);
    return all;
}

std::vector<Scenario> ofPlacement() {
    Scenario move = withText("SetItemPos", "Bridge:Item", 0.0f, -1.0f);
    move.buffer1 = "Menu:B";
    move.takesHostData = true;
    move.before = moveAndTakeBack;
    return {move};
}

}  // namespace

void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.name << scenario.situation;
}

const std::vector<Scenario>& scenarios() {
    static const std::vector<Scenario> all = [] {
        std::vector<Scenario> collected;
        for (const auto& family : {ofSetup, ofObjects, ofExchange, ofApplications, ofControl,
                                   ofPreferences, ofPlacement}) {
            for (const Scenario& scenario : family()) collected.push_back(scenario);
        }
        return collected;
    }();
    return all;
}
