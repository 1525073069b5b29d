// Looking up and rewriting one key of a file.

#include <cstring>
#include <memory>

#include "config/bx_generic_config_file_parser.h"
#include "config/config_line.h"
#include "config/line_walker.h"
#include "os/bx_disk_server.h"
#include "os/bx_file.h"

namespace {

void tell(bool* found, bool value) {
    if (found) *found = value;
}

BXString withoutQuotes(const BXString& value) {
    // A lone quote is not a pair here, unlike in unquoted().
    return value.length() >= 2 ? value.unquoted() : value;
}

// Drops the lines of the key from [begin, end), closing the gaps; the new end.
char* dropLines(char* begin, char* end, const BXString& key, bool* found) {
    const int keyLength = key.length();
    char* kept = begin;           // end of what has its final place
    const char* pending = begin;  // start of the run that is still to be moved there
    const auto keep = [&](const char* upTo) {
        const auto size = static_cast<std::size_t>(upTo - pending);
        if (kept != pending) std::memmove(kept, pending, size);
        kept += size;
    };
    BXLineWalker lines(begin, end);
    const char* lineBegin;
    const char* lineEnd;
    while (lines.next(lineBegin, lineEnd)) {
        if (!BXConfigLine(lineBegin, lineEnd).hasKey(key, keyLength)) continue;
        keep(lineBegin);
        pending = lineEnd;
        tell(found, true);
    }
    keep(end);
    return kept;
}

}  // namespace

BXString BXGenericConfigFileParser::findTokenInConfigFile(const BXString& file, const BXString& key,
                                                          bool* found) {
    tell(found, false);
    std::size_t size = 0;
    const auto text = BXFile(file.getValidFilePath(), BXFile::Access::Read).readAll(size);
    if (!text) return BXString();
    const int keyLength = key.length();
    BXLineWalker lines(text.get(), text.get() + size);
    const char* begin;
    const char* end;
    while (lines.next(begin, end)) {
        const BXConfigLine line(begin, end);
        if (!line.hasKey(key, keyLength)) continue;
        tell(found, true);
        BXString value;
        value.create(line.valueBegin, line.valueEnd);
        return withoutQuotes(value);
    }
    return BXString();
}

bool BXGenericConfigFileParser::replaceTokenInConfigFile(const BXString& file, const BXString& key,
                                                         const BXString& value, bool* found) {
    tell(found, false);
    const char* const path = file.getValidFilePath();
    BXString upperKey(key);
    // Required(R31): the rewritten key becomes the first line, in upper case, and every older line
    // of it goes.
    const BXString line = upperKey.toUpper() + " = " + value + "\n";
    const auto lineSize = static_cast<std::size_t>(line.length());

    const BXFile oldFile(path, BXFile::Access::Read);
    // A file that is there and cannot be read keeps its lines; only a missing one is begun anew.
    if (!oldFile.isOpen() && BXDiskServer::fileExists(file)) return false;
    // The new line with the old file read in behind it: no copy in between.
    std::size_t oldSize = 0;
    const auto contents = oldFile.readAll(oldSize, lineSize);
    if (!contents) return false;
    std::memcpy(contents.get(), line.c_str(), lineSize);
    char* const oldLines = contents.get() + lineSize;
    const char* const end = dropLines(oldLines, oldLines + oldSize, key, found);
    bool opened = false;
    BXFile::overwrite(path, contents.get(), static_cast<std::size_t>(end - contents.get()), opened);
    return opened;
}
