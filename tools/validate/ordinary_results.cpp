#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "tools/validate/results.h"
#include "tools/validate/trace.h"

namespace fs = std::filesystem;

namespace {

// Deleted before the command that makes it anew.
const std::string kLog = tree::app("Alpha", "Vek_InstallLog.txt");

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
    if (name == "VekAppInstall") return {tree::app("Alpha", "Vek_InstallList.txt"), kLog};
    if (name == "WriteVekAppPath") return {tree::app("Alpha", "Vek_Config.txt")};
    if (name == "SetVekAppIndex") return {tree::hub("Vek_Application.txt")};
    if (name.compare(0, 15, "WriteConfigPref") == 0) return {prefs};
    return {};
}

// Files of a tree that is shared are others' too. The mode is none that a new file has.
void makeShared() {
    tree::make();
    for (const auto& entry : fs::recursive_directory_iterator(tree::kRoot)) {
        if (entry.is_regular_file()) chmod(entry.path().c_str(), 0664);
    }
}

void expectOwnFilesAlone(Session& session, const std::string& name, const tree::Files& before) {
    const std::vector<std::string> own = filesOf(name);
    const tree::Files after = tree::snapshot(tree::kRoot);
    for (const std::string& path : tree::changedFiles(before, after)) {
        const auto holds = [&](const std::string& begin) {
            return path.compare(0, begin.size(), begin) == 0 && path != begin + "/";
        };
        session.expectThat(std::any_of(own.begin(), own.end(), holds),
                           name + " changed " + path + ", which is none of its files");
        const auto was = before.find(path), is = after.find(path);
        if (was == before.end() || is == after.end() || path == kLog) continue;
        const std::string kind = tree::kindOf(is->second);
        session.expectThat(
            kind == tree::kindOf(was->second),
            name + " made of " + path + " a " + kind + "; it was a " + tree::kindOf(was->second));
    }
}

void expectCall(Session& session, const StatedCall& call, const std::string& folder) {
    const tree::Files before = tree::snapshot(tree::kRoot), beforeHere = tree::snapshot(folder);
    session.expect(call.ordinary, call, Arguments(call), "");
    expectOwnFilesAlone(session, call.name, before);
    for (const std::string& path : tree::changedFiles(beforeHere, tree::snapshot(folder)))
        session.report().finds(std::string(call.name) + " left " + path);
}

// What is recorded or looked up as a text is no path.
bool opensPath(const StatedCall& call) {
    const std::string& use = entryOf(call).text;
    const bool isPath = use.find("path") != use.npos || use.find("folder") != use.npos;
    return isPath && call.text && *call.text == '/' && std::string("WriteVekAppPath") != call.name;
}

// What stands in front of a path's first '/' is passed over.
void expectVolume(const Settings& settings, Report& report, const StatedCall& call) {
    const Trace plain = traceOf(settings, report, call, [](Arguments&) {});
    for (const char* prefix : {"Disk:", "Disk:rel", "rel"}) {
        const std::string path = std::string(prefix) + call.text;
        const Trace other =
            traceOf(settings, report, call, [&](Arguments& arguments) { arguments.setText(path); });
        for (const std::string& difference : differences(plain, other))
            report.finds(std::string(call.name) + " " + quoted(path) + " " + difference);
    }
}

}  // namespace

void expectOrdinary(const Settings& settings, Report& report, const std::string& group) {
    const auto isOfGroup = [&](const StatedCall& call) { return entryOf(call).group == group; };
    forEachPrepared(settings, report, makeShared, isOfGroup,
                    [&](Session& session, const StatedCall& call) {
                        expectCall(session, call, workingFolder(settings));
                    });
    forEachExport([&](const StatedCall& call) {
        if (isOfGroup(call) && opensPath(call)) expectVolume(settings, report, call);
    });
}
