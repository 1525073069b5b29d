// The shell, as the platform runs it.

#include <gtest/gtest.h>

#include "os/platform.h"
#include "tests/support/temp_folder.h"

TEST(Shell, RunsTheCommandAndWaitsForIt) {
    TempFolder folder;
    BXPlatform::current().runShellCommand(
        ("sleep 0.05; echo done > \"" + (folder / "a b") + "\"").c_str());
    EXPECT_EQ(readFile(folder / "a b"), "done\n");
}

TEST(Shell, IgnoresACommandThatFails) {
    TempFolder folder;
    BXPlatform::current().runShellCommand("exit 3");
    BXPlatform::current().runShellCommand(
        ("'" + (folder / "no-such-command") + "' 2>/dev/null").c_str());
    BXPlatform::current().runShellCommand(BXString());
}
