#include "tools/vek/descriptor.h"

#include <algorithm>
#include <cctype>

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

DescriptorLine readLine(const TextLine& line) {
    DescriptorLine read;
    read.number = line.number;
    read.key = keyOf(line.text);
    if (!read.key) {
        if (isComment(line.text)) return read;
        const std::size_t begin = line.text.find_first_not_of("\"");
        if (begin == line.text.npos) return read;
        const std::size_t end = line.text.find_first_of(" \t:=\"", begin);
        read.word = line.text.substr(begin, end == line.text.npos ? end : end - begin);
        read.nearKeys = keysMeantBy(line.text.substr(begin), read.word);
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
    return read;
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
        return line.key ? line.key->name == key : contains(line.nearKeys, key);
    });
}

bool Descriptor::hasClearSwitches() const {
    return std::all_of(lines.begin(), lines.end(), [](const DescriptorLine& line) {
        if (!line.key) return !isSwitch(line.nearKeys);
        if (line.key->kind != Kind::Switch) return true;
        const bool isKnown =
            line.rawValue.empty() || Parser::paramToBoolOrDefault(line.rawValue.c_str()) >= 0;
        return line.hasValue && !line.runsOn && isKnown;
    });
}

Descriptor readDescriptor(const std::string& text) {
    Descriptor descriptor;
    for (const TextLine& textLine : linesOf(text)) {
        const DescriptorLine line = readLine(textLine);
        descriptor.lines.push_back(line);
        if (!line.key || !line.hasValue) continue;
        descriptor.values[line.key->name] = {line.value, line.rawValue, line.number,
                                             line.hasUnpairedQuote()};
        if (line.key->kind != Kind::Switch) continue;
        const bool isOn = Parser::paramToBool(line.rawValue.c_str());
        descriptor.switches =
            isOn ? descriptor.switches | line.key->bit : descriptor.switches & ~line.key->bit;
    }
    return descriptor;
}
