#include "bridge/bx_vek_app_parser.h"

namespace {

using Parser = BXGenericConfigFileParser;

void setText(BXString BXVekApp::*field, const char* parameter, void* record) {
    if (!record) return;
    static_cast<BXVekApp*>(record)->*field = Parser::paramToString(parameter);
}

void setSwitch(unsigned int bit, const char* parameter, void* record) {
    if (!record) return;
    unsigned int& switches = static_cast<BXVekApp*>(record)->ioPrefs;
    switches = Parser::paramToBool(parameter) ? switches | bit : switches & ~bit;
}

}  // namespace

BXVekAppParser::BXVekAppParser() {
    buildParser();
}

BXVekAppParser::BXVekAppParser(const BXVekAppParser& other) : BXVekApp(other) {
    buildParser();
}

BXVekAppParser& BXVekAppParser::operator=(const BXVekAppParser& other) {
    if (this == &other) return *this;
    clear();
    BXVekApp::operator=(other);
    return *this;
}

bool BXVekAppParser::parseFile(const BXString& path) {
    clear();
    return m_parser.parseFile(path, static_cast<BXVekApp*>(this));
}

void BXVekAppParser::buildParser() {
    m_parser.addToken("NAME", parseName);
    m_parser.addToken("VEK_VERSION", parseVekVersion);
    m_parser.addToken("EXTENSION", parseExt);
    m_parser.addToken("TAMPLATE", parseTamplate);
    m_parser.addToken("LOCATE_COMMAND", parseLocateCommand);
    m_parser.addToken("INIT_COMMAND", parseInitCommand);
    m_parser.addToken("EDIT_COMMAND", parseEditCommand);
    m_parser.addToken("IMPORT_FLIP_X", parseIFlipX);
    m_parser.addToken("IMPORT_FLIP_Y", parseIFlipY);
    m_parser.addToken("IMPORT_FLIP_Z", parseIFlipZ);
    m_parser.addToken("EXPORT_FLIP_X", parseEFlipX);
    m_parser.addToken("EXPORT_FLIP_Y", parseEFlipY);
    m_parser.addToken("EXPORT_FLIP_Z", parseEFlipZ);
    m_parser.addToken("IMPORT_SWITCH_YZ", parseISwitchYZ);
    m_parser.addToken("EXPORT_SWITCH_YZ", parseESwitchYZ);
    m_parser.addToken("IMPORT_FLIP_NORMALS", parseIFlipN);
    m_parser.addToken("EXPORT_FLIP_NORMALS", parseEFlipN);
    m_parser.addToken("IMPORT_POLYGROUPS", parseIPolyGroups);
    m_parser.addToken("IMPORT_MAT_AS_GROUPS", parseIMatAsGroups);
    m_parser.addToken("GROUP_NSIDED_POLYS", parseGroupNSidedPolys);
    m_parser.addToken("NORMAL_MAP_FLIP_X", parseNFlipX);
    m_parser.addToken("NORMAL_MAP_FLIP_Y", parseNFlipY);
    m_parser.addToken("NORMAL_MAP_FLIP_Z", parseNFlipZ);
    m_parser.addToken("NORMAL_MAP_FLIP_XY", parseNFlipXY);
    m_parser.addToken("NORMAL_MAP_FLIP_VERT", parseNFlipVert);
    m_parser.addToken("IMPORT_MFLIP_X", parseIMFlipX);
    m_parser.addToken("IMPORT_MFLIP_Y", parseIMFlipY);
    m_parser.addToken("IMPORT_MFLIP_Z", parseIMFlipZ);
    m_parser.addToken("IMPORT_MSWITCH_YZ", parseIMSwitchYZ);
    m_parser.addToken("EXPORT_MFLIP_X", parseEMFlipX);
    m_parser.addToken("EXPORT_MFLIP_Y", parseEMFlipY);
    m_parser.addToken("EXPORT_MFLIP_Z", parseEMFlipZ);
    m_parser.addToken("EXPORT_MSWITCH_YZ", parseEMSwitchYZ);
}

void BXVekAppParser::parseName(const char* parameter, void* record) {
    setText(&BXVekApp::name, parameter, record);
}

void BXVekAppParser::parseExt(const char* parameter, void* record) {
    setText(&BXVekApp::ext, parameter, record);
}

void BXVekAppParser::parseTamplate(const char* parameter, void* record) {
    setText(&BXVekApp::tamplate, parameter, record);
}

void BXVekAppParser::parseLocateCommand(const char* parameter, void* record) {
    setText(&BXVekApp::locateCommand, parameter, record);
}

