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
