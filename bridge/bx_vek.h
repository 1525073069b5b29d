#pragma once

#include "foundation/bx_string.h"

// The shared folder tree, where the host and the target applications meet, and the settings of the
// exchange. Static members only. Path operations compose names and check nothing; a missing file or
// key reads as empty. The tree itself is made by whoever installs the bridge.
class BXVek {
public:
    BXVek() = delete;

    static const BXString s_publicFolder;
    static const BXString s_folderSeparator;
    static const BXString s_VekAppsFolder;
    static const BXString s_VekHubFolder;
    static const BXString s_VekProjectsFolder;
    static const BXString s_VekDefaultProjectFolder;

    // Files of the hub folder.
    static BXString getApplicationFile();
    static BXString getProjectPathFile();
    static BXString getObjectPathFile();
    static BXString getObjectListFile();
    static BXString getDorviaFile(const BXString& name);
    // A file of the default project folder.
    static BXString getDefaultProjectFile(const BXString& name);
    // The folder of the target application with the id `app`, and a file in it.
    static BXString getAppFolder(const BXString& app);
    static BXString getAppFile(const BXString& app, const BXString& name);

    // Where a target application is installed, as its configuration file says; `found` (may be
    // null) tells whether it says so. A path that holds a double quote cannot be kept faithfully.
    static BXString readAppPath(const BXString& app, bool* found);
    // Whether the configuration file could be opened for writing.
    static bool writeAppPath(const BXString& app, const BXString& path);
    // The same for the host, in the hub's configuration file.
    static BXString getDorviaPath();
    static bool setDorviaPath(const BXString& path);

    // The settings of the exchange; they last until the library is unloaded. Positions are
    // mirrored about the point scale * offset; nothing is scaled.
    static double s_scale;
    static double s_offsetX;
    static double s_offsetY;
    static double s_offsetZ;
    // The preference bits of the application queried last (BXVekApp), and whether its import and
    // its export mirror an odd number of times, so that faces have to be rewound.
    static unsigned int s_ioPref;
    static bool s_importReverse;
    static bool s_exportReverse;
};
