// What arrives at the programs that the shell is told to run: stand-ins at the front of PATH write
// down their arguments.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"

namespace {

using Words = std::vector<std::string>;
using Texts = BXArray<BXString>;

class ShellForms : public testing::Test {
protected:
    ShellForms() : m_path(std::getenv("PATH")) {
        makeFolders(m_folder / "bin");
        for (const char* name :
             {"bin/osascript", "bin/open", "tool", "a tool", "do.sh", "d o.SH"}) {
            makeProgram(name);
        }
        setenv("PATH", ((m_folder / "bin") + ":" + m_path).c_str(), 1);
    }
    ~ShellForms() override { setenv("PATH", m_path.c_str(), 1); }

    // The program and its arguments as they came, nothing when none was run.
    Words arrived() {
        Words words;
        if (!fileIsThere(m_folder / "arrived")) return words;
        const std::string all = readFile(m_folder / "arrived");
        for (std::size_t at = 0; at < all.size(); at = all.find('\0', at) + 1) {
            words.push_back(all.c_str() + at);
        }
        BXDiskServer::deleteFile(at(m_folder, "arrived"));
        return words;
    }

    Words launched(const char* program, const char* args) {
        EXPECT_TRUE(BXDiskServer::launchApplication(at(m_folder, program), args));
        return arrived();
    }
    Words launched(const char* program, const Texts& args) {
        EXPECT_TRUE(BXDiskServer::launchApplication(at(m_folder, program), args));
        return arrived();
    }

    TempFolder m_folder;

private:
    void makeProgram(const std::string& name) {
        const std::string path = m_folder / name;
        writeFile(path, "#!/bin/sh\nprintf '%s\\0' \"" + name.substr(name.rfind('/') + 1) +
                            "\" \"$@\" > '" + (m_folder / "arrived") + "'\n");
        chmod(path.c_str(), 0755);
    }

    const std::string m_path;
};

}  // namespace

TEST_F(ShellForms, RunAScriptWithItsArgument) {
    EXPECT_EQ(launched("do.sh", "a b"), (Words{"do.sh", "a b"}));
    EXPECT_EQ(launched("do.sh", ""), (Words{"do.sh"}));
    EXPECT_EQ(launched("d o.SH", "it's"), (Words{"d o.SH", "it's"}));
    EXPECT_EQ(launched("do.sh", "\"-v\""), (Words{"do.sh", "-v"})) << "quotes of its own";
    EXPECT_EQ(launched("do.sh", Texts{"a b", "", "c"}), (Words{"do.sh", "a b", "", "c"}));
}

TEST_F(ShellForms, RunAnExecutableWithItsArgument) {
    EXPECT_EQ(launched("tool", "a \"b\" $HOME"), (Words{"tool", "a \"b\" $HOME"}));
    EXPECT_EQ(launched("tool", ""), (Words{"tool"}));
    EXPECT_EQ(launched("tool", Texts{"a b", "it's"}), (Words{"tool", "a b", "it's"}));
}

TEST_F(ShellForms, ExpandDollarsInAListAndForAScript) {
    setenv("VEK_WORD", "x", 1);
    EXPECT_EQ(launched("tool", Texts{"$VEK_WORD"}), (Words{"tool", "x"}));
    EXPECT_EQ(launched("do.sh", "$VEK_WORD"), (Words{"do.sh", "x"}));
    unsetenv("VEK_WORD");
}

TEST_F(ShellForms, FindNoExecutableBehindABlankAndAreTrueAllTheSame) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(launched("a tool", "x"), Words());
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ShellForms, GiveAnAdministratorsScriptToOsascript) {
    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/x y/i.sh", "-v"));
    EXPECT_EQ(arrived(),
              (Words{"osascript", "-e",
                     "do shell script \"sh '/x y/i.sh' '-v'\" with administrator privileges"}));
    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/A/B.app", "f"));
    EXPECT_EQ(arrived(),
              (Words{"osascript", "-e",
                     "do shell script \"open -a '/A/B.app' 'f'\" with administrator privileges"}));
    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/x/tool", ""));
    EXPECT_EQ(arrived(), (Words{"osascript", "-e",
                                "do shell script \"'/x/tool'\" with administrator privileges"}));
}

TEST_F(ShellForms, GiveAnAdministratorsPathInAnyLetterCaseAndWithWhatItHolds) {
    const auto asked = [&](const char* path, const char* args) {
        EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin(path, args));
        const Words words = arrived();
        return words.size() == 3 ? words[2] : std::to_string(words.size()) + " words";
    };
    const std::string tail = " with administrator privileges";
    EXPECT_EQ(asked("/x/I.SH", "it's"), "do shell script \"sh '/x/I.SH' 'it's'\"" + tail);
    EXPECT_EQ(asked("/A/B.ApP", ""), "do shell script \"open -a '/A/B.ApP'\"" + tail);
    setenv("VEK_WORD", "x", 1);
    EXPECT_EQ(asked("/x/tool", "$VEK_WORD"), "do shell script \"'/x/tool' 'x'\"" + tail)
        << "the apostrophes are inside double quotes";
    unsetenv("VEK_WORD");
    EXPECT_EQ(asked("/x/tool", "a\"b\"c"), "do shell script \"'/x/tool' 'abc'\"" + tail);
}

TEST_F(ShellForms, LoseTheQuotesOfAnAdministratorsList) {
    const std::string tail = "\" with administrator privileges";
    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/A.app", Texts{"", "xy"}));
    EXPECT_EQ(arrived(),
              (Words{"osascript", "-e", "do shell script \"open -a '/A.app'  xy" + tail}));
    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/x/tool", Texts{"", "$HOME_OF_NOBODY"}));
    EXPECT_EQ(arrived(), (Words{"osascript", "-e", "do shell script \"'/x/tool'  " + tail}));

    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/x/i.sh", Texts{"a"}));
    EXPECT_EQ(arrived(),
              (Words{"osascript", "-e",
                     "do shell script \"sh '/x/i.sh' a\" with administrator privileges"}));
    EXPECT_TRUE(BXDiskServer::launchApplicationAsAdmin("/x/i.sh", Texts{"a", "b c"}));
    EXPECT_EQ(arrived(), (Words{"osascript", "-e", "do shell script \"sh '/x/i.sh' a b",
                                "c\" with administrator privileges"}));
}

TEST_F(ShellForms, GiveAppleScriptToOsascript) {
    EXPECT_TRUE(BXDiskServer::runAppleScript("beep 2"));
    EXPECT_EQ(arrived(), (Words{"osascript", "-e", "beep 2"}));
    EXPECT_TRUE(BXDiskServer::runAppleScriptMultiLine("tell app \"X\"\n\nquit\nend"));
    EXPECT_EQ(arrived(), (Words{"osascript", "-etell app \"X\"", "-equit", "-eend"}));
}
