#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/validate/validator.h"

namespace {

std::string lastLine(const std::string& text) {
    const std::size_t end = text.find_last_not_of('\n');
    return text.substr(text.rfind('\n', end) + 1, end - text.rfind('\n', end));
}

}  // namespace

TEST(Validate, PassesTheLibrary) {
    const CommaLocale made;
    int status = 0;
    const auto result = validatedAsJson(VEK_LIBRARY, "", status);
    ASSERT_TRUE(result.is_object());
    EXPECT_EQ(checksThat("passed", result), listedChecks()) << result.dump(2);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(result["verdict"], "passed");
    EXPECT_EQ(result["bits"], sizeof(void*) * 8);
}

TEST(Validate, SaysItsVerdictInTheLastLine) {
    int status = 0;
    const std::string said = validated(VEK_LIBRARY, "--only symbols near-names", status);
    EXPECT_EQ(status, 0) << said;
    EXPECT_EQ(lastLine(said).find("passed: 0 of 2 checks failed: "), 0u) << said;
}

TEST(Validate, TakesARunWithoutAnyCheckForAFailure) {
    std::string all;
    for (const std::string& name : listedChecks()) all += " " + name;
    int status = 0;
    const std::string said = validated(VEK_LIBRARY, "--except" + all, status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(lastLine(said).find("failed: no check was run"), 0u) << said;
}

TEST(Validate, RejectsWhatIsNoCheckAndWhatIsNoLibrary) {
    int status = 0;
    EXPECT_NE(validated(VEK_LIBRARY, "--only nothing", status).find("there is no check nothing"),
              std::string::npos);
    EXPECT_EQ(status, 2);
    EXPECT_NE(validated("/nowhere/lib.so", "", status).find("there is no file"), std::string::npos);
    EXPECT_EQ(status, 2);
    EXPECT_NE(validated(VEK_SOURCE_DIR "/README.md", "", status).find("is no library"),
              std::string::npos);
    EXPECT_EQ(status, 2);
}

TEST(Validate, RejectsALibraryOfTheOtherWordSize) {
    const TempFolder folder;
    std::string bytes = readFile(VEK_LIBRARY);
    bytes[4] = sizeof(void*) == 8 ? 1 : 2;
    writeFile(folder / "other.so", bytes);
    int status = 0;
    const std::string said = validated(folder / "other.so", "", status);
    EXPECT_EQ(status, 2);
    EXPECT_NE(said.find(sizeof(void*) == 8 ? "built for 32 bits" : "built for 64 bits"),
              std::string::npos)
        << said;
}

TEST(Validate, RejectsWhatCannotBeLoaded) {
    const TempFolder folder;
    const auto expectRejected = [&](std::size_t at, char byte, const char* sentence) {
        std::string bytes = readFile(VEK_LIBRARY);
        bytes[at] = byte;
        writeFile(folder / "other.so", bytes);
        int status = 0;
        const std::string said = validated(folder / "other.so", "", status);
        EXPECT_EQ(status, 2);
        EXPECT_EQ(lastLine(said), "could not run: " + (folder / "other.so") + " " + sentence);
    };
    // The type and the processor in the head of the file.
    expectRejected(16, 1, "is an object file: link it to a library first");
    expectRejected(16, 2, "is a program, no library");
    expectRejected(18, 8, "is built for another processor than this one");
    int status = 0;
    const std::string said = validated(VEK_VALIDATE, "", status);
    EXPECT_EQ(status, 2);
    EXPECT_EQ(lastLine(said), "could not run: " VEK_VALIDATE " is a program, no library");
}

TEST(Validate, SaysInJsonThatItCouldNotRun) {
    int status = 0;
    for (const char* words : {"", "--only nothing", "--seed -1"}) {
        const auto result = validatedAsJson("/nowhere/lib.so", words, status);
        EXPECT_EQ(status, 2);
        ASSERT_TRUE(result.is_object()) << words;
        EXPECT_EQ(result["verdict"], "could not run");
        EXPECT_NE(result["reason"], "");
    }
}

TEST(Validate, RejectsWordsThatItCouldOnlyPassOver) {
    int status = 0;
    for (const char* words :
         {"--seed -1", "--seed 18446744073709551616", "--seed 1x", "--reproduce -1",
          "--reproduce 7 --only nulls", "--reproduce 7 --except nulls", "--time-limit 0"}) {
        const std::string said = validated(VEK_LIBRARY, words, status);
        EXPECT_EQ(status, 2) << words;
        EXPECT_EQ(lastLine(said).find("could not run: "), 0u) << said;
    }
}

TEST(Validate, HasTheCallsOfASequenceInItsJson) {
    int status = 0;
    const auto result = validatedAsJson(VEK_LIBRARY, "--reproduce 7", status);
    ASSERT_TRUE(result.is_object());
    EXPECT_EQ(status, 0);
    // Each call, and what it gave.
    EXPECT_EQ(result["checks"][0]["calls"].size(), 500u);
}

TEST(Validate, LeavesTheTreeOfItsCallerAlone) {
    const Tree tree;
    writeFile(Tree::objectList(), "mine\n");
    for (const char* start : {"", "env -u VEK_VIEW "}) {
        std::string said;
        const int status = runProgram(
            start + std::string(VEK_VALIDATE " " VEK_LIBRARY " --only results-objects"), said);
        EXPECT_EQ(readFile(Tree::objectList()), "mine\n");
        // Where it can have no view of its own, it does nothing.
        if (status == 2) GTEST_SKIP() << said;
        EXPECT_EQ(status, 0) << said;
    }
}

TEST(Validate, DoesNothingWhereItCanHaveNoPrivateView) {
    const Tree tree;
    // A user namespace in which there can be no other, and in which its user may do nothing.
    const std::string start =
        "unshare -Ur sh -c 'echo 0 >/proc/sys/user/max_user_namespaces && "
        "exec setpriv --bounding-set=-all --inh-caps=-all \"$@\"' sh ";
    std::string said;
    if (runProgram(start + "true", said) != 0) GTEST_SKIP() << said;
    EXPECT_EQ(runProgram(start + VEK_VALIDATE " " VEK_LIBRARY " --only symbols", said), 2);
    EXPECT_EQ(said.find("could not run: the checks need a private view of the file system"), 0u)
        << said;
}

TEST(Validate, TellsTheCallsOfASequenceTheSameEachTime) {
    int status = 0;
    const auto calls = [&] {
        const std::string said = validated(VEK_LIBRARY, "--reproduce 7", status);
        return said.substr(0, said.find("\npassed "));
    };
    const std::string one = calls();
    EXPECT_EQ(status, 0) << one;
    EXPECT_NE(one.find("\n250 "), std::string::npos);
    EXPECT_EQ(calls(), one);
}

#ifdef VEK_TOOL

TEST(Validate, IsStartedByTheTool) {
    std::string said;
    EXPECT_EQ(runProgram(VEK_TOOL " validate " VEK_LIBRARY " --only symbols", said), 0) << said;
    EXPECT_EQ(lastLine(said).find("passed: 0 of 1 checks failed"), 0u) << said;
    EXPECT_EQ(runProgram(VEK_TOOL " validate --list", said), 0) << said;
    EXPECT_EQ(said.find("symbols "), 0u) << said;
}

#endif
