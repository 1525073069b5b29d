#include <stdlib.h>

#include "tools/validate/folder_watch.h"
#include "tools/validate/process_state.h"
#include "tools/validate/session.h"

namespace {

using TakeState = ProcessState();

// Loads and unloads, and holds what is there then against what was there before.
void expectTheSame(const Settings& settings, Report& report, TakeState takeState) {
    const ProcessState before = takeState();
    const auto compare = [&](const char* when) {
        for (const std::string& difference : differences(before, takeState())) {
            report.finds("after " + std::string(when) + " " + difference);
        }
    };
    {
        const Library library(settings.library);
        compare("loading");
    }
    compare("unloading");
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
    // Of this check's own, so that only the library is seen there.
    const std::string home = settings.scratch + "/here/home", temporary = home + "/tmp";
    tree::makeFolder(temporary);
    setenv("HOME", home.c_str(), 1);
    setenv("TMPDIR", temporary.c_str(), 1);
    const auto beforeHere = tree::snapshot(".");
    FolderWatch watch({tree::kRoot, tree::hub(""), tree::app("Alpha", ""), tree::project(""), ".",
                       home, temporary});
    expectTheSame(settings, report, folderState);
    for (const std::string& event : watch.events()) report.finds("loading looks at " + event);
    if (tree::snapshot(tree::kRoot) != before)
        report.finds("after loading the tree is another one");
    if (tree::snapshot(".") != beforeHere) {
        report.finds("after loading there are other files in the working folder");
    }
}

void checkLoadLocale(const Settings& settings, Report& report) {
    expectTheSame(settings, report, localeState);
}

void checkLoadSignals(const Settings& settings, Report& report) {
    expectTheSame(settings, report, signalState);
}

void checkLoadEnvironment(const Settings& settings, Report& report) {
    expectTheSame(settings, report, environmentState);
}

void checkReload(const Settings& settings, Report& report) {
    tree::make();
    { const Library first(settings.library); }
    const int openFiles = openFileCount();
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
    if (openFileCount() != openFiles) {
        report.finds("fifty loads leave " + std::to_string(openFileCount() - openFiles) +
                     " more files open");
    }
}
