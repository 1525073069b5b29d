#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "bridge/bx_vek.h"
#include "tools/vek/commands.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_check.h"

namespace {

std::string countOf(std::size_t count, const std::string& word) {
    return fmt::format("{} {}{}", count, word, count == 1 ? "" : "s");
}

void print(const TreeState& state) {
    for (const Finding& finding : state.findings.all()) {
        const std::string place =
            finding.line ? fmt::format("{}:{}", finding.path, finding.line) : finding.path;
        fmt::print("{}: {}: {} [{}]\n    {}\n", printable(place),
                   severityWord(finding.kind->severity), printable(finding.what),
                   finding.kind->code, printable(finding.advice));
    }
    if (!state.findings.all().empty()) {
        fmt::print("{}, {}.\n", countOf(state.findings.count(Severity::Error), "error"),
                   countOf(state.findings.count(Severity::Warning), "warning"));
        return;
    }
    fmt::print(
        "All is well in {}: {}, {}, {}.\n", BXVek::s_publicFolder.c_str(),
        countOf(state.apps.size(), "target application"),
        state.selected.empty() ? "none selected" : printable(state.selected) + " is selected",
        countOf(state.objects, "object") + " listed");
}

void printJson(const TreeState& state) {
    nlohmann::json json = {{"tree", BXVek::s_publicFolder.c_str()},
                           {"well", state.findings.all().empty()},
                           {"applications", state.apps},
                           {"selected", state.selected},
                           {"objects", state.objects},
                           {"errors", state.findings.count(Severity::Error)},
                           {"warnings", state.findings.count(Severity::Warning)}};
    json["findings"] = nlohmann::json::array();
    for (const Finding& finding : state.findings.all()) {
        nlohmann::json one = {{"code", finding.kind->code},
                              {"severity", severityWord(finding.kind->severity)},
                              {"path", finding.path},
                              {"what", finding.what},
                              {"do", finding.advice}};
        if (finding.line) one["line"] = finding.line;
        json["findings"].push_back(one);
    }
    fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

int checkSharedTree(bool json) {
    TreeState state;
    try {
        state = checkTree();
    } catch (const std::runtime_error& error) {
        if (!json) throw;
        const nlohmann::json said = {{"tree", BXVek::s_publicFolder.c_str()},
                                     {"error", error.what()}};
        fmt::print("{}\n", said.dump(2));
        return 2;
    }
    if (json) {
        printJson(state);
    } else {
        print(state);
    }
    return state.findings.all().empty() ? 0 : 1;
}
