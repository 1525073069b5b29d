#include "os/shell.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

TEST(Shell, RunsTheCommandAndWaitsForIt) {
    TempFolder folder;
    bxRunShellCommand(("sleep 0.05; echo done > \"" + (folder / "a b") + "\"").c_str());
    EXPECT_EQ(readFile(folder / "a b"), "done\n");
}

TEST(Shell, IgnoresACommandThatFails) {
    TempFolder folder;
    bxRunShellCommand("exit 3");
    bxRunShellCommand(("'" + (folder / "no-such-command") + "' 2>/dev/null").c_str());
    bxRunShellCommand(BXString());
}
