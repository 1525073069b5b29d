#include "tools/vek/descriptor.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "bridge/bx_vek_app.h"
#include "config/bx_generic_config_file_parser.h"
#include "foundation/bx_string.h"
#include "tools/vek/near_words.h"
#include "tools/vek/shared_tree.h"
#include "tools/vek/tree_look.h"

namespace {

using Kind = DescriptorKey::Kind;
using Parser = BXGenericConfigFileParser;

const char kSeparators[] = " \t:=";

bool isWordLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

bool beginsWith(const std::string& text, const std::string& key) {
    return text.size() >= key.size() &&
           BXString::cmpNoCase(text.c_str(), key.c_str(), static_cast<int>(key.size())) == 0;
}

// Nothing has to separate a key from what follows. The longest one takes the line.
const DescriptorKey* keyOf(const std::string& line) {
    const DescriptorKey* found = nullptr;
    for (const DescriptorKey& key : descriptorKeys()) {
        if (beginsWith(line, key.name) && (!found || key.name.size() > found->name.size())) {
            found = &key;
        }
    }
    return found;
}

// There is no comment syntax; what begins with a sign is taken for one.
bool isComment(const std::string& line) {
    const auto first = static_cast<unsigned char>(line[0]);
    return std::ispunct(first) && first != '"' && first != '_';
}

// A key whose underscores were written as blanks or hyphens. What follows it begins another word.
const DescriptorKey* keyWithOtherJoints(const std::string& line) {
    std::string joined;
    std::string words;  // the same with the joints as blanks
    for (const char c : line) {
        if (c != ' ' && c != '\t' && c != '-') {
            joined += c;
            words += c;
        } else if (!joined.empty() && joined.back() == '_') {
            words.back() = ' ';
        } else if (!joined.empty()) {
            joined += '_';
            words += ' ';
        }
    }
    const DescriptorKey* const key = keyOf(joined);
    const bool endsInAWord =
        key && key->name.size() < words.size() && isWordLetter(words[key->name.size()]);
    return endsInAWord ? nullptr : key;
}

std::vector<std::string> keysMeantBy(const std::string& line, const std::string& word) {
    if (const DescriptorKey* const key = keyWithOtherJoints(line)) return {key->name};
    std::vector<std::string> names;
    for (const DescriptorKey& key : descriptorKeys()) names.push_back(key.name);
    return nearWords(word, names);
}

bool isSwitch(const std::vector<std::string>& names) {
    return std::any_of(descriptorKeys().begin(), descriptorKeys().end(),
                       [&](const DescriptorKey& key) {
                           return key.kind == Kind::Switch && contains(names, key.name);
                       });
}

bool isOdd(const std::string& text) {
    return std::count(text.begin(), text.end(), '"') % 2 != 0;
}

// The word that stands where a key should, and what it may be meant to be.
void readNoKey(const std::string& line, DescriptorLine& read) {
    const std::string text = withoutAnyQuotes(line);
    if (text.empty()) return;
    read.word = withoutAnyQuotes(text.substr(0, text.find_first_of(" \t:=\"")));
    read.nearKeys = keysMeantBy(text, read.word);
    if (line.compare(0, read.word.size(), read.word) == 0) return;
    const bool isBlank = oddQuotesOf(line, false) == OddQuotes::Blank;
    read.oddQuotes = isBlank ? OddQuotes::Blank : OddQuotes::Quotes;
}

bool isJoint(const std::string& text, std::size_t at, const char* joints) {
    return at >= text.size() || std::strchr(joints, text[at]);
}

// A key in capitals as a word of its own, outside of quotes, and no comment before it. What is an
// ordinary word, too, has to follow a text in quotes.
std::string keyBehind(const std::string& value) {
    const std::string text = value.substr(0, std::min(value.find("//"), value.find('#')));
    for (const DescriptorKey& key : descriptorKeys()) {
        const std::size_t at = text.find(key.name, 1);
        if (at == text.npos || !isJoint(text, at - 1, " \t,;")) continue;
        if (!isJoint(text, at + key.name.size(), kSeparators)) continue;
        const bool isWord = key.name.find('_') == key.name.npos;
        const std::size_t before = text.find_last_not_of(" \t,;", at - 1);
        const bool isBehindQuote = before != text.npos && text[before] == '"';
        if (isWord && !isBehindQuote) continue;
        if (!isOdd(text.substr(0, at))) return key.name;
    }
    return "";
}

OddQuotes oddQuotesBehind(const DescriptorKey& key, const std::string& value) {
    if (key.kind == Kind::Switch && isPlainlyOn(value)) return OddQuotes::None;
    return oddQuotesOf(value, key.kind == Kind::Command || key.name == "EXTENSION");
}

DescriptorLine readLine(const TextLine& line) {
    DescriptorLine read;
    read.number = line.number;
    read.key = keyOf(line.text);
    if (!read.key) {
        if (isComment(line.text)) return read;
        readNoKey(line.text, read);
        return read;
    }
    const std::string rest = line.text.substr(read.key->name.size());
    std::size_t wordEnd = 0;
    while (wordEnd < rest.size() && isWordLetter(rest[wordEnd])) ++wordEnd;
    read.word = line.text.substr(0, read.key->name.size() + wordEnd);
    read.runsOn = wordEnd > 0;
    const std::size_t value = rest.find_first_not_of(kSeparators);
    read.hasValue = rest.empty() || value != rest.npos;
    if (value != rest.npos) read.rawValue = rest.substr(value);
    read.value = Parser::paramToString(read.rawValue.c_str()).c_str();
    read.secondKey = keyBehind(read.rawValue);
    read.oddQuotes = oddQuotesBehind(*read.key, read.rawValue);
    return read;
}

// A text that is there already is not meant by another line. Of switches a descriptor may list all,
// and then one of them once more.
void leaveOutPresentKeys(Descriptor& descriptor) {
    for (DescriptorLine& line : descriptor.lines) {
        std::vector<std::string>& names = line.nearKeys;
        names.erase(std::remove_if(names.begin(), names.end(),
                                   [&](const std::string& name) {
                                       return descriptor.values.count(name) > 0 &&
                                              !isSwitch({name});
                                   }),
                    names.end());
    }
}

}  // namespace

