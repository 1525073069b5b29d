#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "tests/tools/program.h"

// Runs vek-validate on a library, with further words for its command line. The result is what it
// says; its exit status goes to `status`.
inline std::string validated(const std::string& library, const std::string& words, int& status) {
    std::string said;
    // It takes seconds to make a locale with a decimal comma, and the tests may have made one.
    const std::string locales = VEK_BUILD_DIR "/locale";
    const std::string variable =
        std::filesystem::exists(locales) ? "LOCPATH=" + shellWord(locales) + " " : "";
    status = runProgram(variable + VEK_VALIDATE " " + shellWord(library) + " " + words, said);
    return said;
}

inline nlohmann::json validatedAsJson(const std::string& library, const std::string& words,
                                      int& status) {
    return nlohmann::json::parse(validated(library, words + " --json", status), nullptr, false);
}

// The names of the checks with this outcome.
inline std::set<std::string> checksThat(const std::string& outcome, const nlohmann::json& result) {
    std::set<std::string> names;
    for (const auto& check : result.value("checks", nlohmann::json::array())) {
        if (check.value("outcome", "") == outcome) names.insert(check.value("name", ""));
    }
    return names;
}

inline std::set<std::string> listedChecks() {
    std::string said;
    runProgram(VEK_VALIDATE " --list --json", said);
    std::set<std::string> names;
    for (const auto& check : nlohmann::json::parse(said, nullptr, false)) {
        names.insert(check.value("name", ""));
    }
    return names;
}
