#pragma once

#include <cstdio>

#include "foundation/bx_array.h"
#include "foundation/bx_string.h"

// The file side of the operating system: stateless operations on files, folders and paths. Each
// reports by its result alone, never throws but for a failed allocation, and leaves its outputs
// untouched on failure unless it says otherwise. Paths use '/'. "valid" operations pass their path
// through BXString::getValidFilePath first; "raw" ones hand it to the system as it is.
class BXDiskServer {
public:
    // The handle that means that no file is open.
    static std::FILE* const s_invalidFile;

    // Valid. Links are followed. A socket has the type bits of both, and counts as both.
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
    static bool deleteFile(const BXString& path);    // an empty folder too
    static bool deleteFolder(const BXString& path);  // only an empty one
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
    // Raw. Deletes the folder `path` with what is in it, or else every entry of its parent that
    // matches the last component (wildcards, any letter case). Goes into subfolders only when
    // `recursive`; without it a subfolder goes only if it is empty. A link is an entry like a file:
    // it is removed, never followed, also when `path` itself is one. False when anything could not
    // be removed or there was nothing to remove. The third argument is ignored.
    static bool deleteDirectory(const BXString& path, bool recursive, bool ignored);
};
