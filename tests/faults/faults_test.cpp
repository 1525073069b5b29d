// Every call that an export makes of the C library and of the allocator fails once, in every way in
// which it can, one after the other. VEK_FAULT_POINTS=1 prints each point with what came of it.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <sstream>

#include "tests/faults/fault_points.h"
#include "tests/faults/outcome.h"
#include "tests/faults/scenarios.h"
#include "tests/support/allocation_record.h"

namespace {

constexpr std::size_t kBlockSize = 8192;

int openDescriptors() {
    int open = 0;
    for (int file = 0; file < 256; ++file) open += ::fcntl(file, F_GETFD) >= 0;
    return open;
}

// What is left over when a call is done and the library unloaded.
struct Leaks {
    long allocations = countedAllocations();
    int handles = openHandles();
    int descriptors = openDescriptors();
};

// What a run of the whole program came to, printed at its end.
struct Sum {
    std::set<std::string> exports;
    int scenarios = 0, points = 0;
    std::array<int, kOutcomes> outcomes{};
} s_sum;

class PrintSum : public testing::Environment {
public:
    void TearDown() override {
        if (s_sum.scenarios < 2) return;
        std::printf("%zu exports in %d situations, %d faults:", s_sum.exports.size(),
                    s_sum.scenarios, s_sum.points);
        for (int i = 0; i < kOutcomes; ++i) {
            std::printf(" %d %s%s", s_sum.outcomes[static_cast<std::size_t>(i)],
                        outcomeText(static_cast<Outcome>(i)), i + 1 < kOutcomes ? "," : "\n");
        }
    }
};

testing::Environment* const s_printSum = testing::AddGlobalTestEnvironment(new PrintSum);

class Faults : public testing::TestWithParam<Scenario> {
protected:
    // Calls the export with the stage as it is at first and the library loaded anew. `arm` makes
    // the FaultRun, which is over before anything is looked at.
    template <class Arm>
    Seen run(Arm arm) {
        const Scenario& scenario = GetParam();
        if (m_stage.state() != m_before) m_stage.reset(scenario.files);
        m_stage.setInstallerLog(scenario.installerLog, scenario.pauses);
        Seen seen;
        const Leaks before;
        countAllocations(true);
        {
            const LoadedLibrary library;
            countAllocations(false);
            if (scenario.before) scenario.before(library, m_stage);
            seen.stateBefore = m_stage.state();
            seen.memoryBefore = memoryOf(library);
            call(library, seen, arm);
            seen.memory = memoryOf(library);
            countAllocations(true);
        }
        countAllocations(false);
        const Leaks after;
        EXPECT_EQ(after.allocations, before.allocations) << "memory leaks";
        EXPECT_EQ(after.handles, before.handles) << "streams, folders or locales leak";
        EXPECT_EQ(after.descriptors, before.descriptors) << "descriptors leak";
        seen.state = m_stage.state();
        return seen;
    }

    template <class Arm>
    void call(const LoadedLibrary& library, Seen& seen, Arm arm) {
        const Scenario& scenario = GetParam();
        const auto function = reinterpret_cast<VekExport>(library.symbol(scenario.name.c_str()));
        ASSERT_TRUE(function);
        double value = scenario.value;
        if (scenario.application) {
            value = static_cast<double>(library.call("FindVekApp", scenario.application));
        }
        m_index = static_cast<float>(value);
        std::string text = scenario.text;
        seen.block1 = blockWith(scenario.buffer1);
        seen.block2 = blockWith(scenario.buffer2);
        const int size = static_cast<int>(scenario.given1.size()) + 1;
        char** const host = scenario.takesHostData ? m_stage.windows.data() : nullptr;
        const std::unique_ptr<FaultRun> armed = arm();
        seen.result =
            function(text.data(), value, seen.block1.data(), size, seen.block2.data(), size, host);
        armed->stop();
        seen.came = armed->came();
        m_points = armed->points();
    }