const std::vector<DescriptorKey>& descriptorKeys() {
    static const std::vector<DescriptorKey> keys = {
        {"NAME", Kind::Text, 0},
        {"VEK_VERSION", Kind::Version, 0},
        {"EXTENSION", Kind::Text, 0},
        {"TAMPLATE", Kind::Text, 0},
        {"LOCATE_COMMAND", Kind::Command, 0},
        {"INIT_COMMAND", Kind::Command, 0},
        {"EDIT_COMMAND", Kind::Command, 0},
        {"IMPORT_FLIP_X", Kind::Switch, BXVekApp::IMPORT_FLIP_X},
        {"IMPORT_FLIP_Y", Kind::Switch, BXVekApp::IMPORT_FLIP_Y},
        {"IMPORT_FLIP_Z", Kind::Switch, BXVekApp::IMPORT_FLIP_Z},
        {"EXPORT_FLIP_X", Kind::Switch, BXVekApp::EXPORT_FLIP_X},
        {"EXPORT_FLIP_Y", Kind::Switch, BXVekApp::EXPORT_FLIP_Y},
        {"EXPORT_FLIP_Z", Kind::Switch, BXVekApp::EXPORT_FLIP_Z},
        {"IMPORT_SWITCH_YZ", Kind::Switch, BXVekApp::IMPORT_SWITCH_YZ},
        {"EXPORT_SWITCH_YZ", Kind::Switch, BXVekApp::EXPORT_SWITCH_YZ},
        {"IMPORT_FLIP_NORMALS", Kind::Switch, BXVekApp::IMPORT_FLIP_NORMALS},
        {"EXPORT_FLIP_NORMALS", Kind::Switch, BXVekApp::EXPORT_FLIP_NORMALS},
        {"IMPORT_POLYGROUPS", Kind::Switch, BXVekApp::IMPORT_POLYGROUPS},
        {"IMPORT_MAT_AS_GROUPS", Kind::Switch, BXVekApp::IMPORT_MAT_AS_GROUPS},
        {"GROUP_NSIDED_POLYS", Kind::Switch, BXVekApp::GROUP_NSIDED_POLYS},
        {"NORMAL_MAP_FLIP_X", Kind::Switch, BXVekApp::NORMAL_MAP_FLIP_X},
        {"NORMAL_MAP_FLIP_Y", Kind::Switch, BXVekApp::NORMAL_MAP_FLIP_Y},
        {"NORMAL_MAP_FLIP_Z", Kind::Switch, BXVekApp::NORMAL_MAP_FLIP_Z},
        {"NORMAL_MAP_FLIP_XY", Kind::Switch, BXVekApp::NORMAL_MAP_FLIP_XY},
        {"NORMAL_MAP_FLIP_VERT", Kind::Switch, BXVekApp::NORMAL_MAP_FLIP_VERT},
        {"IMPORT_MFLIP_X", Kind::Switch, BXVekApp::IMPORT_MFLIP_X},
        {"IMPORT_MFLIP_Y", Kind::Switch, BXVekApp::IMPORT_MFLIP_Y},
        {"IMPORT_MFLIP_Z", Kind::Switch, BXVekApp::IMPORT_MFLIP_Z},
        {"IMPORT_MSWITCH_YZ", Kind::Switch, BXVekApp::IMPORT_MSWITCH_YZ},
        {"EXPORT_MFLIP_X", Kind::Switch, BXVekApp::EXPORT_MFLIP_X},
        {"EXPORT_MFLIP_Y", Kind::Switch, BXVekApp::EXPORT_MFLIP_Y},
        {"EXPORT_MFLIP_Z", Kind::Switch, BXVekApp::EXPORT_MFLIP_Z},
        {"EXPORT_MSWITCH_YZ", Kind::Switch, BXVekApp::EXPORT_MSWITCH_YZ},
    };
    return keys;
}

