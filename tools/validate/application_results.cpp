#include "tools/validate/results.h"

namespace {

// Puts another application beside Alpha and reads both anew; the index of the one with this id.
double indexOf(Session& session, const char* id) {
    return session.call("FindVekApp", id);
}

void expectGetter(Session& session, const char* name, double index, const char* text) {
    HostBlock block = HostBlock::out();
    session.expect(0.0f, name, "", index, block.data());
    if (text) {
        session.expectText(block, text);
    } else {
        session.expectUntouched(block);
    }
}

void expectGetters(Session& session, double alpha, double beta) {
    expectGetter(session, "GetVekAppId", alpha, "Alpha");
    expectGetter(session, "GetVekAppName", alpha, "Alpha One");
    expectGetter(session, "GetVekAppExt", alpha, ".vek");
    expectGetter(session, "GetVekAppTamplate", alpha, "alpha.txt");
    expectGetter(session, "GetVekAppTamplate", alpha + 0.9, "alpha.txt");
    for (const char* name : {"GetVekAppName", "GetVekAppTamplate"}) {
        expectGetter(session, name, beta, "");
    }
    for (const char* name : {"GetVekAppId", "GetVekAppName", "GetVekAppExt", "GetVekAppTamplate"}) {
        expectGetter(session, name, 7.0, nullptr);
        expectGetter(session, name, -1.0, nullptr);
    }
}

void expectSwitches(Session& session, double index, std::int32_t low, std::int32_t high) {
    HostBlock block = HostBlock::out();
    session.expect(0.0f, "GetVekAppIOPrefs", "", index, block.data());
    session.expectThat(
        block.number<std::int32_t>(0) == low && block.number<std::int32_t>(8) == high,
        "GetVekAppIOPrefs gave " + std::to_string(block.number<std::int32_t>(0)) + " and " +
            std::to_string(block.number<std::int32_t>(8)) + "; stated are " + std::to_string(low) +
            " and " + std::to_string(high));
}

void expectFinding(Session& session, double alpha) {
    session.expect(static_cast<float>(alpha), "FindVekApp", "aLPHA");
    session.expect(-1.0f, "FindVekApp", "Gamma");
    session.expect(-1.0f, "FindVekApp", "Alph");
}

void expectSelecting(Session& session, double alpha, double beta) {
    const std::string file = tree::hub("Vek_Application.txt");
    session.expect(0.0f, "SetVekAppIndex", "", beta);
    session.expectFile(file, "Beta");
    session.expect(static_cast<float>(beta), "GetVekAppIndex");
    session.expect(0.0f, "SetVekAppIndex", "", -1.0);
    session.expectFile(file, "");
    session.expect(-1.0f, "GetVekAppIndex");
    tree::write(file, "Gamma");
    session.expect(-1.0f, "GetVekAppIndex");
    tree::write(file, "ALPHA\n");
    session.expect(static_cast<float>(alpha), "GetVekAppIndex");
    remove(file.c_str());
    session.expect(-1.0f, "GetVekAppIndex");
}

void expectNoAppPath(Session& session, double index) {
    HostBlock block = HostBlock::out();
    session.expect(0.0f, "ReadVekAppPath", "", index, block.data());
    session.expectUntouched(block);
}

void expectAppPath(Session& session, double index, const char* path) {
    HostBlock block = HostBlock::out();
    session.expect(1.0f, "ReadVekAppPath", "", index, block.data());
    session.expectText(block, path);
}

void expectAppPaths(Session& session, double alpha, double beta) {
    expectAppPath(session, alpha, "/Applications/Alpha.app");
    expectNoAppPath(session, beta);
    expectNoAppPath(session, 7.0);
    session.expect(0.0f, "WriteVekAppPath", "/A/B.app", beta);
    expectAppPath(session, beta, "/A/B.app");
    session.expect(0.0f, "WriteVekAppPath", "/A/B.app", 7.0);
}

void expectPlaces(Session& session) {
    tree::makeFolder(tree::project("Bundle.APP"));
    session.expect(1.0f, "IsAppPathValid", tree::project("Bundle.APP"));
    session.expect(0.0f, "IsAppPathValid", tree::project("Missing.app"));
    session.expect(0.0f, "IsAppPathValid", tree::project(""));
    session.expect(0.0f, "IsAppPathValid", tree::project("nowhere"));
}

void expectInstalled(Session& session, double alpha, double beta) {
    session.expect(1.0f, "VekAppIsInstalled", "/applications/ALPHA/bin", alpha);
    session.expect(0.0f, "VekAppIsInstalled", "/Applications", alpha);
    session.expect(0.0f, "VekAppIsInstalled", "/Applications/Alpha", beta);
    session.expect(0.0f, "VekAppIsInstalled", "/Applications/Alpha", 7.0);
    tree::write(tree::app("Alpha", "Vek_InstallList.txt"), "");
    session.expect(0.0f, "VekAppIsInstalled", "/Applications/Alpha", alpha);
}

}  // namespace

void checkApplicationResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "applications");
    tree::make();
    tree::addApp("Beta",
                 "EXTENSION .obj\nIMPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\nEXPORT_SWITCH_YZ 1\n"
                 "NORMAL_MAP_FLIP_VERT 1\n");
    Session session(settings, report);
    session.expect(2.0f, "InitializeVek", "/Applications");
    const double alpha = indexOf(session, "Alpha"), beta = indexOf(session, "Beta");
    expectGetters(session, alpha, beta);
    // Of Alpha's switches the two that mirror are not given: the library sees to them.
    expectSwitches(session, alpha, 0x200, 0);
    expectSwitches(session, beta, 0xA1, 2);
    expectSwitches(session, 7.0, 0, 0);
    expectFinding(session, alpha);
    expectSelecting(session, alpha, beta);
    expectAppPaths(session, alpha, beta);
    expectPlaces(session);
    expectInstalled(session, alpha, beta);
}
