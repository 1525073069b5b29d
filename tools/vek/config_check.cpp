#include <fmt/format.h>

#include <algorithm>

#include "config/bx_generic_config_file_parser.h"
#include "config/config_line.h"
#include "tools/vek/near_words.h"
#include "tools/vek/path_text.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_checks.h"
#include "tools/vek/tree_look.h"

// Configuration files, which only '=' divides into keys and values. Keys that are not the bridge's
// own belong to the host's scripts.

namespace {

const char kPath[] = "PATH";
const char kUnlocked[] = "APPS_UNLOCKED";

struct ConfigLine {
    int number;
    std::string key;  // in upper case
    std::string value;
    bool hasEquals;
};

std::vector<ConfigLine> configLinesOf(const std::string& text) {
    std::vector<ConfigLine> lines;
    for (const TextLine& line : linesOf(text)) {
        const BXConfigLine parts(line.text.data(), line.text.data() + line.text.size());
        if (!parts.hasKey()) continue;
        lines.push_back({line.number, inUpperCase({parts.keyBegin, parts.keyEnd}),
                         std::string(parts.valueBegin, parts.valueEnd),
                         line.text.find('=') != std::string::npos});
    }
    return lines;
}

class ConfigCheck {
public:
    ConfigCheck(Findings& findings, const std::string& path, const std::string& text, bool isOfApp)
        : m_findings(findings), m_path(path), m_lines(configLinesOf(text)), m_isOfApp(isOfApp) {}

    void check(const std::string& key) {
        const ConfigLine* first = nullptr;
        for (const ConfigLine& line : m_lines) {
            if (!line.hasEquals) {
                checkWithoutEquals(line, key);
            } else if (line.key == key && first) {
                find("duplicate-key", line.number,
                     fmt::format("{} stands in line {} already; the first line counts.", key,
                                 first->number),
                     "Take one of the two lines away.");
            } else if (line.key == key) {
                first = &line;
            }
        }
        if (first) {
            if (checkValue(*first) && m_isOfApp && key == kPath) checkLocation(*first);
            return;
        }
        for (const ConfigLine& line : m_lines) checkSpelling(line, key);
    }

private:
    void find(const char* code, int line, const std::string& what, const std::string& advice) {
        m_findings.add(code, m_path, line, what, advice);
    }

    void checkWithoutEquals(const ConfigLine& line, const std::string& key) {
        const bool isOfKey =
            line.key.rfind(key, 0) == 0 &&
            (line.key.size() == key.size() ||
             std::string(" \t:\"").find(line.key[key.size()]) != std::string::npos);
        if (!isOfKey) return;
        find("config-without-equals", line.number,
             fmt::format("{} has no value, as only a '=' separates them here.", key),
             fmt::format("Write {} = and the value.", key));
    }

    // Whether it can be taken for what it says.
    bool checkValue(const ConfigLine& line) {
        const std::string& value = line.value;
        const bool isOn = line.key == kUnlocked && isPlainlyOn(value);
        if (!isOn && oddQuotesOf(value, true) != OddQuotes::None) {
            find(
                "odd-quotes", line.number,
                fmt::format("The quotes or blanks of {} are none that the bridge knows.", line.key),
                fmt::format("Write {} = \"{}\", with straight double quotes and ordinary blanks.",
                            line.key, withoutAnyQuotes(value)));
            return false;
        }
        if (std::count(value.begin(), value.end(), '"') % 2 != 0) {
            find("unpaired-quote", line.number,
                 fmt::format("A double quote in the value of {} has no partner.", line.key),
                 "Put the value between two double quotes, or take the one away.");
            return false;
        }
        if (line.key == kUnlocked && !isOn && !value.empty() &&
            BXGenericConfigFileParser::paramToBoolOrDefault(withoutQuotes(value).c_str()) < 0) {
            find("unclear-switch", line.number,
                 fmt::format("{} is on, since \"{}\" is none of No, 0, False and #f.", line.key,
                             value),
                 "Write TRUE or FALSE.");
            return false;
        }
        return true;
    }

    // Where the application is. The host writes its own path anew whenever it starts.
    void checkLocation(const ConfigLine& line) {
        // Reading a path takes off two pairs.
        const BXString path = BXString(line.value.c_str()).unquoted().unquoted();
        const std::string shown = path.c_str();
        if (shown.empty()) return;
        if (!checkAbsolute(m_findings, shown, m_path, line.number, "PATH")) return;
        const TreeLook::Kind wanted =
            path.endsWith(".app", true) ? TreeLook::Kind::Folder : TreeLook::Kind::File;
        if (lookAt(withoutVolume(shown)).kind == wanted) return;
        find("application-moved", line.number,
             fmt::format("The application is not where PATH says: {}", shown),
             "Have it located again in the host, or write where it is.");
    }

    static std::string withoutQuotes(const std::string& value) {
        return BXString(value.c_str()).unquoted().c_str();
    }

    // The line may be a script's own, so it has to be very like, and the value one of a path.
    void checkSpelling(const ConfigLine& line, const std::string& key) {
        if (key == kPath && line.value.find('/') == line.value.npos) return;
        if (wordDistance(line.key.substr(0, key.size() * 2), key) > 1) return;
        find("misspelt-setting", line.number,
             fmt::format("\"{}\" is not a key of the bridge; {} may be meant.", line.key, key),
             fmt::format("Write {}, unless a script of yours reads this key.", key));
    }

    Findings& m_findings;
    const std::string& m_path;
    const std::vector<ConfigLine> m_lines;
    const bool m_isOfApp;
};

void checkConfig(Findings& findings, const std::string& path, bool isOfApp) {
    std::string text;
    if (!readText(findings, path, kSharedFileMode, kLargestText, text)) return;
    ConfigCheck check(findings, path, text, isOfApp);
    check.check(kPath);
    check.check(kUnlocked);
}

}  // namespace

void checkHubConfig(Findings& findings, const std::string& path) {
    checkConfig(findings, path, false);
}

void checkAppConfig(Findings& findings, const std::string& path) {
    checkConfig(findings, path, true);
}
