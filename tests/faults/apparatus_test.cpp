// The faults reach everything, and what they do is seen.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

#include "tests/faults/fault_points.h"
#include "tests/faults/outcome.h"
#include "tests/faults/scenarios.h"

namespace {

// C++'s own, and what the compiler and the sanitizers put in.
bool isOfTheLanguage(const std::string& symbol) {
    for (const char* beginning : {"_Z", "__cxa_", "__gxx", "_Unwind", "__gmon", "_ITM", "__asan",
                                  "__ubsan", "__sanitizer"}) {
        if (symbol.compare(0, std::strlen(beginning), beginning) == 0) return true;
    }
    return symbol.find("@GCC_") != std::string::npos;
}

// The functions of the C library and the allocators that the library asks for.
std::set<std::string> neededSymbols() {
    std::set<std::string> symbols;
    FILE* const nm = popen("nm -D --undefined-only '" VEK_LIBRARY "'", "r");
    if (!nm) return symbols;
    char kind[8], name[1024];
    while (std::fscanf(nm, "%7s %1023s", kind, name) == 2) {
        const std::string symbol = name;
        const bool isNew = symbol.compare(0, 4, "_Znw") == 0 || symbol.compare(0, 4, "_Zna") == 0;
        if (isNew) symbols.insert("operator new");
        if (!isOfTheLanguage(symbol)) symbols.insert(symbol.substr(0, symbol.find('@')));
    }
    pclose(nm);
    return symbols;
}

class JudgeTest : public testing::Test {
protected:
    JudgeTest() {
        m_scenario.name = "AddVekObject";
        m_scenario.success = 1.0f;
        m_untouched.state = {{"/list", "A\nB\n"}, {"/other", "x"}};
        m_success.result = 1.0f;
        m_success.state = {{"/list", "N\nA\nB\n"}, {"/other", "x"}};
    }

    Outcome outcome(float result, const std::string& list, const std::string& other = "x",
                    const std::string& block = "") {
        Seen seen;
        seen.result = result;
        seen.block1 = block;
        seen.state = {{"/list", list}, {"/other", other}};
        // The first way of the first kind: no memory.
        return Judge(m_scenario, m_untouched, m_success).outcomeOf(seen, {0, 0, 0, 0});
    }

    Scenario m_scenario;
    Seen m_untouched, m_success;
};

}  // namespace

TEST(FaultPoints, CoverAllThatTheLibraryCallsAndThatCanFail) {
    std::set<std::string> covered(callsThatCannotFail().begin(), callsThatCannotFail().end());
    for (const CallKind& kind : callKinds()) covered.insert(kind.symbol);
    const std::set<std::string> needed = neededSymbols();
    EXPECT_EQ(needed.count("pwrite64") + needed.count("operator new"), 2u) << "nm told nothing";
    for (const std::string& symbol : needed) {
        EXPECT_TRUE(covered.count(symbol)) << symbol << " is not among them";
    }
}

TEST(Scenarios, AreThereForEachExport) {
    std::set<std::string> listed, tried;
#define X(name, group, textUse, valueUse, kind1, kind2, result) listed.insert(#name);
#include "exports/exports.def.h"
#undef X
    for (const Scenario& scenario : scenarios()) tried.insert(scenario.name);
    EXPECT_EQ(listed.size(), 49u);
    EXPECT_EQ(tried, listed);
}

TEST_F(JudgeTest, KnowsTheTwoOutcomesThatEveryExportMayHave) {
    EXPECT_EQ(outcome(1.0f, "N\nA\nB\n"), Outcome::Whole);
    EXPECT_EQ(outcome(0.0f, "A\nB\n"), Outcome::Nothing);
}

TEST_F(JudgeTest, FindsEverythingElseWrong) {
    EXPECT_EQ(outcome(1.0f, "A\nB\n"), Outcome::Wrong) << "success without effect";
    EXPECT_EQ(outcome(0.0f, "N\nA\nB\n"), Outcome::Wrong) << "effect with failure";
    EXPECT_EQ(outcome(-1.0f, "A\nB\n"), Outcome::Wrong) << "another result";
    EXPECT_EQ(outcome(0.0f, "A\nB\n", "y"), Outcome::Wrong) << "another file";
    EXPECT_EQ(outcome(0.0f, "A\nB\n", "x", "z"), Outcome::Wrong) << "a block";
    EXPECT_EQ(outcome(0.0f, ""), Outcome::Wrong) << "nothing left";
}

TEST_F(JudgeTest, AllowsPartsOnlyOfWholeLines) {
    m_scenario.allowed = Scenario::Parts;
    m_success.state["/other"] = "y";
    EXPECT_EQ(outcome(1.0f, "A\nB\n", "y"), Outcome::Parts);
    EXPECT_EQ(outcome(0.0f, "N\nA\nB\n"), Outcome::Parts);
    EXPECT_EQ(outcome(0.0f, "N\nB\n"), Outcome::Wrong) << "a line that was to stay";
    EXPECT_EQ(outcome(0.0f, "A\nB\nC\n"), Outcome::Wrong) << "a line of nobody's";
    EXPECT_EQ(outcome(0.0f, "N\nA\nB"), Outcome::Wrong) << "a line that is cut";
}
