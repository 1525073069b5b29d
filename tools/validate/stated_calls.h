#pragma once

#include <vector>

#include "tools/vek/export_table.h"

// Which results an export may ever have.
enum class Results {
    Zero,
    ZeroOrOne,
    ZeroOrMinusOne,
    Count,  // 0 or a whole number above it
    Index,  // -1 or a count
};

// One ordinary call of an export in the tree of tree.h, and the result that is stated for it.
struct StatedCall {
    const char* name;
    const char* text;  // the arguments that the export uses; null or 0 for the others
    double value;
    const char* in1;  // what a block in holds; a number is given as its text
    const char* in2;
    Results results;
    float ordinary;  // the applications were read, then the object list, then this call is made
    float again;     // the same call made once more
    float first;     // before any other call
    float nulls;     // with every pointer null
    float empties;   // with every text empty
    float missing;   // without the tree
    float readOnly;  // in a tree that may be read only
    float full;      // on a full disk
};

// One for each export, in the order of the list of exports.
const std::vector<StatedCall>& statedCalls();
const StatedCall& statedCall(const char* name);  // name: of the list of exports

// How the list of exports says that it uses its arguments.
const ExportEntry& entryOf(const StatedCall& call);

bool isPossible(Results results, float result);
