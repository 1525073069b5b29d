#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "bridge/bx_vek.h"
#include "tools/vek/commands.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/shipped_apps.h"
#include "tools/vek/tree_init.h"

namespace {

using Outcome = TreeStep::Outcome;

const char* wordFor(Outcome outcome) {
    if (outcome == Outcome::Made) return "made";
    return outcome == Outcome::Kept ? "kept" : "FAILED";
}

void print(const TreeReport& report) {
    fmt::print("The shared tree is {}.\n", BXVek::s_publicFolder.c_str());
    bool differs = false;
    for (const TreeStep& step : report.steps) {
        const std::string note = step.note.empty() ? "" : ": " + step.note;
        const std::string advice = step.advice.empty() ? "" : " " + step.advice;
        fmt::print("{:<6} {}\n", wordFor(step.outcome), printable(step.path + note + advice));
        differs |= !step.note.empty() && step.outcome == Outcome::Kept;
    }
    fmt::print("{} made, {} kept, {} failed.\n", report.count(Outcome::Made),
               report.count(Outcome::Kept), report.count(Outcome::Failed));
    if (differs) {
        fmt::print(
            "What was kept stays as it is. To have a shipped file again, rename yours and run vek "
            "init again; vek check says what stands in the way of the bridge.\n");
    }
}

void printJson(const TreeReport& report, const std::string& apps) {
    nlohmann::json json = {{"tree", BXVek::s_publicFolder.c_str()}, {"apps", apps}};
    for (const char* list : {"made", "kept", "failed"}) json[list] = nlohmann::json::array();
    for (const TreeStep& step : report.steps) {
        if (step.outcome == Outcome::Made) {
            json["made"].push_back(step.path);
        } else if (step.outcome == Outcome::Kept) {
            json["kept"].push_back({{"path", step.path}, {"note", step.note}});
        } else {
            json["failed"].push_back(
                {{"path", step.path}, {"what", step.note}, {"do", step.advice}});
        }
    }
    fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

int initTree(const std::string& apps, bool json) {
    std::error_code error;
    const bool hasApps = !shippedApps(apps, error).empty();
    if (!hasApps && error == std::errc::permission_denied) {
        fmt::print(
            stderr,
            "vek: The folder of target applications cannot be read: {}. Open it (chmod a+rx), "
            "or name another one with --apps.\n",
            printable(apps));
        return 2;
    }
    if (!hasApps) {
        fmt::print(stderr,
                   "vek: There is no target application in {}. Name the folder that holds them "
                   "with --apps.\n",
                   printable(apps));
        return 2;
    }
    const TreeReport report = makeTree(BXVek::s_publicFolder.c_str(), apps);
    if (json) {
        printJson(report, apps);
    } else {
        print(report);
    }
    if (report.hasNoTree) return 2;
    return report.count(Outcome::Failed) == 0 ? 0 : 1;
}
