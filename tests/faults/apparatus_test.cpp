// The faults reach everything, and what they do is seen.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <vector>

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
        // The first way of the first kind: no memory.
        return outcome(result, {{"/list", list}, {"/other", other}}, {0, 0, 0, 0}, block);
    }

    Outcome outcome(float result, const Stage::State& state, const FaultPoint& point,
                    const std::string& block1 = "", const std::string& block2 = "") {
        Seen seen;
        seen.result = result;
        seen.block1 = block1;
        seen.block2 = block2;
        seen.state = state;
        return Judge(m_scenario, m_untouched, m_success).outcomeOf(seen, point);
    }

    // Where a disk fills up.
    Outcome torn(const std::string& list, float result = 0.0f, const std::string& other = "x",
                 const std::string& block = "") {
        return outcome(result, {{"/list", list}, {"/other", other}},
                       pointOf("pwrite64", Manner::FillsUp), block);
    }

    // Where a write fails, while the list is rewritten.
    Outcome half(const std::string& list, float result = 0.0f, const std::string& other = "x",
                 const std::string& block = "") {
        return outcome(result, {{"/list", list}, {"/other", other}},
                       pointOf("pwrite64", Manner::Fails), block);
    }

    static FaultPoint pointOf(const std::string& symbol, Manner manner) {
        const std::vector<CallKind>& kinds = callKinds();
        for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
            const std::vector<Way>& ways = kinds[kind].ways;
            for (std::size_t way = 0; way < ways.size(); ++way) {
                if (kinds[kind].symbol != symbol || ways[way].manner != manner) continue;
                return {0, 0, static_cast<int>(kind), static_cast<int>(way)};
            }
        }
        ADD_FAILURE() << symbol << " does not fail so";
        return {0, 0, 0, 0};
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

