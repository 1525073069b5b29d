// Whatever bytes as a configuration file: dispatched, looked up in and rewritten, each held against
// a slow way to do the same. The input's first line is the key, the second one the value to write,
// the rest is the file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "config/bx_generic_config_file_parser.h"
#include "fuzz/support.h"

namespace {

using Parser = BXGenericConfigFileParser;

const char kBreaks[] = "\r\n";

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string upper(std::string text) {
    for (char& c : text) c = upper(c);
    return text;
}

std::string trimmed(const std::string& text, const char* front, const char* back) {
    const std::size_t begin = text.find_first_not_of(front);
    const std::size_t end = text.find_last_not_of(back);
    if (begin == text.npos || end == text.npos || begin > end) return "";
    return text.substr(begin, end + 1 - begin);
}

// The lines, each with its breaks.
std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find_first_not_of(kBreaks, text.find_first_of(kBreaks, at));
        lines.push_back(text.substr(at, std::min(end, text.size()) - at));
        at = std::min(end, text.size());
    }
    return lines;
}

// ---- Looking up and rewriting -------------------------------------------------------------------

bool splits(const std::string& line, std::string& key, std::string& value) {
    const std::string content = trimmed(line, " \t", " \t\r\n");
    const std::size_t equals = std::min(content.find('='), content.size());
    key = trimmed(content.substr(0, equals), "", " \t").c_str();
    value = equals == content.size() ? "" : trimmed(content.substr(equals + 1), " \t", "").c_str();
    return !key.empty();
}

bool hasKey(const std::string& line, const std::string& wanted) {
    std::string key, value;
    return splits(line, key, value) && upper(key) == upper(wanted);
}

bool slowFind(const std::string& text, const std::string& wanted, std::string& value) {
    for (const std::string& line : linesOf(text)) {
        if (!hasKey(line, wanted)) continue;
        std::string key;
        splits(line, key, value);
        const bool isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
        if (isQuoted) value = value.substr(1, value.size() - 2);
        return true;
    }
    return false;
}

void findAndReplace(const FuzzFile& file, const std::string& text, const std::string& key,
                    const std::string& value) {
    std::string expected;
    const bool isThere = slowFind(text, key, expected);
    bool found = !isThere;
    const BXString came = Parser::findTokenInConfigFile(file.path(), key.c_str(), &found);
    expect(found == isThere && expected == came.c_str());
    expect(file.read() == text);

    std::string rewritten = upper(key) + " = " + value + "\n";
    for (const std::string& line : linesOf(text)) {
        if (!hasKey(line, key)) rewritten += line;
    }
    found = !isThere;
    expect(Parser::replaceTokenInConfigFile(file.path(), key.c_str(), value.c_str(), &found));
    expect(found == isThere && file.read() == rewritten);
}

// ---- Dispatching --------------------------------------------------------------------------------

struct Call {
    int token;
    std::string parameter;
    bool operator==(const Call& other) const {
        return token == other.token && parameter == other.parameter;
    }
};
using Calls = std::vector<Call>;

template <int token>
void note(const char* parameter, void* calls) {
    static_cast<Calls*>(calls)->push_back({token, parameter});
}

// Tried from the last to the first.
std::vector<std::string> tokensWith(const std::string& key) {
    return {"FLIP", "FLIP_X", key};
}

void offer(const std::string& line, const std::vector<std::string>& tokens, Calls& calls) {
    for (std::size_t i = tokens.size(); i-- > 0;) {
        if (upper(line.substr(0, tokens[i].size())) != upper(tokens[i])) continue;
        const std::string rest = line.substr(tokens[i].size());
        const std::string parameter = trimmed(rest, " \t:=", "");
        if (rest.empty() || !parameter.empty()) calls.push_back({static_cast<int>(i), parameter});
        return;
    }
}

Calls slowDispatch(const std::string& text, const std::vector<std::string>& tokens) {
    Calls calls;
    for (std::size_t at = 0; at != text.npos;) {
        const std::size_t end = std::min(text.find_first_of(kBreaks, at), text.size());
        offer(trimmed(text.substr(at, end - at), " \t", " \t"), tokens, calls);
        at = text.find_first_not_of(kBreaks, end);
    }
    return calls;
}

void dispatch(const FuzzFile& file, const std::string& text, const std::string& key) {
    const std::vector<std::string> tokens = tokensWith(key);
    Parser parser;
    parser.addToken(tokens[0].c_str(), note<0>);
    parser.addToken(tokens[1].c_str(), note<1>);
    parser.addToken(tokens[2].c_str(), note<2>);
    Calls calls;
    expect(parser.parseFile(file.path(), &calls) != text.empty());
    if (text.empty()) return expect(calls.empty());
    // As text, the file ends at its first NUL.
    expect(calls == slowDispatch(text.c_str(), tokens));
    for (const Call& call : calls) {
        Parser::paramToInt(call.parameter.c_str());
        const int isOn = Parser::paramToBoolOrDefault(call.parameter.c_str());
        expect(isOn == -1 || Parser::paramToBool(call.parameter.c_str()) == (isOn == 1));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFile file;
    FuzzInput input(data, size);
    const std::string key = input.line().c_str();
    const std::string value = input.line().c_str();
    file.write(input.rest());
    dispatch(file, input.rest(), key);
    findAndReplace(file, input.rest(), key, value);
    return 0;
}