void BXVekAppParser::parseInitCommand(const char* parameter, void* record) {
    setText(&BXVekApp::initCommand, parameter, record);
}

void BXVekAppParser::parseEditCommand(const char* parameter, void* record) {
    setText(&BXVekApp::editCommand, parameter, record);
}

void BXVekAppParser::parseVekVersion(const char* parameter, void* record) {
    if (!record) return;
    static_cast<BXVekApp*>(record)->version = Parser::paramToInt(parameter);
}

void BXVekAppParser::parseIFlipX(const char* parameter, void* record) {
    setSwitch(IMPORT_FLIP_X, parameter, record);
}

void BXVekAppParser::parseIFlipY(const char* parameter, void* record) {
    setSwitch(IMPORT_FLIP_Y, parameter, record);
}

void BXVekAppParser::parseIFlipZ(const char* parameter, void* record) {
    setSwitch(IMPORT_FLIP_Z, parameter, record);
}

void BXVekAppParser::parseEFlipX(const char* parameter, void* record) {
    setSwitch(EXPORT_FLIP_X, parameter, record);
}

void BXVekAppParser::parseEFlipY(const char* parameter, void* record) {
    setSwitch(EXPORT_FLIP_Y, parameter, record);
}

void BXVekAppParser::parseEFlipZ(const char* parameter, void* record) {
    setSwitch(EXPORT_FLIP_Z, parameter, record);
}

void BXVekAppParser::parseISwitchYZ(const char* parameter, void* record) {
    setSwitch(IMPORT_SWITCH_YZ, parameter, record);
}

void BXVekAppParser::parseESwitchYZ(const char* parameter, void* record) {
    setSwitch(EXPORT_SWITCH_YZ, parameter, record);
}

void BXVekAppParser::parseIFlipN(const char* parameter, void* record) {
    setSwitch(IMPORT_FLIP_NORMALS, parameter, record);
}

void BXVekAppParser::parseEFlipN(const char* parameter, void* record) {
    setSwitch(EXPORT_FLIP_NORMALS, parameter, record);
}

void BXVekAppParser::parseIPolyGroups(const char* parameter, void* record) {
    setSwitch(IMPORT_POLYGROUPS, parameter, record);
}

void BXVekAppParser::parseIMatAsGroups(const char* parameter, void* record) {
    setSwitch(IMPORT_MAT_AS_GROUPS, parameter, record);
}

void BXVekAppParser::parseGroupNSidedPolys(const char* parameter, void* record) {
    setSwitch(GROUP_NSIDED_POLYS, parameter, record);
}

void BXVekAppParser::parseNFlipX(const char* parameter, void* record) {
    setSwitch(NORMAL_MAP_FLIP_X, parameter, record);
}

void BXVekAppParser::parseNFlipY(const char* parameter, void* record) {
    setSwitch(NORMAL_MAP_FLIP_Y, parameter, record);
}

void BXVekAppParser::parseNFlipZ(const char* parameter, void* record) {
    setSwitch(NORMAL_MAP_FLIP_Z, parameter, record);
}

void BXVekAppParser::parseNFlipXY(const char* parameter, void* record) {
    setSwitch(NORMAL_MAP_FLIP_XY, parameter, record);
}

void BXVekAppParser::parseNFlipVert(const char* parameter, void* record) {
    setSwitch(NORMAL_MAP_FLIP_VERT, parameter, record);
}

void BXVekAppParser::parseIMFlipX(const char* parameter, void* record) {
    setSwitch(IMPORT_MFLIP_X, parameter, record);
}

void BXVekAppParser::parseIMFlipY(const char* parameter, void* record) {
    setSwitch(IMPORT_MFLIP_Y, parameter, record);
}

void BXVekAppParser::parseIMFlipZ(const char* parameter, void* record) {
    setSwitch(IMPORT_MFLIP_Z, parameter, record);
}

void BXVekAppParser::parseIMSwitchYZ(const char* parameter, void* record) {
    setSwitch(IMPORT_MSWITCH_YZ, parameter, record);
}

void BXVekAppParser::parseEMFlipX(const char* parameter, void* record) {
    setSwitch(EXPORT_MFLIP_X, parameter, record);
}

void BXVekAppParser::parseEMFlipY(const char* parameter, void* record) {
    setSwitch(EXPORT_MFLIP_Y, parameter, record);
}

void BXVekAppParser::parseEMFlipZ(const char* parameter, void* record) {
    setSwitch(EXPORT_MFLIP_Z, parameter, record);
}

void BXVekAppParser::parseEMSwitchYZ(const char* parameter, void* record) {
    setSwitch(EXPORT_MSWITCH_YZ, parameter, record);
}
