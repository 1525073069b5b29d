// Each check finds what it is for, and no other check does: on a library that is wrong in one way
// exactly the check of that name fails. docs/validating-a-library.md lists both.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <future>
#include <map>
#include <regex>
#include <sstream>

#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/validate/validator.h"

namespace fs = std::filesystem;

namespace {

const std::string kSources = VEK_SOURCE_DIR "/tests/validate/controls";

// What these are for does not show as one check that fails.
const std::set<std::string> kOthers = {"crash_with_child",  "exceptions",       "exceptions_load",
                                       "leaves_group",      "near_names_other", "time_limit",
                                       "time_limit_session"};

std::set<std::string> controls() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(kSources)) {
        const std::string name = entry.path().stem().string();
        if (entry.path().extension() == ".cpp" && !kOthers.count(name)) names.insert(name);
    }
    return names;
}

// A control bears the name of its check; a further control of the same check has a suffix.
std::string checkOf(const std::string& control) {
    std::string name = control;
    for (const std::string& first : controls()) {
        if (control.compare(0, first.size() + 1, first + "_") == 0) {
            name = first;
            break;
        }
    }
    std::replace(name.begin(), name.end(), '_', '-');
    return name;
}

}  // namespace

TEST(Controls, ThereIsOneForEachCheck) {
    std::set<std::string> checked;
    for (const std::string& control : controls()) checked.insert(checkOf(control));
    EXPECT_EQ(checked, listedChecks());
}

TEST(Controls, StandWithTheirChecksInTheDocument) {
    const std::string text = readFile(VEK_SOURCE_DIR "/docs/validating-a-library.md");
    const std::regex row("\\| `([a-z-]+)` \\| [^|]+ \\| `([a-z_]+)`: [^|]+ \\|");
    std::set<std::string> checks, named;
    for (std::sregex_iterator it(text.begin(), text.end(), row), end; it != end; ++it) {
        checks.insert((*it)[1]);
        EXPECT_TRUE(named.insert((*it)[2]).second) << (*it)[2] << " stands twice";
        EXPECT_EQ(checkOf((*it)[2]), (*it)[1]);
    }
    EXPECT_EQ(checks, listedChecks());
    EXPECT_EQ(named, controls());
}

#ifdef VEK_CONTROL_NAMES

namespace {

// The controls that were built, by the names of their checks.
std::map<std::string, std::vector<std::string>> builtControls() {
    std::map<std::string, std::vector<std::string>> built;
    std::istringstream names(VEK_CONTROL_NAMES);
    for (std::string name; names >> name;) {
        if (!kOthers.count(name)) built[checkOf(name)].push_back(name);
    }
    return built;
}

std::vector<std::string> builtChecks() {
    std::vector<std::string> names;
    for (const auto& [check, built] : builtControls()) names.push_back(check);
    return names;
}

// The further controls of a check go without the other checks that take long, unless all are asked
// for.
std::string wordsFor(const std::string& control, const std::string& check) {
    std::string words = "--except";
    for (const char* slow : {"numbers", "empties", "nulls", "inputs", "guard-pages", "comma-locale",
                             "full-tree", "process-state", "same-bytes", "unused-arguments"}) {
        if (slow != check) words += std::string(" ") + slow;
    }
    std::string first = check;
    std::replace(first.begin(), first.end(), '-', '_');
    return control == first || getenv("VEK_ALL_CHECKS") ? "" : words;
}

class Control : public testing::TestWithParam<std::string> {
protected:
    static void SetUpTestSuite() { const CommaLocale made; }
};

}  // namespace

TEST_P(Control, FailsThisCheckAlone) {
    struct Run {
        int status = 0;
        nlohmann::json result;
    };
    const auto runOn = [](const std::string& control) {
        Run run;
        run.result = validatedAsJson(VEK_CONTROLS "/" + control + ".so",
                                     wordsFor(control, GetParam()), run.status);
        return run;
    };
    const auto names = builtControls()[GetParam()];
    // Two at a time.
    for (std::size_t i = 0; i < names.size(); i += 2) {
        std::map<std::string, std::future<Run>> runs;
        for (std::size_t j = i; j < std::min(i + 2, names.size()); ++j)
            runs[names[j]] = std::async(std::launch::async, runOn, names[j]);
        for (auto& [name, future] : runs) {
            const Run run = future.get();
            ASSERT_TRUE(run.result.is_object()) << name;
            EXPECT_EQ(run.status, 1) << name;
            EXPECT_EQ(run.result["verdict"], "failed") << name;
            EXPECT_EQ(checksThat("failed", run.result), std::set<std::string>{GetParam()})
                << name << run.result.dump(2);
            // Only what is not there cannot be tried.
            EXPECT_EQ(checksThat("not tried", run.result).empty(), name != "symbols_missing");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Validate, Control, testing::ValuesIn(builtChecks()),
                         [](const auto& check) {
                             std::string name = check.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(Controls, LeaveNoCheckPassedThatCallsAMissingExport) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/symbols_missing.so", "", status);
    EXPECT_EQ(status, 1);
    const auto left = checksThat("not tried", result);
    for (const char* name : {"nulls", "results-setup", "first-call", "twice", "order", "same-bytes",
                             "missing-tree", "silence", "random"}) {
        EXPECT_TRUE(left.count(name)) << name;
    }
    for (const auto& check : result["checks"]) {
        if (!left.count(check["name"])) continue;
        EXPECT_EQ(check["findings"], nlohmann::json{"DeclareMacroActivated is not there"});
    }
    validated(VEK_CONTROLS "/symbols_missing.so", "--only random", status);
    EXPECT_EQ(status, 2);
}

TEST(Controls, PassNoCheckThatCallsWhereNoExportIsThere) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/near_names_other.so", "", status);
    EXPECT_EQ(status, 1);
    const std::set<std::string> withoutCalls = {"load-files", "load-locale", "load-signals",
                                                "load-environment"};
    EXPECT_EQ(checksThat("passed", result), withoutCalls);
}

TEST(Controls, CanBeSeenFailingAgainByTheSeed) {
    int status = 0;
    const auto result =
        validatedAsJson(VEK_CONTROLS "/random.so", "--only random --seed 100", status);
    ASSERT_EQ(result["checks"].size(), 1u);
    const std::string finding = result["checks"][0]["findings"].back();
    std::smatch seed;
    ASSERT_TRUE(std::regex_search(finding, seed, std::regex("in the sequence ([0-9]+)")))
        << finding;
    const std::string again =
        validated(VEK_CONTROLS "/random.so", "--reproduce " + seed[1].str(), status);
    EXPECT_EQ(status, 1);
    EXPECT_NE(again.find("ended by SIGABRT in call "), std::string::npos) << again;
    // The last call that is told is the one that it was.
    std::smatch call;
    ASSERT_TRUE(std::regex_search(finding, call, std::regex("in call (.*) in the sequence")));
    EXPECT_NE(again.find("\n" + call[1].str() + "\nfailed "), std::string::npos) << again;
}

#endif
