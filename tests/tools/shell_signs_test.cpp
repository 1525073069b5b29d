// Holds what is said of signs in paths against what the bridge's own way of starting a file does.

#include "tools/vek/shell_signs.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cctype>
#include <filesystem>

#include "os/bx_disk_server.h"
#include "tests/support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

class ShellSigns : public testing::Test {
protected:
    // What a shell takes for a redirection lands in the folder.
    ShellSigns() : m_before(fs::current_path()) { fs::current_path(m_folder.path()); }
    ~ShellSigns() override { fs::current_path(m_before); }

    std::string program(const std::string& name) const {
        const std::string path = m_folder / name;
        writeFile(path, "#!/bin/sh\n: >'" + m_marks.path() + "/'\"${0##*/}\"\n");
        EXPECT_EQ(chmod(path.c_str(), 0755), 0);
        return path;
    }
    bool runs(const std::string& name) const { return runsWith(name, ""); }
    bool runsWith(const std::string& name, const std::string& argument) const {
        testing::internal::CaptureStderr();
        BXDiskServer::launchApplication((m_folder / name).c_str(), argument.c_str());
        testing::internal::GetCapturedStderr();
        return fs::remove(m_marks / name);
    }

    TempFolder m_folder;
    TempFolder m_marks;
    const fs::path m_before;
};

}  // namespace

TEST_F(ShellSigns, AreThoseWithWhichNothingIsStarted) {
    int broken = 0;
    for (char sign = ' '; sign <= '~'; ++sign) {
        if (sign == '/') continue;
        for (const std::string& stem :
             {std::string("x") + sign + "y", std::string("x") + sign, std::string(1, sign) + "x",
              std::string("x") + sign + sign + "y", std::string("x") + sign + "$"}) {
            for (const char* end : {"", ".sh"}) {
                const std::string path = program(stem + end);
                const std::string signs =
                    signsThatBreak(path, *end ? ShellForm::Quoted : ShellForm::Bare);
                EXPECT_EQ(runs(stem + end), signs.empty()) << stem << end << ": " << signs;
                if (!signs.empty()) ++broken;
                fs::remove(path);
            }
        }
    }
    EXPECT_GT(broken, 50);
}

TEST_F(ShellSigns, ArePatternsWhereTheyFitAnotherFile) {
    const std::string set = program("x[ab]");
    EXPECT_EQ(signsThatBreak(set, ShellForm::Bare), "");
    EXPECT_TRUE(runs("x[ab]"));
    program("xa");
    EXPECT_EQ(signsThatBreak(set, ShellForm::Bare), "[");
    EXPECT_FALSE(runs("x[ab]"));
    EXPECT_EQ(signsThatBreak(set, ShellForm::Quoted), "");
}

TEST(ShellSignsOfLists, AreTheBracesThatSomeShellsTakeApart) {
    EXPECT_EQ(signsThatBreak("/x/{a,b}", ShellForm::Bare), "{}");
    EXPECT_EQ(signsThatBreak("/x/{1..3}", ShellForm::Bare), "{}");
    EXPECT_EQ(signsThatBreak("/x/{a}b", ShellForm::Bare), "");
    EXPECT_EQ(signsThatBreak("/x/}a,b{", ShellForm::Bare), "");
    EXPECT_EQ(signsThatBreak("/x/{a,b}.sh", ShellForm::Quoted), "");
}

TEST(ShellSignsOfAdministrators, AreThoseOfAllItsQuotes) {
    EXPECT_EQ(signsThatBreak("/a b&c;(d)/it's", ShellForm::Administrator), "'");
    EXPECT_EQ(signsThatBreak("/a\\b/$c/`d`/\"e", ShellForm::Administrator), "\\$`\"");
}

TEST_F(ShellSigns, OfAnArgumentAreThoseWithWhichNothingIsStarted) {
    program("run");
    program("run.sh");
    int broken = 0;
    for (char sign = ' '; sign <= '~'; ++sign) {
        if (sign == '&') continue;  // what is run then is not waited for
        for (const std::string& word :
             {std::string("a") + sign + "b", std::string(2, sign) + "b", std::string("a") + sign}) {
            for (const char* name : {"run", "run.sh"}) {
                const std::string argument = "\"" + word + "\"";
                const std::string signs =
                    signsThatBreakArgument(argument, name[3] ? ShellForm::Quoted : ShellForm::Bare);
                const bool isRun = runsWith(name, argument);
                const bool isCut = signs.find_first_of(";|<>") != signs.npos;
                // What stands before the end of the command may be run.
                if (!isCut) {
                    EXPECT_EQ(isRun, signs.empty()) << name << argument;
                }
                broken += signs.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(broken, 20);
}

TEST(ShellSignsOfArguments, AreNamed) {
    EXPECT_EQ(signsThatBreakArgument("\"it's\"", ShellForm::Quoted), "'");
    EXPECT_EQ(signsThatBreakArgument("\"it's\"", ShellForm::Bare), "'");
    EXPECT_EQ(signsThatBreakArgument("\"a;b&c\"", ShellForm::Quoted), ";&");
    EXPECT_EQ(signsThatBreakArgument("\"a;b\"", ShellForm::Bare), "");
    EXPECT_EQ(signsThatBreakArgument("\"a\\\"", ShellForm::Quoted), "\\");
    EXPECT_EQ(signsThatBreakArgument("\"$(date)\"", ShellForm::Quoted), "");
    EXPECT_EQ(signsThatBreakArgument("\"-v\"", ShellForm::Administrator), "");
    EXPECT_EQ(signsThatBreakArgument("\"a b\"", ShellForm::Administrator), " ");
    EXPECT_EQ(signsThatBreakArgument("\"it's\"", ShellForm::Administrator), "'");
}
