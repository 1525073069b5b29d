#include <filesystem>

#include "tools/validate/results.h"
#include "tools/validate/turning.h"

namespace fs = std::filesystem;

namespace {

const std::string kMesh = tree::project("mesh.vek");

void expectRefusing(Session& session, const std::string& name, const std::string& bytes) {
    const std::string path = tree::project(name);
    tree::write(path, bytes);
    session.expect(-1.0f, "VekPostExport", path);
    session.expectFile(path, bytes);
    session.expect(-1.0f, "VekPreImport", path);
    session.expectFile(path, bytes);
}

// For no application: nothing mirrors.
void expectScenes(Session& session) {
    session.call("GetVekAppIOPrefs", "", -1.0);
    const std::string scene = tree::project("scene.ma");
    session.expect(0.0f, "VekPostExport", scene);
    session.expectFile(scene, tree::mergedScene());
    session.expect(0.0f, "VekPreImport", scene);
    session.expectThat(
        tree::read(scene).find("setAttr -s 6 \".uvst[0].uvsp\"") != std::string::npos,
        "VekPreImport did not give each face corner a UV of its own");
    session.expect(0.0f, "VekPostExport", scene);
    session.expectFile(scene, tree::mergedScene());
    std::string unfinished = tree::scene();
    unfinished.erase(unfinished.rfind("4 5;") + 3, 1);
    expectRefusing(session, "scene.ma", unfinished);
}

void expectFiles(Session& session) {
    const std::string created = tree::project("created.txt");
    session.expect(1.0f, "VekClearFile", created);
    session.expectFile(created, "");
    session.expect(0.0f, "IsVekFilePathValid", created);
    session.expect(1.0f, "VekClearFile", tree::project("plain.txt"));
    session.expectFile(tree::project("plain.txt"), "");
    session.expect(0.0f, "VekClearFile", tree::project("nowhere/file"));
    session.expect(0.0f, "VekClearFile", tree::project(""));
    session.expect(0.0f, "IsVekFilePathValid", tree::project("nowhere"));
    session.expect(1.0f, "VekDeleteFile", created);
    session.expectNoFile(created);
    session.expect(0.0f, "VekDeleteFile", tree::project("nowhere"));
    tree::makeFolder(tree::project("folder"));
    session.expect(1.0f, "VekDeleteFile", tree::project("folder"));
    session.expectNoFile(tree::project("folder"));
}

void expectMap(Session& session, double kind, const std::string& name, const std::string& number) {
    HostBlock path = HostBlock::out(), param = HostBlock::out();
    session.expect(0.0f, "GetFirstObjectTextureFileName", "", kind, path.data(), param.data());
    session.expectText(path, name);
    if (number.empty()) {
        session.expectUntouched(param);
    } else {
        session.expectText(param, number);
    }
}

void expectNoMap(Session& session, double kind) {
    HostBlock path = HostBlock::out(), param = HostBlock::out();
    session.expect(-1.0f, "GetFirstObjectTextureFileName", "", kind, path.data(), param.data());
    session.expectUntouched(path);
}

void expectMaps(Session& session) {
    tree::write(kMesh, tree::exchangeFile());
    expectMap(session, 0.0, "C:/maps/zero.png", "");
    expectMap(session, 1.0, "maps/one.png", "");
    expectMap(session, 2.0, "maps/two.png", "0.500000");
    expectNoMap(session, 3.0);
    expectNoMap(session, 0.5);
    tree::write(tree::hub("Vek_ObjectList.txt"), tree::project("second"));
    expectNoMap(session, 0.0);
    tree::write(tree::hub("Vek_ObjectList.txt"), "");
    expectNoMap(session, 0.0);
}

void expectProject(Session& session, const std::string& bytes, const std::string& path) {
    tree::write(tree::hub("Vek_ProjectPath.txt"), bytes);
    HostBlock block = HostBlock::out();
    session.expect(0.0f, "ReadVekProjectPath", "", 0.0, block.data());
    if (path.empty()) {
        session.expectUntouched(block);
    } else {
        session.expectText(block, path);
    }
}

void expectCleaning(Session& session) {
    tree::makeFolder(tree::project("folder/inner"));
    tree::write(tree::project("folder/inner/file"), "");
    fs::create_directory_symlink(tree::app("Alpha", ""), tree::project("folder/link"));
    fs::create_directory_symlink(tree::app("Alpha", ""), tree::project("link"));
    fs::create_symlink(tree::hub("prefs.txt"), tree::project("file-link"));
    const tree::Files apps = tree::snapshot(tree::app("Alpha", "")),
                      hub = tree::snapshot(tree::hub(""));
    session.expect(0.0f, "VekCleanCaches");
    session.expectThat(tree::isThere(tree::project("")),
                       "VekCleanCaches removed the project folder");
    session.expectThat(tree::snapshot(tree::project("")).empty(),
                       "VekCleanCaches left something in the project folder");
    session.expectThat(
        tree::snapshot(tree::app("Alpha", "")) == apps && tree::snapshot(tree::hub("")) == hub,
        "VekCleanCaches followed a link");
}

}  // namespace

void checkExchangeResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "exchange");
    tree::make();
    Session session(settings, report);
    session.prepare();
    expectTurning(session);
    expectRefusing(session, "mesh.obj", "v 1 2 3\n");
    expectRefusing(session, "empty.vek", "");
    expectRefusing(session, "other.vek", "Bekv" + tree::exchangeFile().substr(4));
    session.expect(-1.0f, "VekPostExport", tree::project("nowhere.vek"));
    session.expect(-1.0f, "VekPreImport", tree::project("nowhere.ma"));
    expectScenes(session);
    expectFiles(session);
    expectMaps(session);
    expectProject(session, "/p/one\n/p/two", "/p/one");
    expectProject(session, "", "");
    expectProject(session, std::string(4097, 'p'), "");
    expectCleaning(session);
}
