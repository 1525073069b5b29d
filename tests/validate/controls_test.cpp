// Each check finds what it is for, and no other check does: on a library that is wrong in one way
// exactly the check of that name fails. docs/validating-a-library.md lists both.

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/validate/validator.h"

namespace fs = std::filesystem;

namespace {

const std::string kSources = VEK_SOURCE_DIR "/tests/validate/controls";

// What these are for does not show as a check that fails.
const std::set<std::string> kOthers = {"exceptions", "near_names_other", "time_limit"};

std::vector<std::string> controls() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kSources)) {
        const std::string name = entry.path().stem().string();
        if (entry.path().extension() == ".cpp" && !kOthers.count(name)) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A control bears the name of its check; a further control of the same check has a suffix.
std::string checkOf(const std::string& control) {
    std::string name = control;
    for (const std::string& first : controls()) {
        if (control.compare(0, first.size() + 1, first + "_") == 0) name = first;
    }
    std::replace(name.begin(), name.end(), '_', '-');
    return name;
}

#ifdef VEK_HAS_CONTROLS
std::set<std::string> notTried(const nlohmann::json& result) {
    return checksThat("not tried", result);
}
#endif

class Control : public testing::TestWithParam<std::string> {
protected:
    static void SetUpTestSuite() { const CommaLocale made; }
};

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
    const auto all = controls();
    EXPECT_EQ(checks, listedChecks());
    EXPECT_EQ(named, std::set<std::string>(all.begin(), all.end()));
}

#ifdef VEK_HAS_CONTROLS

TEST_P(Control, FailsItsCheckAlone) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/" + GetParam() + ".so", "", status);
    ASSERT_TRUE(result.is_object());
    EXPECT_EQ(status, 1);
    EXPECT_EQ(checksThat("failed", result), std::set<std::string>{checkOf(GetParam())})
        << result.dump(2);
    // Only what is not there cannot be tried.
    const std::size_t others = GetParam() == "symbols_missing" ? notTried(result).size() : 0;
    EXPECT_EQ(checksThat("passed", result).size() + others + 1, listedChecks().size());
    EXPECT_EQ(result["verdict"], "failed");
}

TEST(Controls, LeaveNoCheckPassedThatCallsAMissingExport) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/symbols_missing.so", "", status);
    EXPECT_EQ(status, 1);
    const auto left = notTried(result);
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

INSTANTIATE_TEST_SUITE_P(Validate, Control, testing::ValuesIn(controls()),
                         [](const auto& control) { return control.param; });

TEST(Controls, HaveTheSignalThatEndedTheCheckNamed) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/nulls.so", "--only nulls", status);
    ASSERT_EQ(result["checks"].size(), 1u);
    EXPECT_EQ(result["checks"][0]["signal"], "SIGSEGV");
    const std::string finding = result["checks"][0]["findings"].back();
    EXPECT_NE(finding.find("in FindVekApp null"), std::string::npos) << finding;
}

TEST(Controls, HaveTheCallNamedThatAnExceptionCameOutOf) {
    int status = 0;
    for (const char* check : {"results-setup", "random"}) {
        const auto result =
            validatedAsJson(VEK_CONTROLS "/exceptions.so", std::string("--only ") + check, status);
        EXPECT_EQ(status, 1);
        ASSERT_EQ(result["checks"].size(), 1u);
        ASSERT_FALSE(result["checks"][0]["findings"].empty());
        const std::string finding = result["checks"][0]["findings"][0];
        EXPECT_NE(finding.find("PrintInLog"), std::string::npos) << finding;
        EXPECT_NE(finding.find(" let an exception out: \"x\""), std::string::npos) << finding;
    }
}

// A control that starts a program and waits for it, and leaves the program's id in a file.
class WaitingControl : public testing::Test {
protected:
    WaitingControl() { setenv("VEK_STARTED", m_idFile.c_str(), 1); }
    ~WaitingControl() override { unsetenv("VEK_STARTED"); }

    // Whether the program was started and is gone, at once or soon.
    bool startedProgramIsGone() const {
        const int id = std::stoi("0" + readFile(m_idFile));
        EXPECT_GT(id, 1);
        for (int i = 0; i < 500; ++i) {
            // Once it was ended it may be there until it was waited for.
            const std::string state = readIfThere("/proc/" + std::to_string(id) + "/stat");
            if (state.empty() || state.find(") Z ") != std::string::npos) return true;
            usleep(10000);
        }
        return false;
    }

    const TempFolder m_folder;
    const std::string m_idFile = m_folder / "id";
    const std::string m_library = VEK_CONTROLS "/time_limit.so";

private:
    static std::string readIfThere(const std::string& path) {
        std::ifstream file(path);
        std::string line;
        std::getline(file, line);
        return line;
    }
};

TEST_F(WaitingControl, IsEndedAtTheTimeLimitWithAllThatItStarted) {
    int status = 0;
    const auto result = validatedAsJson(m_library, "--only results-setup --time-limit 3", status);
    EXPECT_EQ(status, 1);
    ASSERT_EQ(result["checks"].size(), 1u);
    const std::string finding = result["checks"][0]["findings"].back();
    EXPECT_EQ(finding, "it was not over after 3 s in VekSetExportScale 2.5");
    EXPECT_TRUE(startedProgramIsGone());
}

TEST_F(WaitingControl, IsEndedWithTheValidator) {
    const pid_t validator = fork();
    ASSERT_GE(validator, 0);
    if (validator == 0) {
        execl(VEK_VALIDATE, VEK_VALIDATE, m_library.c_str(), "--only", "results-setup", nullptr);
        _exit(127);
    }
    for (int i = 0; i < 2000 && (!fileIsThere(m_idFile) || readFile(m_idFile).empty()); ++i) {
        usleep(10000);
    }
    kill(validator, SIGTERM);
    int status = 0;
    waitpid(validator, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 128 + SIGTERM);
    EXPECT_TRUE(startedProgramIsGone());
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

#else
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Control);
#endif
