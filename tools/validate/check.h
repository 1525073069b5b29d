#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/validate/report.h"

struct Settings {
    std::string library;  // an absolute path
    std::string scratch;  // a folder of the run's own
    std::uint64_t seed = 1;
    bool reproduces = false;     // the sequence of `seed` alone, every call told
    bool json = false;           // the result is printed as JSON, and nothing beside it
    int timeLimit = 60;          // seconds for each check
    bool adoptsOrphans = false;  // whether processes that lose their parent become the validator's
};

// The working folder of a check. The folders that HOME and TMPDIR name are in it, so that only the
// library is seen there.
inline std::string workingFolder(const Settings& settings) {
    return settings.scratch + "/here";
}

// One way in which a library can be wrong. `run` is called in a process of its own, in its working
// folder, in the C locale, with no more rights than an ordinary user has; it says what it
// finds to the report.
struct Check {
    const char* name;
    const char* about;
    void (*run)(const Settings& settings, Report& report);
};

// In the order in which they are made: what the library shows, then loading, then calls.
const std::vector<Check>& allChecks();

using CheckFunction = void(const Settings& settings, Report& report);

CheckFunction checkSymbols, checkNearNames;
CheckFunction checkLoadFiles, checkLoadLocale, checkLoadSignals, checkLoadEnvironment, checkReload;
CheckFunction checkNulls, checkEmpties, checkLongTexts, checkGuardPages, checkUnusedArguments;
CheckFunction checkNumbers, checkCanaries, checkInputs;
CheckFunction checkSetupResults, checkPanelResults, checkObjectResults, checkExchangeResults,
    checkApplicationResults, checkControlResults, checkPreferenceResults, checkPlacementResults;
CheckFunction checkFirstCall, checkTwice, checkOrder, checkSameBytes;
CheckFunction checkMissingTree, checkReadOnlyTree, checkFullTree;
CheckFunction checkCommaLocale, checkSmallStack, checkOpenFiles, checkProcessState, checkProcesses,
    checkSilence;
CheckFunction checkRandom;
