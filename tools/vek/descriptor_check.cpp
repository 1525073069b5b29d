#include <fmt/format.h>

#include <map>

#include "config/bx_generic_config_file_parser.h"
#include "tools/vek/near_words.h"
#include "tools/vek/tree_checks.h"

namespace {

using Kind = DescriptorKey::Kind;
using Parser = BXGenericConfigFileParser;

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
        checkExtension(m_descriptor.text("EXTENSION"));
    }

private:
    void checkExtension(const std::string& extension) {
        if (extension.empty()) return;
        const int line = m_descriptor.lineOf("EXTENSION");
        if (extension.back() == '.' || extension.find_first_of(" \t/:") != extension.npos) {
            find("odd-extension", line,
                 fmt::format("\"{}\" is put behind the names of files, and no program takes such "
                             "files for its own.",
                             extension),
                 "Write a dot and the letters behind it, for example EXTENSION \".vek\".");
        } else if (extension[0] != '.') {
            find("extension-without-dot", line,
                 fmt::format("\"{}\" is put behind the names of files as it is.", extension),
                 fmt::format("Write EXTENSION \".{}\".", extension));
        }
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
        if (line.rawValue.empty()) {
            if (isSwitch && line.hasValue) return;  // a switch alone on its line is on
            find("empty-value", line.number, fmt::format("{} has no value.", line.key->name),
                 fmt::format("Write its value behind {}, or take the line away.", line.key->name));
        } else if (isSwitch) {
            if (Parser::paramToBoolOrDefault(line.rawValue.c_str()) >= 0) return;
            find("unclear-switch", line.number,
                 fmt::format("{} is on, since \"{}\" is none of No, 0, False and #f.",
                             line.key->name, line.rawValue),
                 "Write TRUE or FALSE, without quotes and with nothing behind it.");
        } else if (line.key->kind == Kind::Version) {
            if (Parser::paramToInt(line.rawValue.c_str()) == 1) return;
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
    DescriptorCheck check(findings, path, descriptor);
    check.checkLines();
    check.checkWhatIsNeeded();
    // What they do together would change once a mistake in one of them is mended.
    if (descriptor.hasClearSwitches()) checkSwitches(findings, path, descriptor);
    checkCommands(findings, path, path.substr(0, path.rfind('/')), descriptor);
}