bool DescriptorLine::hasUnpairedQuote() const {
    return isOdd(rawValue) || isOdd(value);
}

bool DescriptorLine::isFaulty() const {
    return runsOn || hasUnpairedQuote() || !secondKey.empty() || oddQuotes != OddQuotes::None;
}

std::string Descriptor::text(const std::string& key) const {
    const auto value = values.find(key);
    return value == values.end() ? "" : value->second.text;
}

int Descriptor::lineOf(const std::string& key) const {
    const auto value = values.find(key);
    return value == values.end() ? 0 : value->second.line;
}

bool Descriptor::means(const std::string& key) const {
    return std::any_of(lines.begin(), lines.end(), [&](const DescriptorLine& line) {
        if (line.secondKey == key) return true;
        return line.key ? line.key->name == key : contains(line.nearKeys, key);
    });
}

bool Descriptor::hasClearSwitches() const {
    return std::all_of(lines.begin(), lines.end(), [](const DescriptorLine& line) {
        if (!line.key) return !isSwitch(line.nearKeys);
        if (line.key->kind != Kind::Switch) return true;
        const bool isKnown = line.rawValue.empty() || isPlainlyOn(line.rawValue) ||
                             Parser::paramToBoolOrDefault(line.rawValue.c_str()) >= 0;
        return line.hasValue && !line.runsOn && isKnown;
    });
}

bool isPlainlyOn(const std::string& value) {
    static const std::vector<std::string> words = {"ON", "Y", "T"};
    const std::string word = withoutAnyQuotes(value);
    return Parser::paramToBoolOrDefault(word.c_str()) == 1 || contains(words, inUpperCase(word));
}

Descriptor readDescriptor(const std::string& text) {
    Descriptor descriptor;
    for (const TextLine& textLine : linesOf(text)) {
        const DescriptorLine line = readLine(textLine);
        descriptor.lines.push_back(line);
        if (!line.key || !line.hasValue) continue;
        descriptor.values[line.key->name] = {line.value, line.rawValue, line.number,
                                             line.isFaulty()};
        if (line.key->kind != Kind::Switch) continue;
        const bool isOn = Parser::paramToBool(line.rawValue.c_str());
        descriptor.switches =
            isOn ? descriptor.switches | line.key->bit : descriptor.switches & ~line.key->bit;
    }
    leaveOutPresentKeys(descriptor);
    return descriptor;
}
