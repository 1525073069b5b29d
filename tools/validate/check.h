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

// One way in which a library can be wrong. `run` is called in a process of its own, in the folder
// for scratch, in the C locale, with no more rights than an ordinary user has; it says what it
// finds to the report.
struct Check {
    const char* name;
    const char* about;
    void (*run)(const Settings& settings, Report& report);
};

// In the order in which they are made: what the library shows, then loading, then calls.
const std::vector<Check>& allChecks();

using CheckFunction = void(const Settings& settings, Report& report);

// symbol_checks.cpp
CheckFunction checkSymbols, checkNearNames;
// loading_checks.cpp
CheckFunction checkLoadFiles, checkLoadLocale, checkLoadSignals, checkLoadEnvironment, checkReload;
// pointer_checks.cpp
CheckFunction checkNulls, checkEmpties, checkLongTexts, checkGuardPages, checkUnusedArguments;
// value_checks.cpp
CheckFunction checkNumbers, checkCanaries, checkInputs;
// results_….cpp, one for each group of exports
CheckFunction checkSetupResults, checkPanelResults, checkObjectResults, checkExchangeResults,
    checkApplicationResults, checkControlResults, checkPreferenceResults, checkPlacementResults;
// order_checks.cpp
CheckFunction checkFirstCall, checkTwice, checkOrder, checkSameBytes;
// tree_checks.cpp
CheckFunction checkMissingTree, checkReadOnlyTree, checkFullTree;
// process_checks.cpp
CheckFunction checkCommaLocale, checkSmallStack, checkOpenFiles, checkProcessState, checkSilence;
// child_checks.cpp
CheckFunction checkProcesses;
// random_check.cpp
CheckFunction checkRandom;
