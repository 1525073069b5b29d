// Whatever bytes as an application's descriptor, held against a slow reader of the same keys.

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "bridge/bx_vek_app_parser.h"
#include "fuzz/support.h"

namespace {

const std::vector<std::string> kSwitches = {
    "IMPORT_FLIP_X",       "IMPORT_FLIP_Y",        "IMPORT_FLIP_Z",     "EXPORT_FLIP_X",
    "EXPORT_FLIP_Y",       "EXPORT_FLIP_Z",        "IMPORT_SWITCH_YZ",  "EXPORT_SWITCH_YZ",
    "IMPORT_FLIP_NORMALS", "EXPORT_FLIP_NORMALS",  "IMPORT_POLYGROUPS", "IMPORT_MAT_AS_GROUPS",
    "GROUP_NSIDED_POLYS",  "NORMAL_MAP_FLIP_X",    "NORMAL_MAP_FLIP_Y", "NORMAL_MAP_FLIP_Z",
    "NORMAL_MAP_FLIP_XY",  "NORMAL_MAP_FLIP_VERT", "IMPORT_MFLIP_X",    "IMPORT_MFLIP_Y",
    "IMPORT_MFLIP_Z",      "IMPORT_MSWITCH_YZ",    "EXPORT_MFLIP_X",    "EXPORT_MFLIP_Y",
    "EXPORT_MFLIP_Z",      "EXPORT_MSWITCH_YZ"};
const std::vector<std::string> kTexts = {"NAME",           "EXTENSION",    "TAMPLATE",
                                         "LOCATE_COMMAND", "INIT_COMMAND", "EDIT_COMMAND"};
const char kVersion[] = "VEK_VERSION";

struct Record {
    std::map<std::string, std::string> texts;
    int version = 1;
    unsigned int switches = 0;
};

std::string upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

std::string unquoted(std::string text) {
    if (text.empty() || text.front() != '"') return text;
    const bool isClosed = text.back() == '"';
    return text.substr(1, isClosed && text.size() > 1 ? text.size() - 2 : text.npos);
}

int versionOf(const std::string& text) {
    float number = 0;
    if (std::sscanf(text.c_str(), "%f", &number) != 1 || number != number) return 0;
    if (number >= 2147483648.0f) return INT_MAX;
    return number < -2147483648.0f ? INT_MIN : static_cast<int>(number);
}

void take(Record& record, const std::string& key, const std::string& value) {
    if (key == kVersion) record.version = versionOf(value);
    if (std::count(kTexts.begin(), kTexts.end(), key)) record.texts[key] = unquoted(value);
    const auto found = std::find(kSwitches.begin(), kSwitches.end(), key);
    if (found == kSwitches.end()) return;
    const unsigned int bit = 1u << (found - kSwitches.begin());
    const std::string word = upper(value);
    const bool isOff = word == "NO" || word == "0" || word == "FALSE" || word == "#F";
    record.switches = isOff ? record.switches & ~bit : record.switches | bit;
}

// The longest key that the line begins with.
std::string keyOf(const std::string& line) {
    std::vector<std::string> keys = kSwitches;
    keys.insert(keys.end(), kTexts.begin(), kTexts.end());
    keys.push_back(kVersion);
    std::string longest;
    for (const std::string& key : keys) {
        if (key.size() > longest.size() && upper(line.substr(0, key.size())) == key) longest = key;
    }
    return longest;
}

Record slowRead(const std::string& text) {
    Record record;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        std::string line = text.substr(at, end - at);
        at = end + 1;
        line.erase(0, line.find_first_not_of(" \t"));
        line.erase(line.find_last_not_of(" \t") + 1);
        const std::string key = keyOf(line);
        if (key.empty()) continue;
        line.erase(0, key.size());
        const bool isAlone = line.empty();
        line.erase(0, line.find_first_not_of(" \t:="));
        if (isAlone || !line.empty()) take(record, key, line);
    }
    return record;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFile file;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    file.write(bytes);
    BXVekAppParser app;
    expect(app.parseFile(file.path()) != bytes.empty());
    // As text, the file ends at its first NUL.
    Record record = slowRead(bytes.c_str());
    expect(app.version == record.version && app.ioPrefs == record.switches);
    expect(record.texts["NAME"] == app.name.c_str());
    expect(record.texts["EXTENSION"] == app.ext.c_str());
    expect(record.texts["TAMPLATE"] == app.tamplate.c_str());
    expect(record.texts["LOCATE_COMMAND"] == app.locateCommand.c_str());
    expect(record.texts["INIT_COMMAND"] == app.initCommand.c_str());
    expect(record.texts["EDIT_COMMAND"] == app.editCommand.c_str());
    return 0;
}
