#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/temp_folder.h"

// A configuration file in a folder of its own.
class ConfigFile {
public:
    ConfigFile() = default;  // missing
    explicit ConfigFile(const std::string& bytes) { writeFile(path(), bytes); }

    std::string path() const { return m_folder / "config.txt"; }
    std::string bytes() const { return readFile(path()); }

    // The value of the key, or "(none)".
    std::string find(const char* key) const {
        bool found = true;
        const BXString value =
            BXGenericConfigFileParser::findTokenInConfigFile(path().c_str(), key, &found);
        if (!found) {
            EXPECT_TRUE(value.isEmpty());
        }
        return found ? value.c_str() : "(none)";
    }

    // Rewrites the key, which has to work; whether there was a line of it.
    bool replace(const char* key, const char* value) const {
        bool found = false;
        EXPECT_TRUE(BXGenericConfigFileParser::replaceTokenInConfigFile(path().c_str(), key, value,
                                                                        &found));
        return found;
    }

private:
    TempFolder m_folder;
};

// Where the line that begins at `begin` ends and the next one begins.
inline std::size_t nextLine(const std::string& bytes, std::size_t begin) {
    const std::size_t lineBreak = bytes.find_first_of("\r\n", begin);
    if (lineBreak == std::string::npos) return bytes.size();
    return std::min(bytes.find_first_not_of("\r\n", lineBreak), bytes.size());
}
