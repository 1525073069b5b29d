#include "tools/vek/export_table.h"

#include <algorithm>
#include <numeric>

namespace {

// The least number of characters to insert, remove or exchange to make one text of the other.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t exchanged = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

const char* const kSwitches[] = {
    "IMPORT_FLIP_X",       "IMPORT_FLIP_Y",        "IMPORT_FLIP_Z",     "EXPORT_FLIP_X",
    "EXPORT_FLIP_Y",       "EXPORT_FLIP_Z",        "IMPORT_SWITCH_YZ",  "EXPORT_SWITCH_YZ",
    "IMPORT_FLIP_NORMALS", "EXPORT_FLIP_NORMALS",  "IMPORT_POLYGROUPS", "IMPORT_MAT_AS_GROUPS",
    "GROUP_NSIDED_POLYS",  "NORMAL_MAP_FLIP_X",    "NORMAL_MAP_FLIP_Y", "NORMAL_MAP_FLIP_Z",
    "NORMAL_MAP_FLIP_XY",  "NORMAL_MAP_FLIP_VERT", "IMPORT_MFLIP_X",    "IMPORT_MFLIP_Y",
    "IMPORT_MFLIP_Z",      "IMPORT_MSWITCH_YZ",    "EXPORT_MFLIP_X",    "EXPORT_MFLIP_Y",
    "EXPORT_MFLIP_Z",      "EXPORT_MSWITCH_YZ",
};

}  // namespace

const std::vector<ExportEntry>& exportTable() {
    static const std::vector<ExportEntry> table = {
#define X(name, group, textUse, valueUse, kind1, kind2, result) \
    {#name, #group, textUse, valueUse, BlockKind::kind1, BlockKind::kind2, result},
#include "exports/exports.def.h"
#undef X
    };
    return table;
}

const ExportEntry* findExport(const std::string& name) {
    for (const ExportEntry& entry : exportTable()) {
        if (entry.name == name) return &entry;
    }
    return nullptr;
}

std::string nearestExport(const std::string& name) {
    const auto nearer = [&](const ExportEntry& a, const ExportEntry& b) {
        return distance(a.name, name) < distance(b.name, name);
    };
    return std::min_element(exportTable().begin(), exportTable().end(), nearer)->name;
}

const char* blockKindName(BlockKind kind) {
    switch (kind) {
        case BlockKind::IN_TEXT:
            return "text in";
        case BlockKind::IN_INT:
            return "integer in";
        case BlockKind::IN_BOOL:
            return "truth in";
        case BlockKind::IN_FLOAT:
            return "float in";
        case BlockKind::OUT_TEXT:
        case BlockKind::OUT_SIZED_TEXT:
            return "text out";
        case BlockKind::OUT_INT:
            return "integer out";
        case BlockKind::OUT_BOOL:
            return "truth out";
        case BlockKind::OUT_FLOAT:
            return "float out";
        case BlockKind::OUT_IO_PREFS:
            return "switches out";
        case BlockKind::NONE:
            break;
    }
    return "";
}

bool isInput(BlockKind kind) {
    return kind >= BlockKind::IN_TEXT && kind <= BlockKind::IN_FLOAT;
}

bool isOutput(BlockKind kind) {
    return kind >= BlockKind::OUT_TEXT;
}

std::vector<std::string> switchNames(unsigned int switches) {
    std::vector<std::string> names;
    for (unsigned int bit = 0; bit < sizeof kSwitches / sizeof *kSwitches; ++bit) {
        if (switches >> bit & 1) names.emplace_back(kSwitches[bit]);
    }
    return names;
}
