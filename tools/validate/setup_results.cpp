#include <filesystem>

#include "tools/validate/results.h"
#include "tools/validate/stand_ins.h"

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

// The bundles of the hub and of an application are freed from what keeps a downloaded one from
// being started.
void expectUnlocking(Session& session, const std::string& scratch) {
    const std::string bundles[] = {tree::hub("VekLocateApp.app"), tree::app("Alpha", "Helper.app")};
    for (const std::string& bundle : bundles) {
        tree::makeFolder(bundle);
        tree::write(tree::hub("Vek_Config.txt"), "");
        tree::write(tree::app("Alpha", "Vek_Config.txt"), "");
        takeAsked(scratch);
        session.expect(1.0f, "InitializeVek", "/Applications");
        session.expectThat(
            takeAsked(scratch) == "xattr\n-d\ncom.apple.quarantine\n" + bundle + "\n",
            "InitializeVek did not take the quarantine off " + bundle);
        std::filesystem::remove(bundle);
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

void checkSetupResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "setup");
    tree::make();
    Session session(settings, report);
    expectRecords(session);
    expectUnlocking(session, settings.scratch);
    expectCounts(session);
}
