/* The functions that the host's macros call by name. Plain C, self-contained.
 *
 * Conventions, the same for every function; a comment below says only what is special.
 *
 *  1. All functions have one shape:
 *         float NAME(char* text, double value, char* buffer1, int buffer1Size,
 *                    char* buffer2, int buffer2Size, char** hostData);
 *     A function ignores the arguments that its comment does not name.
 *  2. Texts in are NUL-terminated and only read. A null text is the empty text.
 *  3. An index is `value` truncated toward zero, so 2.9 is 2 and -0.5 is 0. A value that no 32-bit
 *     integer holds, or that is not a number, is the index -1.
 *  4. A text out is copied whole, with its NUL, into the caller's block. Block sizes are not looked
 *     at (VekAppInstall's is): the caller passes blocks that hold a path. Where there is nothing
 *     to give, the block is left as it was; an empty text is its NUL, but a recorded path that is
 *     empty leaves the block too. A null block is skipped.
 *  5. Numbers out are stored in the processor's byte order, without alignment.
 *  6. The result is the only report. No function throws, and a failure leaves files as they were
 *     unless the comment says otherwise or the disk took a write in part; a file that was missing
 *     may be there and empty.
 *  7. Paths may begin with a volume prefix that ends in ':'; the path is then what follows the
 *     first ':', or else the whole, from its first '/' on: "rel/file" is "/file", and "file" stays.
 *  8. Numbers in texts have a point as decimal separator whatever the process's locale.
 *  9. Functions are called from one thread, one at a time. Files are shared with other processes
 *     without locks and read anew by each call.
 * 10. The tree is /Users/Shared/Kelvaro with its folders VekHub, VekApps and VekProjects. Nothing
 *     below makes the folders.
 */
#ifndef VEK_EXPORTS_VEK_H
#define VEK_EXPORTS_VEK_H

#include <sys/time.h>

#define VEK_API __attribute__((visibility("default")))
#define VEK_ARGUMENTS                                                                         \
    char *text, double value, char *buffer1, int buffer1Size, char *buffer2, int buffer2Size, \
        char **hostData
#define VEK_EXPORT(name) VEK_API float name(VEK_ARGUMENTS)

