#pragma once

#include "foundation/bx_string.h"

// What the bridge knows of one target application: its descriptor "Vek_Info.txt" and the name of
// the folder that holds it. Copies are deep.
class BXVekApp {
public:
    // The switches of a descriptor, one bit each in ioPrefs, in the order of their keys. The flips
    // and switches without an M turn exchange files; the M ones, normals, groups and normal maps
    // are the host's scripts' to act on.
    enum IOPref : unsigned int {
        IMPORT_FLIP_X = 0x1,
        IMPORT_FLIP_Y = 0x2,
        IMPORT_FLIP_Z = 0x4,
        EXPORT_FLIP_X = 0x8,
        EXPORT_FLIP_Y = 0x10,
        EXPORT_FLIP_Z = 0x20,
        IMPORT_SWITCH_YZ = 0x40,
        EXPORT_SWITCH_YZ = 0x80,
        IMPORT_FLIP_NORMALS = 0x100,
        EXPORT_FLIP_NORMALS = 0x200,
        IMPORT_POLYGROUPS = 0x400,
        IMPORT_MAT_AS_GROUPS = 0x800,
        GROUP_NSIDED_POLYS = 0x1000,
        NORMAL_MAP_FLIP_X = 0x2000,
        NORMAL_MAP_FLIP_Y = 0x4000,
        NORMAL_MAP_FLIP_Z = 0x8000,
        NORMAL_MAP_FLIP_XY = 0x10000,
        NORMAL_MAP_FLIP_VERT = 0x20000,
        IMPORT_MFLIP_X = 0x40000,
        IMPORT_MFLIP_Y = 0x80000,
        IMPORT_MFLIP_Z = 0x100000,
        IMPORT_MSWITCH_YZ = 0x200000,
        EXPORT_MFLIP_X = 0x400000,
        EXPORT_MFLIP_Y = 0x800000,
        EXPORT_MFLIP_Z = 0x1000000,
        EXPORT_MSWITCH_YZ = 0x2000000,
    };

    // Back to the defaults: empty texts, version 1, no switch.
    void clear();

    BXString id;  // the folder's name; never from the descriptor
    BXString name;
    BXString ext;
    BXString tamplate;  // spelled so for the sake of the scripts that ask for it
    BXString locateCommand;
    BXString initCommand;
    BXString editCommand;
    int version = 1;
    unsigned int ioPrefs = 0;
};
