#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <map>

#include "config/bx_generic_config_file_parser.h"
#include "tools/vek/near_words.h"
#include "tools/vek/tree_checks.h"

namespace {

using Kind = DescriptorKey::Kind;
using Parser = BXGenericConfigFileParser;

bool isNameLetter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) || byte >= 0x80 || c == '-' || c == '_' || c == '+';
}

// A dot and letters, with single dots among them.
bool isExtension(const std::string& text) {
    if (text.size() < 2 || text[0] != '.' || text.back() == '.') return false;
    if (text.find("..") != text.npos) return false;
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == '.' || isNameLetter(c); });
}

// The one in a text that has signs around it which do not belong to names; empty where there is
// none.
std::string extensionIn(const std::string& text) {
    const char signs[] = " \t*.,;:\"'()<>[]\\";
    const std::size_t first = text.find_first_not_of(signs);
    if (first == text.npos) return "";
    const std::string extension =
        "." + text.substr(first, text.find_last_not_of(signs) + 1 - first);
    return isExtension(extension) ? extension : "";
}

class DescriptorCheck {
public:
    DescriptorCheck(Findings& findings, const std::string& path, const Descriptor& descriptor)
        : m_findings(findings), m_path(path), m_descriptor(descriptor) {}

    void checkLines() {
        std::map<std::string, int> seen;
        for (const DescriptorLine& line : m_descriptor.lines) {
            if (!line.key) {
                checkNoKey(line);
            } else if (line.runsOn) {
                find("key-run-on", line.number,
                     fmt::format("\"{}\" is read as {}, and what follows as its value.", line.word,
                                 line.key->name),
                     fmt::format("Put a blank behind {}, or // in front of the line.",
                                 line.key->name));
            } else {
                checkTwice(line, seen);
                checkValue(line);
            }
        }
    }

    void checkWhatIsNeeded() {
        need("NAME", "name-missing", "Users see no name of this application.",
             "Add a line NAME with the name that users see.");
        need("EXTENSION", "extension-missing",
             "It is not said which files the application exchanges.",
             "Add a line EXTENSION, for example EXTENSION \".vek\".");
        need("EDIT_COMMAND", "command-missing", "EDIT_COMMAND is missing: nothing can be edited.",
             "Add a line EDIT_COMMAND with the file to run.");
        need("INIT_COMMAND", "command-missing",
             "INIT_COMMAND is missing: the bridge cannot be installed into the application.",
             "Add a line INIT_COMMAND with the file to run.");
        checkExtension();
    }

private:
    void checkExtension() {
        const std::string extension = m_descriptor.text("EXTENSION");
        if (extension.empty() || m_descriptor.values.at("EXTENSION").isFaulty) return;
        if (isExtension(extension)) return;
        const int line = m_descriptor.lineOf("EXTENSION");
        if (isExtension("." + extension)) {
            find("extension-without-dot", line,
                 fmt::format("\"{}\" is put behind the names of files as it is.", extension),
                 fmt::format("Write EXTENSION \".{}\".", extension));
            return;
        }
        const std::string meant = extensionIn(extension);
        find("odd-extension", line,
             fmt::format("\"{}\" is put behind the names of files, and no program takes such files "
                         "for its own.",
                         extension),
             meant.empty() ? "Write a dot and letters or digits behind it, of one kind of file "
                             "alone, for example EXTENSION \".vek\"."
                           : fmt::format("Write EXTENSION \"{}\".", meant));
    }

    void find(const char* code, int line, const std::string& what, const std::string& advice) {
        m_findings.add(code, m_path, line, what, advice);
    }

    void checkNoKey(const DescriptorLine& line) {
        if (line.word.empty()) return;
        if (line.nearKeys.empty()) {
            find("unknown-key", line.number,
                 fmt::format("\"{}\" is no key, and the line is passed over.", line.word),
                 "Take the line away, or put // in front of it if it is a comment.");
            return;
        }
        const std::string meant = orList(line.nearKeys);
        if (line.oddQuotes != OddQuotes::None) {
            const bool isBlank = line.oddQuotes == OddQuotes::Blank;
            find("misspelt-key", line.number,
                 fmt::format("\"{}\" is no key with {}, and the line is passed over.", line.word,
                             isBlank ? "a no-break space in front of it" : "quotes around it"),
                 fmt::format("Write {} {}.", meant,
                             isBlank ? "at the beginning of the line" : "without quotes"));
            return;
        }
        find("misspelt-key", line.number,
             fmt::format("\"{}\" is no key, and the line is passed over; {} is probably meant.",
                         line.word, meant),
             fmt::format("Write {}.", meant));
    }