#ifdef __cplusplus
extern "C" {
#endif

/* Any of the functions below. */
typedef float (*VekExport)(VEK_ARGUMENTS);

/* The wall-clock time at which the log service was started; zero before. */
extern VEK_API struct timeval s_startTimeVal;
/* The host's graphix table that was installed before the first replacement; null before. */
extern VEK_API void* s_table2;

/* ---- Setup ----------------------------------------------------------------------------------- */

/* text: the folder that holds the host application. Records where the host is, has the quarantine
 * attribute taken off the helper applications once per folder, and fills the table of target
 * applications anew: one for each folder of VekApps with a "Vek_Info.txt", at most 32, in the order
 * in which the file system lists them. Returns their number. */
VEK_EXPORT(InitializeVek);

/* value: the scale that the offsets below are multiplied by. Kept until unload, 0 at load: set it
 * before the first VekPostExport. Returns 0. */
VEK_EXPORT(VekSetExportScale);
/* value: the offset along one axis, in host units. The point scale * offset stays in place when
 * meshes are mirrored. Kept until unload, 0 at load; but see VekPostExport on z. Returns 0. */
VEK_EXPORT(VekSetExportOffsetX);
VEK_EXPORT(VekSetExportOffsetY);
VEK_EXPORT(VekSetExportOffsetZ);

/* Do nothing and return 0; scripts of old call them. */
VEK_EXPORT(PrintInLog);
VEK_EXPORT(DeclareMacroActivated);

/* ---- Open panel ------------------------------------------------------------------------------ */

/* text: the title of the platform's modal open panel, in UTF-8; buffer1: out, the chosen path in
 * UTF-8. Returns 0, or -1 when no path was chosen or buffer1 is null. On Linux the panel is
 * zenity's; without that program nothing is chosen. */
VEK_EXPORT(OpenFileDialog);

/* ---- Object list ----------------------------------------------------------------------------- */
/* VekHub/"Vek_ObjectList.txt": one object a line, the path of its exchange file without extension.
 * The list in memory changes only by ReadVekObjectList, ReleaseVekObjectList and
 * GetFirstObjectTextureFileName. */

/* text: an object line, put on top of the list file. Returns 1; 0 when the file is missing or
 * cannot be written, and then it stays as it was. */
VEK_EXPORT(AddVekObject);
/* text: an object line, added at the end of the list file; creates it. Returns 0 always. */
VEK_EXPORT(AddVekObjectToList);
/* Empties the list file or creates it empty. Returns 1; 0 when it cannot be opened. */
VEK_EXPORT(ClearVekObjectList);
/* Reads the list file into memory: every line that is not blank, without blanks and tabs at its
 * ends. Returns the number of objects, 0 when the file is missing or cannot be read to its end. */
VEK_EXPORT(ReadVekObjectList);
/* value: an index into the list in memory; buffer1: out, the object line. Returns 0 always; an
 * index outside the list leaves buffer1 as it was. */
VEK_EXPORT(GetVekObjectPath);
/* Empties the list in memory and gives its storage back. Returns 0. */
VEK_EXPORT(ReleaseVekObjectList);
/* Takes the first line off the list file and writes it, without a line break, to
 * VekHub/"Vek_ObjectPath.txt". One line-break byte ends the line, and one at the very start of the
 * file is passed over; blanks stay. Returns 1, also when a file could not be written; 0 when there
 * is no line to take. */
VEK_EXPORT(ExtractVekObject);

/* ---- Exchange files -------------------------------------------------------------------------- */

/* text: the path of a file that the host has just written, for the application last asked for with
 * GetVekAppIOPrefs. The end of the name, in any letter case, says what is done to it, in place:
 *   ".Vek"  the mesh is brought into the application's orientation. Where there is nothing to do
 * (no switch, scale 1, no offset along x and y) the offset along z is set to 0 for good. A damaged
 * file is no failure: what is whole in it is turned. A file whose rewriting was cut off has a blank
 * magic, so that no reader takes it.
 *   ".ma"   in a Maya scene equal UVs of a vertex become one, edges are marked hard or smooth, and
 *           faces are rewound for an application that mirrors; docs/maya-scenes.md has the rules. A
 *           scene that contradicts itself is refused and stays as it was.
 * Returns 0; -1 when the file is missing, of another kind, not what its name says, refused, or
 * could not be rewritten. */
VEK_EXPORT(VekPostExport);
/* The inverse, for a file that the target application has written and the host is about to read: a
 * Maya scene gets a UV of its own at each face corner. */
VEK_EXPORT(VekPreImport);
/* text: a path. Empties the file or creates it empty. Returns 1; 0 when it cannot be opened. */
VEK_EXPORT(VekClearFile);
/* text: a path. Deletes the file, or an empty folder. Returns 1 when it did, else 0. */
VEK_EXPORT(VekDeleteFile);
/* Deletes everything inside the default project folder; the folder stays. Links in it are deleted,
 * never followed. Returns 0 always. */
VEK_EXPORT(VekCleanCaches);
/* value: 0, 1 or 2, exactly, for the map of block 45001, 50001 or 55001; buffer1: out, the map file
 * name that the first listed object's exchange file holds, with '/' for '\'; buffer2: out, for 2
 * only, the number that goes with it, printed with "%f", also where its name is empty. The first
 * block of the kind counts. Reads the object list anew. Returns 0; -1 when there is no object, no
 * file or no name. */
VEK_EXPORT(GetFirstObjectTextureFileName);
/* text: a path. Returns 1 when the file can be read and is not empty, else 0. */
VEK_EXPORT(IsVekFilePathValid);
/* buffer1: out, what VekHub/"Vek_ProjectPath.txt" holds, less the control characters at its end and
 * then less what stands from its last line break on. Nothing of a file above 4,096 bytes. Returns
 * 0. */
VEK_EXPORT(ReadVekProjectPath);

/* ---- Target applications --------------------------------------------------------------------- */
/* An application index counts from 0 in the table that InitializeVek filled. An index outside it
 * gives the function's failure result and touches nothing, where the comment says no other. */

/* value: an application index; buffer1: out, the id (the folder's name), the name, the extension or
 * the script template of the application, the empty text where its descriptor has none. Return 0
 * always. */
VEK_EXPORT(GetVekAppId);
VEK_EXPORT(GetVekAppName);
VEK_EXPORT(GetVekAppExt);
VEK_EXPORT(GetVekAppTamplate);
/* value: an application index; buffer1: out, two 32-bit integers: at byte 0 the low 16 bits of the
 * application's switches, at byte 8 the high 16; bytes 4 to 7 stay. For an application with the
 * extension ".Vek" the low 8 bits are reported as 0: VekPostExport and VekPreImport see to these.
 * Makes the application's switches those that the two go by, also for a null buffer1; an index
 * outside the table sets none and reports 0 and 0. Returns 0. */
VEK_EXPORT(GetVekAppIOPrefs);
/* text: an application id, in any letter case. Returns its index or -1. */
VEK_EXPORT(FindVekApp);
/* Returns the index of the application whose id VekHub/"Vek_Application.txt" holds, or -1. */
VEK_EXPORT(GetVekAppIndex);
/* value: an application index. Writes its id to that file; an index outside the table empties the
 * file, so that no application is selected. Returns 0. */
VEK_EXPORT(SetVekAppIndex);
/* value: an application index; buffer1: out, the path where the application is recorded to be.
 * Returns 1 when there is a record, else 0. */
VEK_EXPORT(ReadVekAppPath);
/* text: a path, value: an application index. Records the path. Returns 0. */
VEK_EXPORT(WriteVekAppPath);
/* text: a path. Returns 1 when a folder (for a path that ends in ".app", any letter case) or a file
 * is there, else 0. */
VEK_EXPORT(IsAppPathValid);
/* text: a location, value: an application index. Returns 1 when the application's
 * "Vek_InstallList.txt" has a line that the location begins with, in any letter case, else 0. The
 * line "/X" also holds "/Xtra". */
VEK_EXPORT(VekAppIsInstalled);

/* ---- Running applications -------------------------------------------------------------------- */
/* Commands and programs are run by the shell and waited for, a bundle (a path that ends in ".app")
 * is launched and not waited for. On Linux a bundle is a folder with Contents/Info.plist and an
 * executable in Contents/MacOS. */

/* text: a location, value: an application index. Deletes the application's "Vek_InstallLog.txt",
 * runs its INIT_COMMAND as administrator and waits, some 30 seconds at most, for a new log. Where
 * that is empty the location is added to "Vek_InstallList.txt", and the result is 0, whether the
 * list could be written or not; otherwise it is 1. buffer1, buffer1Size: out, what the log says, at
 * most buffer1Size - 1 bytes; the NUL goes into the block's last byte, so the block is to be zeroed
 * before. Where no log came it is a message of 219 bytes with its NUL, whatever the size. Null
 * buffer1 or a size below 1 gets no text. */
VEK_EXPORT(VekAppInstall);
/* text: a bundle path. Returns 1 when a process of the bundle is running, else 0. */
VEK_EXPORT(VekAppIsRunning);
/* text: the path of a bundle, a ".sh" script or a program; buffer1: in, one argument, none when
 * null or empty. Returns 0, whatever happens. */
VEK_EXPORT(OpenVekApplication);
/* text: "LOCATE_COMMAND", "INIT_COMMAND" or "EDIT_COMMAND" in any letter case, value: an
 * application index. Runs the command of the application's descriptor: the file of that name in the
 * application's folder, with what stands from the first double quote on as its argument text. As
 * the user, or by osascript, which asks for an administrator's password. Return 0 once it was
 * handed on, whatever becomes of it; -1 for another key or an empty command. */
VEK_EXPORT(CallVekAppCommand);
VEK_EXPORT(CallVekAppCommandAsAdmin);

/* ---- Preferences ----------------------------------------------------------------------------- */
/* text: the path of a key/value file, buffer1: a key, in any letter case. */

/* buffer2: out, the value: as text without its enclosing double quotes, as a 32-bit integer 0 or 1,
 * as a 32-bit integer (read as a float, so exact up to 2^24, and cut toward zero), as a 32-bit
 * float. An empty value leaves buffer2 as it was. Return 1 when the key was found, else 0. */
VEK_EXPORT(ReadConfigPrefAsString);
VEK_EXPORT(ReadConfigPrefAsBool);
VEK_EXPORT(ReadConfigPrefAsInt);
VEK_EXPORT(ReadConfigPrefAsFloat);
/* buffer2: in, the value: text, a 32-bit integer (not 0 is TRUE), a 32-bit integer, a 32-bit float.
 * The line KEY = value becomes the first of the file, older lines of the key go, a missing file is
 * created; one that is there and cannot be read stays. Return 1 when the key was there before, else
 * 0; whether the file could be written does not show. A null buffer2 writes the empty text as text;
 * as a number it writes nothing and returns 0. */
VEK_EXPORT(WriteConfigPrefAsString);
VEK_EXPORT(WriteConfigPrefAsBool);
VEK_EXPORT(WriteConfigPrefAsInt);
VEK_EXPORT(WriteConfigPrefAsFloat);

/* ---- The host's interface -------------------------------------------------------------------- */

/* text: the path of an item of the host's interface, value: an offset, buffer1: in, the path of an
 * anchor, hostData: null, or pointers, of which element 2 is the host's document and element 8 the
 * root of its function tables. A path is the names of windows from the top down with ':' between
 * them, in any letter case; windows without a name are left out. Moves the item into the anchor's
 * parent: offset 0 puts it before the anchor, 1 behind it; 0.2 is added to the offset, away from
 * zero, before it is cut to an integer. Returns 0 when both are found and the anchor has a parent,
 * whether anything moved or not; -1 otherwise. An item is never moved into itself. */
VEK_EXPORT(SetItemPos);

#ifdef __cplusplus
}
#endif

#endif
