// What becomes of a check whose library does not let it come to its end, and of the result.

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>

#include "tests/support/temp_folder.h"
#include "tests/validate/validator.h"
#include "tools/validate/signal_names.h"

TEST(SignalNames, NameEachSignal) {
    EXPECT_EQ(signalName(SIGSEGV), "SIGSEGV");
    EXPECT_EQ(signalName(SIGQUIT), "SIGQUIT");
    EXPECT_EQ(signalName(SIGUSR1), "SIGUSR1");
    EXPECT_EQ(signalName(1000), "signal 1000");
    for (int number = 1; number < 32; ++number)
        EXPECT_EQ(signalName(number).substr(0, 3), "SIG") << number;
}

// A result that cannot be written is none.
TEST(Result, IsNoneWhereItCannotBeWritten) {
    if (!fileIsThere("/dev/full")) GTEST_SKIP() << "there is no disk that is always full";
    std::string said;
    const std::string command = VEK_VALIDATE " " VEK_LIBRARY " --only symbols";
    for (const char* words : {" >/dev/full", " --json >/dev/full", " >&-"}) {
        EXPECT_EQ(runProgram("{ " + command + words + "; }", said), 2) << words;
        EXPECT_NE(said.find("could not be written"), std::string::npos) << said;
    }
    EXPECT_EQ(runProgram("{ " VEK_VALIDATE " --list >/dev/full; }", said), 2);
}

#ifdef VEK_CONTROL_NAMES

namespace {

// The only finding of the only check.
std::string findingOn(const std::string& control, const std::string& words) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/" + control + ".so", words, status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(result["checks"].size(), 1u);
    EXPECT_EQ(result["checks"][0]["findings"].size(), 1u) << result.dump(2);
    return result["checks"][0]["findings"][0];
}

}  // namespace

TEST(Check, OfALibraryThatLeavesItsGroupIsEndedAllTheSame) {
    EXPECT_EQ(findingOn("leaves_group", "--only nulls --time-limit 2"),
              "it was not over after 2 s in PrintInLog");
}

TEST(Check, ThatWasEndedIsNotWaitedForBecauseOfWhatItStarted) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(findingOn("crash_with_child", "--only nulls --time-limit 60"),
              "it was ended by SIGQUIT in PrintInLog");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST(Check, NamesWhatIsThrownWhileTheLibraryIsLoaded) {
    const std::string finding = findingOn("exceptions_load", "--only load-locale");
    EXPECT_NE(finding.find("loading"), std::string::npos) << finding;
    EXPECT_NE(finding.find("y"), std::string::npos) << finding;
}

TEST(Check, HasTheSignalNamedThatEndedIt) {
    int status = 0;
    const auto result = validatedAsJson(VEK_CONTROLS "/nulls.so", "--only nulls", status);
    ASSERT_EQ(result["checks"].size(), 1u);
    EXPECT_EQ(result["checks"][0]["signal"], "SIGSEGV");
    const std::string finding = result["checks"][0]["findings"].back();
    EXPECT_NE(finding.find("in VekAppInstall null"), std::string::npos) << finding;
}

TEST(Check, NamesTheCallThatAnExceptionCameOutOf) {
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
class WaitingControl : public testing::TestWithParam<std::string> {
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
    const std::string m_library = VEK_CONTROLS "/" + GetParam() + ".so";

private:
    static std::string readIfThere(const std::string& path) {
        std::ifstream file(path);
        std::string line;
        std::getline(file, line);
        return line;
    }
};

TEST_P(WaitingControl, IsEndedAtTheTimeLimitWithAllThatItStarted) {
    int status = 0;
    const auto result = validatedAsJson(m_library, "--only results-setup --time-limit 3", status);
    EXPECT_EQ(status, 1);
    ASSERT_EQ(result["checks"].size(), 1u);
    const std::string finding = result["checks"][0]["findings"].back();
    EXPECT_EQ(finding, "it was not over after 3 s in VekSetExportScale 2.5");
    EXPECT_TRUE(startedProgramIsGone());
}

TEST_P(WaitingControl, IsEndedWithTheValidator) {
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

// What is in a session of its own is no more in the group that is ended.
INSTANTIATE_TEST_SUITE_P(Validate, WaitingControl,
                         testing::Values("time_limit", "time_limit_session"),
                         [](const auto& control) { return control.param; });

#endif
