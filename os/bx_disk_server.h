#pragma once

#include <cstdint>
#include <cstdio>

#include "foundation/bx_array.h"
#include "foundation/bx_string.h"
#include "os/platform.h"

// The operating system: stateless operations on files, folders, paths and other programs. Each
// reports by its result alone, never throws but for a failed allocation, and leaves its outputs
// untouched on failure unless it says otherwise. Paths use '/'. "valid" operations pass their path
// through BXString::getValidFilePath first; "raw" ones hand it to the system as it is.
class BXDiskServer {
public:
    // The handle that means that no file is open.
    static std::FILE* const s_invalidFile;

    // Valid. Links are followed. A socket has the type bits of both, and counts as both; a
    // block device has the folder's.
    static bool fileExists(const BXString& path);
    static bool folderExists(const BXString& path);
    // Raw. One level, mode 0700.
    static bool createFolder(const BXString& path);
    // The working folder; empty when its name does not fit into 511 bytes.
    static BXString getCurrentPath();
    static BXString getApplicationFolder();
    static BXString getApplicationX86Folder(bool ignored);

    // `ext` with or without its leading '.', not empty; letter case counts.
    static bool fileNameHasExtension(const BXString& name, const BXString& ext);
    // Appends the extension where it is missing; whether it did.
    static bool makeFilenameWithExt(BXString& name, const BXString& ext);
    // Not the mirror of the above: where the extension is missing, cuts as many characters as it
    // has off the end and returns true; where it is there, does nothing and returns false.
    static bool makeFilenameWithoutExt(BXString& name, const BXString& ext);
    // Keeps what follows the last '/' or '\'. Always true.
    static bool removePathFromFilename(BXString& path);
    // Keeps what reaches up to and with the last '/'; only '/' counts. Always true.
    static bool extractPathFromFilename(BXString& path);
    static bool extractPathFromFilename(BXString& folder, const BXString& path);

    // Valid.
    // One operation under two names: removes a file, or an empty folder.
    static bool deleteFile(const BXString& path);
    static bool deleteFolder(const BXString& path);
    // `from` valid, `to` raw.
    static bool renameFile(const BXString& from, const BXString& to);
    // Valid. Where `to` cannot be opened, makes its folder writable for the moment and tries again.
    // False when that fails too, when not everything could be read and written (the partial target
    // is removed), and for a copy of a file onto itself, which leaves it alone.
    static bool copyFile(const BXString& from, const BXString& to);
    // Raw. The mode bits; 0 when there are none.
    static unsigned short getMode(const BXString& path);
    // Raw. 0 on success, -1 on failure.
    static int setMode(const BXString& path, unsigned short mode);

    // Valid. Whole small text files, at most 4,096 bytes. Reading drops control characters at the
    // end, keeps blanks, and ends at a NUL. Writing an empty or a longer text empties the file and
    // returns false.
    static bool readFileAsString(const BXString& path, BXString& text);
    static bool writeFileFromString(const BXString& path, const BXString& text);
    // Valid. Replaces `lines`. The file's last byte counts twice: a last line without a break has
    // its last character doubled, and a final break is followed by one more empty line.
    static bool readFileAsStringLines(const BXString& path, BXArray<BXString>& lines);

    // Raw. Appends folder + "/" + name for every entry whose name matches `filter` ('*', '?', any
    // letter case), "." and ".." included; searches `depth` levels of subfolders below, of which
    // matching ones are reported and not entered, links never entered. With stopLevels > 0 the
    // first place that yields matches ends the search. Whether anything was found.
    static bool searchFileList(BXArray<BXString>& found, const BXString& filter,
                               const BXString& folder, int depth, int stopLevels);
    // Raw. Where the last component has a wildcard, or is not there as a folder, deletes every
    // entry of its parent that matches it, in any letter case; otherwise the folder with what is in
    // it. A name alone is one of the working folder, "/x" one of the root. Goes into subfolders
    // only when `recursive`; without it a subfolder goes only if it is empty. A link is an entry
    // like a file: it is removed, never followed, also when `path` itself is one; but the parent,
    // "link" in "link/*", is the folder that it leads to. False when anything could not be removed
    // or there was nothing to remove. The third argument is ignored.
    static bool deleteDirectory(const BXString& path, bool recursive, bool ignored);