TEST_F(JudgeTest, WantsInMemoryWhatTheResultSays) {
    const auto outcomeWith = [&](float result, const Memory& memory) {
        Seen seen;
        seen.result = result;
        seen.state = m_untouched.state;
        seen.memoryBefore = {{"Old"}, {"/old"}};
        seen.memory = memory;
        return Judge(m_scenario, m_untouched, m_success).outcomeOf(seen, {0, 0, 0, 0});
    };
    m_success.state = m_untouched.state;
    m_scenario.name = "InitializeVek";
    m_success.result = 2.0f;
    m_success.memory = {{"A", "B"}, {"/old"}};
    EXPECT_EQ(outcomeWith(2.0f, {{"A", "B"}, {"/old"}}), Outcome::Whole);
    EXPECT_EQ(outcomeWith(0.0f, {{}, {"/old"}}), Outcome::Nothing);
    EXPECT_EQ(outcomeWith(0.0f, {{"A", "B"}, {"/old"}}), Outcome::Wrong);
    EXPECT_EQ(outcomeWith(2.0f, {{"A", ""}, {"/old"}}), Outcome::Wrong);
    m_scenario.name = "ReadVekObjectList";
    m_success.result = 1.0f;
    m_success.memory = {{"Old"}, {"/new"}};
    EXPECT_EQ(outcomeWith(1.0f, {{"Old"}, {"/new"}}), Outcome::Whole);
    EXPECT_EQ(outcomeWith(0.0f, {{"Old"}, {}}), Outcome::Nothing);
    EXPECT_EQ(outcomeWith(0.0f, {{"Old"}, {"/old"}}), Outcome::Wrong);
    EXPECT_EQ(outcomeWith(1.0f, {{"Old"}, {"/ne"}}), Outcome::Wrong);
    EXPECT_EQ(outcomeWith(1.0f, {{}, {"/new"}}), Outcome::Wrong);
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

TEST_F(JudgeTest, AllowsATornTextOnlyWhereNewAndOldMeet) {
    EXPECT_EQ(torn("N\nB\n"), Outcome::Wrong) << "where it may not be";
    m_scenario.allowed = Scenario::Torn;
    EXPECT_EQ(torn("N\nB\n"), Outcome::Torn);
    EXPECT_EQ(torn("N\nB\n\n\n"), Outcome::Torn) << "the room that was made";
    EXPECT_EQ(outcome(0.0f, "N\nB\n"), Outcome::Wrong) << "memory ended, and no disk";
    EXPECT_EQ(torn("A\nB\n"), Outcome::Nothing);
    EXPECT_EQ(torn("A\nB\n\n\n"), Outcome::Wrong) << "nothing but room";
    EXPECT_EQ(torn("N\nA\nB\n"), Outcome::Wrong) << "all of it";
    EXPECT_EQ(torn("N\nA\nB"), Outcome::Wrong) << "more than replaces what was there";
    EXPECT_EQ(torn("N\n"), Outcome::Wrong) << "without the old text";
    EXPECT_EQ(torn("?\nB\n"), Outcome::Wrong) << "neither old nor new";
    EXPECT_EQ(torn("A\nN\n"), Outcome::Wrong) << "the old one first";
    EXPECT_EQ(torn(""), Outcome::Wrong) << "nothing left";
}

TEST_F(JudgeTest, AllowsNothingElseBesideATornText) {
    m_scenario.allowed = Scenario::Torn;
    const FaultPoint full = pointOf("pwrite64", Manner::FillsUp);
    EXPECT_EQ(torn("N\nB\n", 1.0f), Outcome::Wrong) << "with success";
    EXPECT_EQ(torn("N\nB\n", 0.0f, "y"), Outcome::Wrong) << "another file";
    EXPECT_EQ(torn("N\nB\n", 0.0f, "x", "z"), Outcome::Wrong) << "a block";
    EXPECT_EQ(outcome(0.0f, {{"/list", "N\nB\n"}}, full), Outcome::Wrong) << "one is gone";
    EXPECT_EQ(outcome(0.0f, {{"/other", "x"}}, full), Outcome::Wrong) << "the list is gone";
    m_scenario.allowed = Scenario::Torn | Scenario::Parts;
    m_success.state["/other"] = "y";
    EXPECT_EQ(torn("N\nB\n"), Outcome::Torn);
    EXPECT_EQ(torn("N\nB\n", 0.0f, "y"), Outcome::Torn) << "which it works on too";
    EXPECT_EQ(torn("N\nB\n", 0.0f, "z"), Outcome::Wrong) << "another file";
    m_untouched.state["/other"] = "xx";
    m_success.state["/other"] = "yy";
    EXPECT_EQ(torn("N\nB\n", 0.0f, "yx"), Outcome::Wrong) << "two that are torn";
}

TEST_F(JudgeTest, KnowsATextThatIsRewrittenTwice) {
    m_scenario.allowed = Scenario::Torn;
    EXPECT_EQ(torn("M\nB\n"), Outcome::Wrong);
    m_scenario.halfway = "M\nA\nB\n";
    EXPECT_EQ(torn("M\nB\n"), Outcome::Torn) << "by the first";
    m_success.state["/list"] = "N\nM\nA\nB\n";
    EXPECT_EQ(torn("N\nA\nB\n"), Outcome::Torn) << "by the second";
    EXPECT_EQ(torn("?\nB\n"), Outcome::Wrong);
}

TEST_F(JudgeTest, AllowsAHalfWrittenFileOnlyWhereNewAndOldMeet) {
    m_scenario.text = Tree::root() + "/list";
    EXPECT_EQ(half("N\nB\n"), Outcome::Wrong) << "where it may not be";
    m_scenario.allowed = Scenario::Half;
    EXPECT_EQ(half("N\nB\n"), Outcome::Half);
    EXPECT_EQ(outcome(0.0f, "N\nB\n"), Outcome::Wrong) << "memory ended, and no transfer";
    EXPECT_EQ(half("N\nB\n", 1.0f), Outcome::Wrong) << "with success";
    EXPECT_EQ(half("N\nA\nB\n"), Outcome::Wrong) << "all of it";
    EXPECT_EQ(half("N\nB\n\n"), Outcome::Wrong) << "and more";
    EXPECT_EQ(half("?\nB\n"), Outcome::Wrong) << "neither old nor new";
    EXPECT_EQ(half("N\n"), Outcome::Wrong) << "cut off";
    EXPECT_EQ(half("N\nB\n", 0.0f, "y"), Outcome::Wrong) << "another file";
    EXPECT_EQ(half("N\nB\n", 0.0f, "x", "z"), Outcome::Wrong) << "a block";
    const FaultPoint failing = pointOf("pwrite64", Manner::Fails);
    EXPECT_EQ(outcome(0.0f, {{"/list", "N\nB\n"}}, failing), Outcome::Wrong) << "one is gone";
    EXPECT_EQ(outcome(0.0f, {{"/other", "x"}}, failing), Outcome::Wrong) << "it is gone";
    const FaultPoint notCut = pointOf("ftruncate64", Manner::Fails);
    EXPECT_EQ(outcome(0.0f, m_success.state, notCut), Outcome::Half) << "all but its length";
    m_scenario.text = Tree::root() + "/other";
    EXPECT_EQ(half("N\nB\n"), Outcome::Wrong) << "another than was to be rewritten";
}

TEST_F(JudgeTest, AllowsAHalfWrittenFileWithAMagicOnlyWithoutIt) {
    m_scenario.text = Tree::root() + "/list";
    m_scenario.allowed = Scenario::Half;
    m_scenario.magic = "Ve";
    m_untouched.state["/list"] = "Veabcd";
    m_success.state["/list"] = "VeABCD";
    const std::string blank(2, '\0');
    EXPECT_EQ(half(blank + "ABcd"), Outcome::Half);
    EXPECT_EQ(half(blank + "abcd"), Outcome::Half) << "only begun";
    EXPECT_EQ(half(blank + "ABCD"), Outcome::Half) << "all but the magic";
    EXPECT_EQ(half(std::string("\0eabcd", 6)), Outcome::Half) << "the magic half blank";
    EXPECT_EQ(half(std::string("V\0ABCD", 6)), Outcome::Half) << "half there again";
    EXPECT_EQ(half("VeABcd"), Outcome::Wrong) << "with its magic";
    EXPECT_EQ(half(std::string("\0eABcd", 6)), Outcome::Wrong) << "half blank, and changed";
    EXPECT_EQ(half("XXABcd"), Outcome::Wrong) << "another magic";
    EXPECT_EQ(half(blank + "AbCd"), Outcome::Wrong) << "two runs";
    EXPECT_EQ(half(blank + "AB"), Outcome::Wrong) << "cut off";
    m_scenario.runs = 2;
    EXPECT_EQ(half(blank + "AbCd"), Outcome::Half);
    EXPECT_EQ(half(blank + "aBcD"), Outcome::Wrong) << "not from their starts";
}

TEST_F(JudgeTest, AllowsOnlyTheMessagesThatAreKnown) {
    const FaultPoint noMemory = {0, 0, 0, 0};
    const Stage::State& state = m_untouched.state;
    m_scenario.given1 = "No.";
    m_scenario.messages = {"", "Failed."};
    m_untouched.block1 = m_untouched.block2 = "ZZZZZZZZZZ";
    const std::string told = std::string("Failed.\0ZZ", 10), ended = std::string("ZZZ\0ZZZZZZ", 10);
    EXPECT_EQ(outcome(0.0f, state, noMemory, told, "ZZZZZZZZZZ"), Outcome::Wrong)
        << "where it may not be";
    m_scenario.allowed = Scenario::Message;
    EXPECT_EQ(outcome(0.0f, state, noMemory, told, "ZZZZZZZZZZ"), Outcome::Parts);
    EXPECT_EQ(outcome(0.0f, state, noMemory, ended, "ZZZZZZZZZZ"), Outcome::Parts);
    EXPECT_EQ(outcome(1.0f, state, noMemory, told, "ZZZZZZZZZZ"), Outcome::Wrong) << "success";
    EXPECT_EQ(outcome(0.0f, state, noMemory, "scribbled!", "ZZZZZZZZZZ"), Outcome::Wrong);
    EXPECT_EQ(outcome(0.0f, state, noMemory, "Failed.ZZZ", "ZZZZZZZZZZ"), Outcome::Wrong) << "open";
    EXPECT_EQ(outcome(0.0f, state, noMemory, std::string("Failed.\0?Z", 10), "ZZZZZZZZZZ"),
              Outcome::Wrong)
        << "written to behind the message";
    EXPECT_EQ(outcome(0.0f, state, noMemory, told, "?ZZZZZZZZZ"), Outcome::Wrong)
        << "the other block";
    EXPECT_EQ(outcome(0.0f, {{"/list", "?\n"}, {"/other", "x"}}, noMemory, told, "ZZZZZZZZZZ"),
              Outcome::Wrong)
        << "a file";
}
