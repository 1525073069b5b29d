#pragma once

#include <string>
#include <vector>

// How an export uses one of its two blocks; see exports/exports.def.h.
enum class BlockKind {
    NONE,
    IN_TEXT,
    IN_INT,
    IN_BOOL,
    IN_FLOAT,
    OUT_TEXT,
    OUT_SIZED_TEXT,
    OUT_INT,
    OUT_BOOL,
    OUT_FLOAT,
    OUT_IO_PREFS,
};

struct ExportEntry {
    std::string name;
    std::string group;
    std::string text;   // what the text means; empty where it is ignored
    std::string value;  // likewise the number
    BlockKind block1;
    BlockKind block2;
    std::string result;
};

const std::vector<ExportEntry>& exportTable();
// The export with this name, or null.
const ExportEntry* findExport(const std::string& name);
// The listed name that differs least from this one.
std::string nearestExport(const std::string& name);

const char* blockKindName(BlockKind kind);
bool isInput(BlockKind kind);
bool isOutput(BlockKind kind);
// The names of the switches that are set in an application's preference bits, by their bits' order.
std::vector<std::string> switchNames(unsigned int switches);
