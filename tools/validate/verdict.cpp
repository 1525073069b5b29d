#include "tools/validate/verdict.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

std::size_t count(const std::vector<Outcome>& outcomes, Outcome::State state) {
    const auto has = [&](const Outcome& outcome) { return outcome.state == state; };
    return static_cast<std::size_t>(std::count_if(outcomes.begin(), outcomes.end(), has));
}

std::size_t failed(const std::vector<Outcome>& outcomes) {
    return count(outcomes, Outcome::State::Failed);
}

std::size_t notTried(const std::vector<Outcome>& outcomes) {
    return count(outcomes, Outcome::State::NotTried);
}

const char* stateName(Outcome::State state) {
    switch (state) {
        case Outcome::State::Passed:
            return "passed";
        case Outcome::State::Failed:
            return "failed";
        case Outcome::State::NotTried:
            break;
    }
    return "not tried";
}

constexpr int kBits = sizeof(void*) * 8;

// Texts of the library's own may be no UTF-8.
std::string dumped(const json& value) {
    return value.dump(2, ' ', false, json::error_handler_t::replace);
}

}  // namespace

const char* verdict(const std::vector<Outcome>& outcomes) {
    const char* const names[] = {"passed", "failed", "could not run"};
    return names[exitStatus(outcomes)];
}

int exitStatus(const std::vector<Outcome>& outcomes) {
    if (failed(outcomes) > 0 || outcomes.empty()) return 1;
    return notTried(outcomes) > 0 ? 2 : 0;
}

void print(const Outcome& outcome) {
    std::printf("%-10s %-22s %6.2f s  %s\n", stateName(outcome.state), outcome.check->name,
                outcome.seconds, outcome.check->about);
    for (const std::string& finding : outcome.findings)
        std::printf("           - %s\n", finding.c_str());
    std::fflush(stdout);
}

void printVerdict(const Settings& settings, const std::vector<Outcome>& outcomes) {
    std::string line;
    if (outcomes.empty()) {
        line = "failed: no check was run";
    } else {
        line = std::string(verdict(outcomes)) + ": " + std::to_string(failed(outcomes)) + " of " +
               std::to_string(outcomes.size()) + " checks failed";
        if (notTried(outcomes) > 0) {
            line += ", " + std::to_string(notTried(outcomes)) +
                    " could not be tried here (leave them out with --except)";
        }
    }
    std::printf("%s: %s, %d-bit, seed %llu\n", line.c_str(), settings.library.c_str(), kBits,
                static_cast<unsigned long long>(settings.seed));
}

void printJson(const Settings& settings, const std::vector<Outcome>& outcomes) {
    json checks = json::array();
    for (const Outcome& outcome : outcomes) {
        checks.push_back({{"name", outcome.check->name},
                          {"about", outcome.check->about},
                          {"outcome", stateName(outcome.state)},
                          {"findings", outcome.findings},
                          {"signal", outcome.signal.empty() ? json() : json(outcome.signal)},
                          {"seconds", outcome.seconds}});
        if (settings.reproduces) checks.back()["calls"] = outcome.calls;
    }
    const json all = {{"library", settings.library}, {"bits", kBits},
                      {"seed", settings.seed},       {"checks", checks},
                      {"failed", failed(outcomes)},  {"notTried", notTried(outcomes)},
                      {"verdict", verdict(outcomes)}};
    std::printf("%s\n", dumped(all).c_str());
}

void printRefusal(const std::string& sentence, bool asJson) {
    const std::string verdict = "could not run";
    const json all = {{"verdict", verdict}, {"reason", sentence}};
    std::printf("%s\n", asJson ? dumped(all).c_str() : (verdict + ": " + sentence).c_str());
}

void printList(bool asJson) {
    json list = json::array();
    for (const Check& check : allChecks()) {
        list.push_back({{"name", check.name}, {"about", check.about}});
        if (!asJson) std::printf("%-22s %s\n", check.name, check.about);
    }
    if (asJson) std::printf("%s\n", dumped(list).c_str());
}
