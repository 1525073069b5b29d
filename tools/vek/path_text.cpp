#include "tools/vek/path_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

#include "tools/vek/odd_quotes.h"

namespace {

const std::string kAddress = "file://";

bool isHexDigit(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

// "%20" is a blank in an address.
std::string withoutPercents(const std::string& address) {
    std::string text;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const bool isCode = address[i] == '%' && i + 2 < address.size() &&
                            isHexDigit(address[i + 1]) && isHexDigit(address[i + 2]);
        if (!isCode) {
            text += address[i];
            continue;
        }
        text += static_cast<char>(std::stoi(address.substr(i + 1, 2), nullptr, 16));
        i += 2;
    }
    return text;
}

bool isAddress(const std::string& path) {
    return path.compare(0, kAddress.size(), kAddress) == 0;
}

}  // namespace

std::string withoutVolume(const std::string& path) {
    const std::size_t colon = path.find(':');
    const bool hasVolume = colon < path.find('/') && path.compare(colon, 2, ":/") == 0;
    return hasVolume ? path.substr(colon + 1) : path;
}

std::string plainPath(const std::string& written) {
    std::string path = withoutAnyQuotes(written);
    // A machine's name may stand in front of the root.
    if (isAddress(path))
        path = withoutPercents(path.substr(std::min(path.find('/', kAddress.size()), path.size())));
    std::string plain;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (path[i] == '\\' && i + 1 < path.size()) ++i;
        plain += path[i];
    }
    return plain;
}

bool checkAbsolute(Findings& findings, const std::string& path, const std::string& file, int line,
                   const std::string& whose) {
    if (withoutVolume(path).rfind('/', 0) == 0) return true;
    const std::string plain = plainPath(path);
    const bool isQuoted = plain.rfind('/', 0) == 0 && plain.find_first_of("\"\n") == plain.npos;
    findings.add("relative-path", file, line,
                 fmt::format("{} \"{}\" does not begin at the root.", whose, path),
                 isQuoted ? fmt::format("Write {} and nothing else.", plain)
                 : path[0] == '#'
                     ? "Take the line away if it is a comment: there are none in this file."
                     : "Write the whole path, from its first '/' on.");
    return false;
}

void findVolume(Findings& findings, const std::string& path, const std::string& file, int line) {
    const std::string rest = isAddress(path) ? plainPath(path) : withoutVolume(path);
    if (rest == path) return;
    // To the bridge any other address is a path that is not there, and found as that.
    const bool isOtherAddress =
        isAddress(path) ? rest != path.substr(kAddress.size()) : rest.compare(0, 2, "//") == 0;
    if (isOtherAddress) return;
    findings.add("volume-prefix", file, line,
                 fmt::format("The bridge takes off {} in front of \"{}\"; an application that "
                             "reads the path itself may not.",
                             isAddress(path) ? "what stands" : "the volume", rest),
                 fmt::format("Write {}", rest));
}
