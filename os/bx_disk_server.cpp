#include "os/bx_disk_server.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <string>

#include "os/bx_file.h"

std::FILE* const BXDiskServer::s_invalidFile = nullptr;

namespace {

constexpr std::int64_t kTextLimit = 4096;
constexpr std::size_t kListCapacity = 1024;

// Required(R20): the type is told by single bits of the mode, so a socket, which has both, counts
// as a file and as a folder, and a block device, which has one, as a folder.
constexpr unsigned int kRegularBit = 0x8000;
constexpr unsigned int kFolderBit = 0x4000;

bool existsWith(const char* path, unsigned int typeBit) {
    struct stat status;
    if (!path || access(path, F_OK) != 0 || stat(path, &status) != 0) return false;
    return (status.st_mode & typeBit) != 0;
}

const char* firstOf(const char* begin, const char* end, char c) {
    const void* const found = std::memchr(begin, c, static_cast<std::size_t>(end - begin));
    return found ? static_cast<const char*>(found) : end;
}

bool removePath(const char* path) {
    return path && std::remove(path) == 0;
}

BXString withDot(const BXString& ext) {
    return ext.startsWith(".") ? ext : "." + ext;
}

// The end of the line that begins at `begin`: its LF or CR, or the end of the text. `lineFeed` is
// the first LF from `begin` on and moves along, so that a text with CRs alone is not searched to
// its end for every line.
const char* endOfLine(const char* begin, const char* end, const char*& lineFeed) {
    if (lineFeed < begin) lineFeed = firstOf(begin, end, '\n');
    return firstOf(begin, lineFeed, '\r');
}

// Whether the byte counts as a control character, in whatever locale.
bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 32 || byte == 127;
}

}  // namespace

bool BXDiskServer::fileExists(const BXString& path) {
    return existsWith(path.getValidFilePath(), kRegularBit);
}

bool BXDiskServer::folderExists(const BXString& path) {
    return existsWith(path.getValidFilePath(), kFolderBit);
}

bool BXDiskServer::createFolder(const BXString& path) {
    return mkdir(path.c_str(), 0700) == 0;
}

BXString BXDiskServer::getCurrentPath() {
    char path[512];
    return getcwd(path, sizeof path) ? BXString(path) : BXString();
}

BXString BXDiskServer::getApplicationFolder() {
    return "/Applications";
}

BXString BXDiskServer::getApplicationX86Folder(bool) {
    return getApplicationFolder();
}

bool BXDiskServer::fileNameHasExtension(const BXString& name, const BXString& ext) {
    return name.endsWith(withDot(ext), false);
}

bool BXDiskServer::makeFilenameWithExt(BXString& name, const BXString& ext) {
    if (fileNameHasExtension(name, ext)) return false;
    name += withDot(ext);
    return true;
}

bool BXDiskServer::makeFilenameWithoutExt(BXString& name, const BXString& ext) {
    // Required(R21): the test is makeFilenameWithExt's own, so it is the names without the
    // extension that are cut.
    if (fileNameHasExtension(name, ext)) return false;
    const int kept = name.length() - withDot(ext).length();
    if (kept >= 0) name = name.subString(0, kept);
    return true;
}

bool BXDiskServer::removePathFromFilename(BXString& path) {
    path.cutTo(path.findLastCharOf("/\\") + 1);
    return true;
}

bool BXDiskServer::extractPathFromFilename(BXString& path) {
    // Required(R22): only '/' ends a folder here, unlike in removePathFromFilename, so a path with
    // backslashes alone has none.
    path = path.subString(0, path.findLastCharOf("/") + 1);
    return true;
}

bool BXDiskServer::extractPathFromFilename(BXString& folder, const BXString& path) {
    folder = path;
    return extractPathFromFilename(folder);
}

bool BXDiskServer::deleteFile(const BXString& path) {
    // Required(R28): this and deleteFolder are one operation, so an empty folder counts as a file
    // here.
    return removePath(path.getValidFilePath());
}

bool BXDiskServer::deleteFolder(const BXString& path) {
    return removePath(path.getValidFilePath());
}

bool BXDiskServer::renameFile(const BXString& from, const BXString& to) {
    const char* const source = from.getValidFilePath();
    // Required(R26): only the source loses a volume prefix. The target goes to the system as it is.
    return source && std::rename(source, to.c_str()) == 0;
}

unsigned short BXDiskServer::getMode(const BXString& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return 0;
    return static_cast<unsigned short>(status.st_mode & 0xFFFF);
}

int BXDiskServer::setMode(const BXString& path, unsigned short mode) {
    return chmod(path.c_str(), mode);
}

bool BXDiskServer::readFileAsString(const BXString& path, BXString& text) {
    std::string contents;
    if (!BXFile::readWhole(path.getValidFilePath(), contents, kTextLimit)) return false;
    while (!contents.empty() && isControl(contents.back())) contents.pop_back();
    text = BXString(contents.c_str());
    return true;
}

bool BXDiskServer::writeFileFromString(const BXString& path, const BXString& text) {
    const int length = text.length();
    // Required(R23): nothing, and a text over the limit, empties the file and reports failure. An
    // application index outside the table clears the selection so.
    const bool fits = length >= 1 && length <= kTextLimit;
    const std::size_t count = fits ? static_cast<std::size_t>(length) : 0;
    return BXFile::overwrite(path.getValidFilePath(), text.c_str(), count) && fits;
}

bool BXDiskServer::readFileAsStringLines(const BXString& path, BXArray<BXString>& lines) {
    const BXFile file(path.getValidFilePath(), BXFile::Access::Read);
    if (!file.isOpen()) return false;
    std::size_t size = 0;
    const std::unique_ptr<char[]> bytes = file.readAll(size, 0, 1);
    if (!bytes) return false;
    // Required(R24): the last byte counts twice, so that a final break makes one more line, empty.
    if (size > 0) bytes[size] = bytes[size - 1];
    const char* const textEnd = bytes.get() + (size > 0 ? size + 1 : 0);

    BXArray<BXString> collected;
    collected.reserve(kListCapacity);
    const char* lineFeed = firstOf(bytes.get(), textEnd, '\n');
    for (const char* begin = bytes.get(); begin < textEnd;) {
        const char* const end = endOfLine(begin, textEnd, lineFeed);
        collected.emplace_back();
        collected.back().create(begin, end);
        begin = end < textEnd ? end + 1 : textEnd;
    }
    lines.swap(collected);
    return true;
}