    // The texts that an export gives for the indexes from 0 up, to the first that is outside.
    static std::vector<std::string> textsOf(const LoadedLibrary& library, const char* name) {
        const auto function = reinterpret_cast<VekExport>(library.symbol(name));
        const std::string untouched(std::size_t{16} * 1024, '\x5A');
        std::vector<std::string> texts;
        for (std::string block = untouched;; block = untouched) {
            const auto index = static_cast<double>(texts.size());
            function(nullptr, index, block.data(), 0, nullptr, 0, nullptr);
            if (block == untouched) return texts;
            texts.emplace_back(block.c_str());
        }
    }

    static Memory memoryOf(const LoadedLibrary& library) {
        return {textsOf(library, "GetVekAppId"), textsOf(library, "GetVekObjectPath")};
    }

    static std::string blockWith(const std::string& bytes) {
        std::string block = bytes.empty() ? bytes : bytes + '\0';
        block.resize(kBlockSize, '\x5A');
        return block;
    }

    // The run in which nothing fails, against which the others are held.
    void succeed() {
        const Scenario& scenario = GetParam();
        m_stage.reset(scenario.files);
        m_before = m_stage.state();
        m_untouched.block1 = blockWith(scenario.buffer1);
        m_untouched.block2 = blockWith(scenario.buffer2);
        m_success = run([] { return std::make_unique<FaultRun>(); });
        m_untouched.state = m_success.stateBefore;
        EXPECT_EQ(m_success.result, scenario.givesIndex ? m_index : scenario.success);
        const std::string given1 = scenario.given1.empty() ? m_untouched.block1 : scenario.given1;
        const std::string given2 = scenario.given2.empty() ? m_untouched.block2 : scenario.given2;
        EXPECT_EQ(m_success.block1.substr(0, given1.size()), given1);
        EXPECT_EQ(m_success.block2.substr(0, given2.size()), given2);
    }

    Stage m_stage;
    Stage::State m_before;
    Seen m_untouched, m_success;
    std::vector<FaultPoint> m_points;
    float m_index = 0.0f;
};

std::string nameOf(const testing::TestParamInfo<Scenario>& info) {
    return info.param.name + info.param.situation;
}

}  // namespace

TEST_P(Faults, AreReportedOrWithoutConsequence) {
    const Scenario& scenario = GetParam();
    succeed();
    ASSERT_FALSE(HasFailure()) << "it does not succeed where nothing fails";
    const std::vector<FaultPoint> points = m_points;
    std::array<int, kOutcomes> outcomes{};
    for (const FaultPoint& point : points) {
        const std::string what = point.text();
        noteForACrash(scenario.name + ", " + what);
        SCOPED_TRACE(what);
        const Seen seen = run([&] { return std::make_unique<FaultRun>(point); });
        EXPECT_TRUE(seen.came) << "the call was not made again";
        EXPECT_EQ(seen.stateBefore, m_untouched.state);
        const Judge judge(scenario, m_untouched, m_success);
        const Outcome outcome = judge.outcomeOf(seen, point);
        EXPECT_NE(outcome, Outcome::Wrong) << judge.explain(seen);
        ++outcomes[static_cast<std::size_t>(outcome)];
        if (std::getenv("VEK_FAULT_POINTS")) {
            std::printf("%s: %s\n", what.c_str(), outcomeText(outcome));
        }
    }
    std::ostringstream row;
    row << "| " << scenario.name << " | " << scenario.situation << " | " << points.size();
    for (const int count : outcomes) row << " | " << count;
    std::printf("%s |\n", row.str().c_str());
    s_sum.exports.insert(scenario.name);
    ++s_sum.scenarios;
    s_sum.points += static_cast<int>(points.size());
    for (std::size_t i = 0; i < outcomes.size(); ++i) s_sum.outcomes[i] += outcomes[i];
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(scenarios()), nameOf);