    void checkTwice(const DescriptorLine& line, std::map<std::string, int>& seen) {
        const auto [before, isFirst] = seen.emplace(line.key->name, line.number);
        if (isFirst) return;
        find("duplicate-key", line.number,
             fmt::format("{} stands in line {} already; the last line counts.", line.key->name,
                         before->second),
             "Take one of the two lines away.");
    }

    void checkValue(const DescriptorLine& line) {
        const bool isSwitch = line.key->kind == Kind::Switch;
        if (!line.secondKey.empty()) {
            find("two-keys", line.number,
                 fmt::format("{} stands on the line of {} and is read as a part of its value.",
                             line.secondKey, line.key->name),
                 fmt::format("Put {} on a line of its own.", line.secondKey));
        } else if (line.oddQuotes != OddQuotes::None) {
            findOddQuotes(line);
        } else if (line.rawValue.empty()) {
            if (isSwitch && line.hasValue) return;  // a switch alone on its line is on
            find("empty-value", line.number, fmt::format("{} has no value.", line.key->name),
                 fmt::format("Write its value behind {}, or take the line away.", line.key->name));
        } else if (isSwitch) {
            const std::string& value = line.rawValue;
            if (isPlainlyOn(value) || Parser::paramToBoolOrDefault(value.c_str()) >= 0) return;
            find("unclear-switch", line.number,
                 fmt::format("{} is on, since \"{}\" is none of No, 0, False and #f.",
                             line.key->name, line.rawValue),
                 "Write TRUE or FALSE, without quotes and with nothing behind it.");
        } else if (line.key->kind == Kind::Version) {
            if (Parser::paramToFloat(line.rawValue.c_str()) == 1.0f) return;
            find("unknown-version", line.number,
                 fmt::format("There is no version \"{}\" of descriptors.", line.rawValue),
                 "Write VEK_VERSION 1.");
        } else if (line.hasUnpairedQuote()) {
            find("unpaired-quote", line.number,
                 fmt::format("A double quote in the value of {} has no partner.", line.key->name),
                 line.key->kind == Kind::Command
                     ? fmt::format("Write {0} \"file\", or {0} \"file\"argument\"\".",
                                   line.key->name)
                     : "Put the value between two double quotes, or take the one away.");
        }
    }

    void findOddQuotes(const DescriptorLine& line) {
        const bool isBlank = line.oddQuotes == OddQuotes::Blank;
        const std::string& key = line.key->name;
        const std::string text = withoutAnyQuotes(line.rawValue);
        const bool isClean = oddQuotesOf("\"" + text + "\"", true) == OddQuotes::None;
        const std::string quoted = isClean ? "\"" + text + "\"" : "and the value";
        find("odd-quotes", line.number,
             fmt::format(isBlank ? "A no-break space in the value of {} is taken for a letter."
                                 : "The quotes of {} are none that the bridge knows, and become a "
                                   "part of the value.",
                         key),
             line.key->kind == Kind::Switch
                 ? fmt::format("Write {} TRUE or {} FALSE, {}.", key, key,
                               isBlank ? "with an ordinary blank" : "without quotes")
                 : fmt::format("Write {} {}, with {}.", key, quoted,
                               isBlank ? "ordinary blanks" : "straight double quotes"));
    }

    // Where a key stands without a value, that is what is found.
    void need(const std::string& key, const char* code, const char* what, const char* advice) {
        const bool isEmpty = m_descriptor.lineOf(key) > 0 &&
                             !m_descriptor.values.at(key).raw.empty() &&
                             m_descriptor.text(key).empty();
        if (!m_descriptor.means(key) || isEmpty) {
            find(code, m_descriptor.lineOf(key), what, advice);
        }
    }

    Findings& m_findings;
    const std::string& m_path;
    const Descriptor& m_descriptor;
};

}  // namespace

void checkDescriptor(Findings& findings, const std::string& path, const std::string& text,
                     CheckedApp& app) {
    const Descriptor descriptor = readDescriptor(text);
    if (descriptor.lines.empty()) {
        findings.add("descriptor-empty", path, 0, "The descriptor says nothing.",
                     "Write at least NAME, EXTENSION, INIT_COMMAND and EDIT_COMMAND into it.");
        return;
    }
    app.name = descriptor.text("NAME");
    app.extension = descriptor.text("EXTENSION");
    for (const char* key : {"LOCATE_COMMAND", "INIT_COMMAND", "EDIT_COMMAND"}) {
        const std::string command = descriptor.text(key);
        app.files.push_back(command.substr(0, command.find('"')));
    }
    DescriptorCheck check(findings, path, descriptor);
    check.checkLines();
    check.checkWhatIsNeeded();
    // What they do together would change once a mistake in one of them is mended.
    if (descriptor.hasClearSwitches()) checkSwitches(findings, path, descriptor);
    checkCommands(findings, path, path.substr(0, path.rfind('/')), descriptor);
}
