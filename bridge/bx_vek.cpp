#include "bridge/bx_vek.h"

#include "config/bx_generic_config_file_parser.h"

const BXString BXVek::s_publicFolder("/Users/Shared/Kelvaro");
const BXString BXVek::s_folderSeparator("/");
const BXString BXVek::s_VekAppsFolder(s_publicFolder + s_folderSeparator + "VekApps");
const BXString BXVek::s_VekHubFolder(s_publicFolder + s_folderSeparator + "VekHub");
const BXString BXVek::s_VekProjectsFolder(s_publicFolder + s_folderSeparator + "VekProjects");
const BXString BXVek::s_VekDefaultProjectFolder(s_VekProjectsFolder + s_folderSeparator +
                                                "Default");

double BXVek::s_scale = 0.0;
double BXVek::s_offsetX = 0.0;
double BXVek::s_offsetY = 0.0;
double BXVek::s_offsetZ = 0.0;
unsigned int BXVek::s_ioPref = 0;
bool BXVek::s_importReverse = false;
bool BXVek::s_exportReverse = false;

namespace {

const char kConfigFile[] = "Vek_Config.txt";
const char kPathKey[] = "PATH";

// The lookup has itself dropped one pair of quotes; a value that was quoted twice loses both.
BXString readPath(const BXString& configFile, bool* found) {
    return BXGenericConfigFileParser::findTokenInConfigFile(configFile, kPathKey, found).unquoted();
}

bool writePath(const BXString& configFile, const BXString& path) {
    const BXString quoted = "\"" + path + "\"";
    return BXGenericConfigFileParser::replaceTokenInConfigFile(configFile, kPathKey, quoted,
                                                               nullptr);
}

}  // namespace

BXString BXVek::getApplicationFile() {
    return getDorviaFile("Vek_Application.txt");
}

BXString BXVek::getProjectPathFile() {
    return getDorviaFile("Vek_ProjectPath.txt");
}

BXString BXVek::getObjectPathFile() {
    return getDorviaFile("Vek_ObjectPath.txt");
}

BXString BXVek::getObjectListFile() {
    return getDorviaFile("Vek_ObjectList.txt");
}

BXString BXVek::getDorviaFile(const BXString& name) {
    return s_VekHubFolder + s_folderSeparator + name;
}

BXString BXVek::getDefaultProjectFile(const BXString& name) {
    return s_VekDefaultProjectFolder + s_folderSeparator + name;
}

BXString BXVek::getAppFolder(const BXString& app) {
    return s_VekAppsFolder + s_folderSeparator + app;
}

BXString BXVek::getAppFile(const BXString& app, const BXString& name) {
    return getAppFolder(app) + s_folderSeparator + name;
}

BXString BXVek::readAppPath(const BXString& app, bool* found) {
    return readPath(getAppFile(app, kConfigFile), found);
}

bool BXVek::writeAppPath(const BXString& app, const BXString& path) {
    return writePath(getAppFile(app, kConfigFile), path);
}

BXString BXVek::getDorviaPath() {
    return readPath(getDorviaFile(kConfigFile), nullptr);
}

bool BXVek::setDorviaPath(const BXString& path) {
    return writePath(getDorviaFile(kConfigFile), path);
}
