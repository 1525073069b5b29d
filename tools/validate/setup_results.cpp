#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>

#include "tools/validate/results.h"

namespace {

bool hasLine(const std::string& path, const std::string& line) {
    return ("\n" + tree::read(path)).find("\n" + line + "\n") != std::string::npos;
}

void expectRecords(Session& session) {
    const std::string config = tree::hub("Vek_Config.txt");
    tree::write(config, "");
    tree::write(tree::app("Alpha", "Vek_Config.txt"), "");
    session.expect(1.0f, "InitializeVek", "/Applications");
    const std::string host = sizeof(void*) == 8 ? "Dorvia64.app" : "Dorvia.app";
    const std::string path = "PATH = \"/Applications/" + host + "\"";
    session.expectThat(hasLine(config, path), "InitializeVek did not record " + path);
    for (const std::string& file : {config, tree::app("Alpha", "Vek_Config.txt")}) {
        session.expectThat(hasLine(file, "APPS_UNLOCKED = TRUE"),
                           "InitializeVek did not set APPS_UNLOCKED in " + file);
    }
}

void expectCounts(Session& session) {
    // Neither of them is an application.
    tree::makeFolder(tree::app("Bare", ""));
    tree::write(std::string(tree::kRoot) + "/VekApps/file", "");
    session.expect(1.0f, "InitializeVek", "/Applications");
    for (int i = 0; i < 40; ++i) {
        const std::string id = "App" + std::to_string(i);
        tree::addApp(id, "NAME " + id + "\n");
        tree::write(tree::app(id, "Vek_Config.txt"), "APPS_UNLOCKED = TRUE\n");
    }
    session.expect(32.0f, "InitializeVek", "/Applications");
    std::filesystem::remove_all(std::string(tree::kRoot) + "/VekApps");
    session.expect(0.0f, "InitializeVek", "/Applications");
    session.expect(-1.0f, "FindVekApp", "Alpha");
}

}  // namespace

namespace {

// The files that the ordinary call may make, change or delete: their paths, or how these begin.
std::vector<std::string> filesOf(const std::string& name) {
    const std::string list = tree::hub("Vek_ObjectList.txt"), prefs = tree::hub("prefs.txt");
    if (name == "InitializeVek")
        return {tree::hub("Vek_Config.txt"), tree::app("Alpha", "Vek_Config.txt")};
    if (name == "AddVekObject" || name == "AddVekObjectToList" || name == "ClearVekObjectList")
        return {list};
    if (name == "ExtractVekObject") return {list, tree::hub("Vek_ObjectPath.txt")};
    if (name == "VekPostExport" || name == "VekPreImport") return {tree::project("mesh.vek")};
    if (name == "VekClearFile") return {tree::project("plain.txt")};
    if (name == "VekDeleteFile") return {tree::project("doomed.txt")};
    if (name == "VekCleanCaches") return {tree::project("")};
    if (name == "VekAppInstall")
        return {tree::app("Alpha", "Vek_InstallList.txt"),
                tree::app("Alpha", "Vek_InstallLog.txt")};
    if (name == "WriteVekAppPath") return {tree::app("Alpha", "Vek_Config.txt")};
    if (name == "SetVekAppIndex") return {tree::hub("Vek_Application.txt")};
    if (name.compare(0, 15, "WriteConfigPref") == 0) return {prefs};
    return {};
}

using Files = std::map<std::string, std::string>;

// The files that are in one of the two alone, or in both with other bytes.
std::vector<std::string> changedFiles(const Files& before, const Files& after) {
    std::vector<std::pair<std::string, std::string>> changes;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(changes));
    std::vector<std::string> paths;
    for (const auto& change : changes) paths.push_back(change.first);
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    return paths;
}

void expectOwnFilesAlone(Session& session, const std::string& name, const Files& before) {
    const std::vector<std::string> own = filesOf(name);
    for (const std::string& path : changedFiles(before, tree::snapshot(tree::kRoot))) {
        const auto holds = [&](const std::string& begin) {
            return path.compare(0, begin.size(), begin) == 0 && path != begin + "/";
        };
        session.expectThat(std::any_of(own.begin(), own.end(), holds),
                           name + " changed " + path + ", which is none of its files");
    }
}

}  // namespace

void expectOrdinary(const Settings& settings, Report& report, const std::string& group) {
    const auto isOfGroup = [&](const StatedCall& call) { return entryOf(call).group == group; };
    forEachPrepared(settings, report, tree::make, isOfGroup,
                    [](Session& session, const StatedCall& call) {
                        const Files before = tree::snapshot(tree::kRoot);
                        session.expect(call.ordinary, call, Arguments(call), "");
                        expectOwnFilesAlone(session, call.name, before);
                    });
}

void checkSetupResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "setup");
    tree::make();
    Session session(settings, report);
    expectRecords(session);
    expectCounts(session);
}