    // Other programs, found, launched and reached; bx_disk_server_processes.cpp. A path that ends
    // in ".app", in any letter case, is a bundle, one that ends in ".sh" a shell script, any other
    // an executable. Platform calls get the valid path, the shell the path as it is given. What is
    // run by the shell is waited for, and true whatever becomes of it. On Linux a bundle is a
    // folder with Contents/Info.plist and an executable in Contents/MacOS. On the Mac a bundle's
    // arguments have to be ASCII: others are refused.

    // Whether the bundle names a processor kind and has a major version above 0. An empty path
    // leaves the outputs alone. Kinds come from Mach-O and ELF headers; a script has none.
    static bool getApplicationInfo(const BXString& path, bool& is64Bit, int& majorVersion,
                                   int& minorVersion);
    // The shell runs: sh "path" "args"; path 'args'; sh "path" "arg" ...; path "arg" "arg" ... .
    // The path of an executable is not quoted, and nothing in a path or an argument is escaped. A
    // bundle is launched as one more instance and not waited for; false when that is refused.
    static bool launchApplication(const BXString& path, const BXString& args);
    static bool launchApplication(const BXString& path, const BXArray<BXString>& argList);
    // By osascript, which asks for an administrator's password and runs, for a script, bundle or
    // executable: sh 'path' 'args', open -a 'path' 'args', 'path' 'args'. Always true. The list
    // form's double quotes end the quoted text around them, so an element with blanks falls apart.
    static bool launchApplicationAsAdmin(const BXString& path, const BXString& args);
    static bool launchApplicationAsAdmin(const BXString& path, const BXArray<BXString>& argList);

    // A process launched from the bundle at `path`; {0, 0} when false.
    static bool getRunningProcess(const BXString& path, BXProcessSerialNumber& psn);
    // Starts the bundle, or reaches the instance that runs. False for any other path.
    static bool launchApplicationIfNecessary(const BXString& path);
    // Launches the bundle where it is not running, has it open the document, and brings it to the
    // front. On Linux the document's path is an argument: to the launch, or, where the application
    // runs, to one more start of its executable, which is to pass it on.
    static bool openFileInApplication(const BXString& appPath, const BXString& filePath);
    // Sends the running application an event of the core class, whatever eventClass is, with `text`
    // as its direct object. Where it is not running it is launched with argList; when that is not
    // empty it is the message, no event is sent, and the result is false. On Linux nothing can be
    // sent: false.
    static bool sendAppleEventToApplication(const BXString& appPath, std::uint32_t code,
                                            const BXString& text, const BXArray<BXString>& argList);
    static bool sendAppleEventToApplication(const BXString& appPath, std::uint32_t eventClass,
                                            std::uint32_t eventID, const BXString& text,
                                            const BXArray<BXString>& argList);
    // Types a key with modifiers (1 Shift, 2 Control, 4 Option, 8 Command) into the application,
    // launched where it is not running. Both 0: only brings it to the front. On Linux no key can be
    // typed: false.
    static bool sendKeyEventToApplication(const BXString& appPath, int keyCode, int modifiers);

    // osascript -e "script", nothing escaped. Always true.
    static bool runAppleScript(const BXString& script);
    // osascript -e'line' -e'line' ..., a line for each that is not empty. False for no script.
    static bool runAppleScriptMultiLine(const BXString& script);
    // Makes `path` the working folder; it shows nothing.
    static bool openFolder(const BXString& path);
};

// The UTF-8 path that the user chose in the modal open panel, to be freed with delete[]; null when
// none was. `title` is UTF-8 and may be null. On Linux the panel is zenity's, where there is one.
char* runCocoaOpenFileBrowser(const char* title);
