#include "tools/vek/shell_signs.h"

#include <glob.h>

#include <cctype>
#include <cstring>

namespace {

bool isOneOf(const char* signs, char c) {
    return c != '\0' && std::strchr(signs, c);
}

// A dollar sign alone stands for itself.
bool beginsExpansion(char next) {
    return std::isalnum(static_cast<unsigned char>(next)) || isOneOf("_@*#?$!({-", next);
}

bool breaks(char c, char next, ShellForm form) {
    if (c == '"' || c == '`') return true;
    if (c == '$') return beginsExpansion(next);
    if (form == ShellForm::Quoted) return c == '\\' && isOneOf("$`\"\\\n", next);
    if (c == '\\') return form == ShellForm::Administrator || next != '\0';
    if (c == '\'') return true;
    return form == ShellForm::Bare && isOneOf(" \t\n&;()<>|", c);
}

// A pattern that fits the file alone, or nothing, does no harm.
bool isPatternOfOthers(const std::string& path) {
    glob_t found = {};
    const bool fits = glob(path.c_str(), GLOB_NOSORT, nullptr, &found) == 0;
    const bool isOther = fits && (found.gl_pathc != 1 || path != found.gl_pathv[0]);
    globfree(&found);
    return isOther;
}

// Bash makes several words of a pair of braces with a comma or two dots in it; other shells do not.
bool isBraceList(const std::string& path) {
    const std::size_t open = path.find('{');
    const std::size_t close = path.rfind('}');
    if (open == path.npos || close == path.npos || close < open) return false;
    const std::string inside = path.substr(open, close - open);
    return inside.find(',') != inside.npos || inside.find("..") != inside.npos;
}

// What stands in a line for a shell between `begin` and `end`, read as a shell reads it.
class ShellLine {
public:
    ShellLine(const std::string& begin, const std::string& argument, const std::string& end)
        : m_line(begin + argument + end),
          m_from(begin.size()),
          m_to(begin.size() + argument.size()) {}

    // `ends` are the signs outside of quotes that the argument must not have.
    std::string signsThatBreak(const char* ends) {
        for (std::size_t i = 0; i < m_line.size(); ++i) {
            const char c = m_line[i];
            if (m_quote == '\'') {
                if (c == '\'') m_quote = '\0';
            } else if (c == '\\') {
                ++i;
            } else if (c == '`') {
                m_isInCommand = !m_isInCommand;
            } else if (m_quote == c) {
                m_quote = '\0';
            } else if (m_quote == '\0') {
                readOutside(c, i >= m_from && i < m_to && isOneOf(ends, c));
            }
        }
        if (m_quote != '\0') addOddQuote();
        if (m_isInCommand) m_signs += '`';
        return m_signs;
    }

private:
    void readOutside(char c, bool isEnd) {
        if (c == '\'' || c == '"') m_quote = c;
        if (isEnd && !has(c)) m_signs += c;
    }
    // The line has one more quote than it should: the argument's apostrophe, or one that a
    // backslash takes away.
    void addOddQuote() {
        const std::size_t odd = m_line.find_first_of("'\\", m_from);
        const char sign = odd < m_to ? m_line[odd] : m_quote;
        if (!has(sign)) m_signs += sign;
    }
    bool has(char c) const { return m_signs.find(c) != m_signs.npos; }

    const std::string m_line;
    const std::size_t m_from;
    const std::size_t m_to;
    char m_quote = '\0';
    bool m_isInCommand = false;
    std::string m_signs;
};

}  // namespace

std::string signsThatBreak(const std::string& path, ShellForm form) {
    const bool isPattern = form == ShellForm::Bare && isPatternOfOthers(path);
    const bool isList = form == ShellForm::Bare && isBraceList(path);
    std::string signs;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char next = i + 1 < path.size() ? path[i + 1] : '\0';
        const bool isFound = breaks(path[i], next, form) ||
                             (isPattern && isOneOf("*?[", path[i])) ||
                             (isList && isOneOf("{}", path[i]));
        if (isFound && signs.find(path[i]) == signs.npos) signs += path[i];
    }
    return signs;
}

std::string signsThatBreakArgument(const std::string& argument, ShellForm form) {
    // What runs a command inside the line is meant.
    const char* const ends = argument.find("$(") == argument.npos ? ";&|<>()" : ";&|<>";
    if (form == ShellForm::Bare) return ShellLine("x '", argument, "'").signsThatBreak(ends);
    if (form == ShellForm::Quoted) {
        return ShellLine("sh \"x\" \"", argument, "\"").signsThatBreak(ends);
    }
    // The text for the password is one word to the outer shell, and the inner one has apostrophes
    // around the argument.
    return ShellLine("osascript -e \"x '", argument, "' y\"").signsThatBreak(" \t;&|<>()'\\");
}
