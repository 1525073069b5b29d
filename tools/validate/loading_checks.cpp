#include <stdlib.h>

#include <initializer_list>
#include <vector>

#include "tools/validate/folder_watch.h"
#include "tools/validate/process_state.h"
#include "tools/validate/session.h"

namespace {

using TakeStates = std::initializer_list<ProcessState (*)()>;

std::vector<ProcessState> take(TakeStates states) {
    std::vector<ProcessState> taken;
    for (const auto state : states) taken.push_back(state());
    return taken;
}

// Loads and unloads, and holds what is there then against what was there before.
void expectTheSameHere(const Settings& settings, Report& report, TakeStates states) {
    const std::vector<ProcessState> before = take(states);
    const auto compare = [&](const char* when) {
        const std::vector<ProcessState> after = take(states);
        for (std::size_t i = 0; i < before.size(); ++i) {
            for (const std::string& difference : differences(before[i], after[i])) {
                report.finds("after " + std::string(when) + " " + difference);
            }
        }
    };
    {
        const Library library(settings.library, report);
        compare("loading");
    }
    compare("unloading");
}

// What sets something to what it is already shows in a host where it is something else.
void expectTheSame(const Settings& settings, Report& report, TakeStates states) {
    expectTheSameHere(settings, report, states);
    becomeParticularHost();
    expectTheSameHere(settings, report, states);
}

// The two data symbols; one that is missing is said by the check of the symbols.
bool areDataZero(const Library& library) {
    const auto* const start = static_cast<const timeval*>(library.symbol("s_startTimeVal"));
    const auto* const table = static_cast<void* const*>(library.symbol("s_table2"));
    return (!start || (start->tv_sec == 0 && start->tv_usec == 0)) && (!table || !*table);
}

}  // namespace

void checkLoadFiles(const Settings& settings, Report& report) {
    tree::make();
    const auto before = tree::snapshot(tree::kRoot);
    const auto beforeHere = tree::snapshot(workingFolder(settings));
    FolderWatch watch({tree::kRoot, tree::hub(""), tree::app("Alpha", ""), tree::project(""), ".",
                       getenv("HOME"), getenv("TMPDIR")});
    expectTheSame(settings, report, {folderState});
    for (const std::string& event : watch.events()) report.finds("loading looks at " + event);
    if (tree::snapshot(tree::kRoot) != before)
        report.finds("after loading the tree is another one");
    if (tree::snapshot(workingFolder(settings)) != beforeHere) {
        report.finds("after loading there are other files in the working folder");
    }
}

void checkLoadLocale(const Settings& settings, Report& report) {
    expectTheSame(settings, report, {localeState});
}

void checkLoadSignals(const Settings& settings, Report& report) {
    expectTheSame(settings, report, {signalState});
}

void checkLoadEnvironment(const Settings& settings, Report& report) {
    expectTheSame(settings, report, {environmentState, numberState, limitState});
}

void checkReload(const Settings& settings, Report& report) {
    tree::make();
    { const Library first(settings.library, report); }
    const ProcessState openFiles = openFileState();
    for (int i = 1; i <= 50; ++i) {
        const std::string which = "load " + std::to_string(i);
        {
            Session session(settings, report);
            HostBlock before = HostBlock::out(), after = HostBlock::out();
            session.call("GetVekObjectPath", "", 0.0, before.data());
            session.expectThat(before.isUntouched(), which + " has the object list of another one");
            session.expectThat(areDataZero(session.library()),
                               which + " does not begin with zero in its data symbols");
            session.expect(2.0f, "ReadVekObjectList");
            session.call("GetVekObjectPath", "", 0.0, after.data());
            session.expectText(after, tree::project("mesh"));
        }
        if (Library::isLoaded(settings.library))
            report.finds(which + " is still there when it was unloaded");
    }
    for (const std::string& difference : differences(openFiles, openFileState())) {
        report.finds("after fifty loads " + difference);
    }
}
