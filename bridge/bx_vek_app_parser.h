#pragma once

#include "bridge/bx_vek_app.h"
#include "config/bx_generic_config_file_parser.h"

// Reads a descriptor into the record that it is itself. Copies copy the record; each parser has
// keys of its own.
class BXVekAppParser : public BXVekApp {
public:
    BXVekAppParser();
    BXVekAppParser(const BXVekAppParser& other);
    BXVekAppParser& operator=(const BXVekAppParser& other);

    // Registers the keys, each longer one after the key that begins it. The constructors do so; a
    // second time changes nothing but the time that parsing takes.
    void buildParser();
    // Clears the record and fills it from the descriptor at `path`: one key a line, in any letter
    // case, followed by blanks, tabs, ':' or '=' and the value; of a key given twice the last line
    // counts; unknown lines are ignored. False for a missing or empty file.
    bool parseFile(const BXString& path);

    // One callback per key; `record` is the BXVekApp to fill, or null.
    static void parseName(const char* parameter, void* record);
    static void parseVekVersion(const char* parameter, void* record);
    static void parseExt(const char* parameter, void* record);
    static void parseTamplate(const char* parameter, void* record);
    static void parseLocateCommand(const char* parameter, void* record);
    static void parseInitCommand(const char* parameter, void* record);
    static void parseEditCommand(const char* parameter, void* record);
    static void parseIFlipX(const char* parameter, void* record);
    static void parseIFlipY(const char* parameter, void* record);
    static void parseIFlipZ(const char* parameter, void* record);
    static void parseEFlipX(const char* parameter, void* record);
    static void parseEFlipY(const char* parameter, void* record);
    static void parseEFlipZ(const char* parameter, void* record);
    static void parseISwitchYZ(const char* parameter, void* record);
    static void parseESwitchYZ(const char* parameter, void* record);
    static void parseIFlipN(const char* parameter, void* record);
    static void parseEFlipN(const char* parameter, void* record);
    static void parseIPolyGroups(const char* parameter, void* record);
    static void parseIMatAsGroups(const char* parameter, void* record);
    static void parseGroupNSidedPolys(const char* parameter, void* record);
    static void parseNFlipX(const char* parameter, void* record);
    static void parseNFlipY(const char* parameter, void* record);
    static void parseNFlipZ(const char* parameter, void* record);
    static void parseNFlipXY(const char* parameter, void* record);
    static void parseNFlipVert(const char* parameter, void* record);
    static void parseIMFlipX(const char* parameter, void* record);
    static void parseIMFlipY(const char* parameter, void* record);
    static void parseIMFlipZ(const char* parameter, void* record);
    static void parseIMSwitchYZ(const char* parameter, void* record);
    static void parseEMFlipX(const char* parameter, void* record);
    static void parseEMFlipY(const char* parameter, void* record);
    static void parseEMFlipZ(const char* parameter, void* record);
    static void parseEMSwitchYZ(const char* parameter, void* record);

private:
    BXGenericConfigFileParser m_parser;
};
