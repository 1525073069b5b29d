/* The one list of the library's exports.
 *
 *     X(name, group, "text", "value", buffer1, buffer2, "what the caller gets")
 *
 * group     the family, and the source file, that the export belongs to
 * "text"    what the text argument means; "" where it is ignored
 * "value"   what the number argument means; "" where it is ignored
 * buffer1,  how the export uses the block: NONE, IN_TEXT, IN_INT, IN_BOOL, IN_FLOAT, OUT_TEXT,
 * buffer2   OUT_SIZED_TEXT (the only one whose size argument counts), OUT_INT, OUT_BOOL, OUT_FLOAT,
 *           OUT_IO_PREFS (two 32-bit integers at bytes 0 and 8)
 *
 * One export a line, in this shape exactly: the build reads the names from here for the linker and
 * stops at a line that starts with X and looks different. */

/* clang-format off */
X(InitializeVek, setup, "folder that holds the host application", "", NONE, NONE, "number of target applications found")
X(VekSetExportScale, setup, "", "export scale", NONE, NONE, "0")
X(VekSetExportOffsetX, setup, "", "export offset along x", NONE, NONE, "0")
X(VekSetExportOffsetY, setup, "", "export offset along y", NONE, NONE, "0")
X(VekSetExportOffsetZ, setup, "", "export offset along z", NONE, NONE, "0")
X(PrintInLog, setup, "", "", NONE, NONE, "0")
X(DeclareMacroActivated, setup, "", "", NONE, NONE, "0")
X(OpenFileDialog, panel, "passed on to the open panel", "", OUT_TEXT, NONE, "0 a path was chosen; -1 none")
X(AddVekObject, objects, "object line", "", NONE, NONE, "1 added on top; 0 list file missing or not writable")
X(AddVekObjectToList, objects, "object line", "", NONE, NONE, "0")
X(ClearVekObjectList, objects, "", "", NONE, NONE, "1 list file emptied; 0 cannot be opened")
X(ReadVekObjectList, objects, "", "", NONE, NONE, "number of objects read")
X(GetVekObjectPath, objects, "", "object index", OUT_TEXT, NONE, "0")
X(ReleaseVekObjectList, objects, "", "", NONE, NONE, "0")
X(ExtractVekObject, objects, "", "", NONE, NONE, "1 an object was taken; 0 nothing to take")
X(VekPostExport, exchange, "exchange file path", "", NONE, NONE, "0 prepared; -1 otherwise")
X(VekPreImport, exchange, "exchange file path", "", NONE, NONE, "0 prepared; -1 otherwise")
X(VekClearFile, exchange, "file path", "", NONE, NONE, "1 emptied or created; 0 cannot be opened")
X(VekDeleteFile, exchange, "file path", "", NONE, NONE, "1 deleted; 0 not deleted")
X(VekCleanCaches, exchange, "", "", NONE, NONE, "0")
X(GetFirstObjectTextureFileName, exchange, "", "map kind: 0, 1 or 2", OUT_TEXT, OUT_TEXT, "0 found; -1 otherwise")
X(IsVekFilePathValid, exchange, "file path", "", NONE, NONE, "1 readable and not empty; 0 otherwise")
X(ReadVekProjectPath, exchange, "", "", OUT_TEXT, NONE, "0")
X(VekAppIsInstalled, applications, "location", "application index", NONE, NONE, "1 installed there; 0 not")
X(VekAppInstall, control, "location", "application index", OUT_SIZED_TEXT, NONE, "0 installed; 1 failed")
X(VekAppIsRunning, control, "bundle path", "", NONE, NONE, "1 running; 0 not")
X(OpenVekApplication, control, "application path", "", IN_TEXT, NONE, "0")
X(CallVekAppCommand, control, "command key", "application index", NONE, NONE, "0 run; -1 no such command")
X(CallVekAppCommandAsAdmin, control, "command key", "application index", NONE, NONE, "0 run; -1 no such command")
X(IsAppPathValid, applications, "application path", "", NONE, NONE, "1 exists; 0 not")
X(ReadVekAppPath, applications, "", "application index", OUT_TEXT, NONE, "1 a path is recorded; 0 not")
X(WriteVekAppPath, applications, "application path", "application index", NONE, NONE, "0")
X(FindVekApp, applications, "application id", "", NONE, NONE, "application index; -1 unknown")
X(GetVekAppIndex, applications, "", "", NONE, NONE, "index of the selected application; -1 none")
X(SetVekAppIndex, applications, "", "application index", NONE, NONE, "0")
X(GetVekAppId, applications, "", "application index", OUT_TEXT, NONE, "0")
X(GetVekAppName, applications, "", "application index", OUT_TEXT, NONE, "0")
X(GetVekAppIOPrefs, applications, "", "application index", OUT_IO_PREFS, NONE, "0")
X(GetVekAppTamplate, applications, "", "application index", OUT_TEXT, NONE, "0")
X(GetVekAppExt, applications, "", "application index", OUT_TEXT, NONE, "0")
X(ReadConfigPrefAsString, preferences, "configuration file path", "", IN_TEXT, OUT_TEXT, "1 key found; 0 not")
X(ReadConfigPrefAsBool, preferences, "configuration file path", "", IN_TEXT, OUT_BOOL, "1 key found; 0 not")
X(ReadConfigPrefAsInt, preferences, "configuration file path", "", IN_TEXT, OUT_INT, "1 key found; 0 not")
X(ReadConfigPrefAsFloat, preferences, "configuration file path", "", IN_TEXT, OUT_FLOAT, "1 key found; 0 not")
X(WriteConfigPrefAsString, preferences, "configuration file path", "", IN_TEXT, IN_TEXT, "1 key was there before; 0 new")
X(WriteConfigPrefAsBool, preferences, "configuration file path", "", IN_TEXT, IN_BOOL, "1 key was there before; 0 new")
X(WriteConfigPrefAsInt, preferences, "configuration file path", "", IN_TEXT, IN_INT, "1 key was there before; 0 new")
X(WriteConfigPrefAsFloat, preferences, "configuration file path", "", IN_TEXT, IN_FLOAT, "1 key was there before; 0 new")
X(SetItemPos, placement, "path of the item to move", "offset", IN_TEXT, NONE, "0 found, whether it moved or not; -1 otherwise")
/* clang-format on */
