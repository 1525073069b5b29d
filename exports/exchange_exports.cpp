#include "bridge/bx_vek.h"
#include "exports/call_frame.h"
#include "exports/library_state.h"
#include "exports/object_list.h"
#include "formats/bx_uv_merge_algo.h"
#include "formats/bx_vek_file.h"
#include "foundation/bx_log_server.h"
#include "os/bx_disk_server.h"
#include "os/bx_file.h"

namespace {

// Prepares the file at `text` for the other side; 0 or -1.
float prepare(const char* text, bool (*forMayaFile)(const BXString& path),
              bool (*forVekFile)(const BXString& path)) {
    const BXString path(BXString(text).getValidFilePath());
    if (!BXDiskServer::fileExists(path)) return -1.0f;
    if (path.endsWith(".ma", true)) return forMayaFile(path) ? 0.0f : -1.0f;
    if (path.endsWith(".Vek", true)) return forVekFile(path) ? 0.0f : -1.0f;
    return -1.0f;
}

// The block that holds the map which the number selects; 0 for a number that selects none.
unsigned int mapBlock(double selector) {
    if (selector == 0.0) return kVekMap0;
    if (selector == 1.0) return kVekMap1;
    if (selector == 2.0) return kVekMap2;
    return 0;
}

// Finds the first block of the kind `wanted`, leaving the file at its payload. The search ends,
// beside at the end block, where a blockSize would lead backwards.
bool findBlock(const BXVekFile& file, unsigned int wanted, Vek_Header& header) {
    while (file.readVekBlockHeader(header) && header.id != kVekEnd) {
        if (header.blockSize < kVekBlockHeaderSize) return false;
        if (header.id == wanted) return true;
        file.skipVekBlock(header);
    }
    return false;
}

// The map file name that `wanted` holds; empty when there is none. Where the kind of map has a
// number, that is printed to `number`.
BXString readMapName(const BXVekFile& file, unsigned int wanted, BXString& number) {
    BXString name;
    Vek_Header header;
    if (!findBlock(file, wanted, header) || !file.readVekText(header, name)) return BXString();
    if (header.id == kVekMap2) {
        number = BXString::format("%f", static_cast<double>(header.param));
    }
    return name;
}

float firstObjectTexture(double selector, char* nameBlock, char* numberBlock) {
    BXLogServer::printLine("GetFirstObjectTextureFileName called");
    if (readObjectList() == 0) return -1.0f;
    const BXString path = s_objectList[0] + ".vek";
    BXLogServer::printLine("  reading %s", path.c_str());
    BXVekFile file(path, "rb");
    if (!file.readVekFileHeader()) return -1.0f;
    BXString number;
    BXString name = readMapName(file, mapBlock(selector), number);
    file.close();
    const bool found = !name.isEmpty();
    if (found) {
        BXLogServer::printLine("  tex: %s", name.c_str());
        name.replaceCharsOf("\\", '/');
    } else {
        BXLogServer::printLine("  no texture found");
    }
    // Last, for nothing fails from here on: a failure leaves both blocks as they were.
    if (!number.isEmpty()) textOut(numberBlock, number);
    if (!found) return -1.0f;
    textOut(nameBlock, name);
    return 0.0f;
}

}  // namespace

VEK_DEFINE(VekPostExport) {
    return guarded(-1.0f, [&] {
        return prepare(text, BXUVMergeAlgo::mergeUVsInMayaFile, BXUVMergeAlgo::mergeUVsInVekFile);
    });
}

VEK_DEFINE(VekPreImport) {
    return guarded(-1.0f, [&] {
        return prepare(text, BXUVMergeAlgo::splitUVsInMayaFile, BXUVMergeAlgo::splitUVsInVekFile);
    });
}

VEK_DEFINE(VekClearFile) {
    return guarded(
        0.0f, [&] { return yesOrNo(BXFile::overwrite(BXString(text).getValidFilePath(), "", 0)); });
}

VEK_DEFINE(VekDeleteFile) {
    return guarded(0.0f, [&] { return yesOrNo(BXDiskServer::deleteFile(text)); });
}

VEK_DEFINE(VekCleanCaches) {
    return guarded(0.0f, [&] {
        BXDiskServer::deleteDirectory(BXVek::getDefaultProjectFile("*"), true, false);
        return 0.0f;
    });
}

VEK_DEFINE(GetFirstObjectTextureFileName) {
    return guarded(-1.0f, [&] { return firstObjectTexture(value, buffer1, buffer2); });
}

VEK_DEFINE(IsVekFilePathValid) {
    return guarded(0.0f, [&] {
        const BXString path(text);
        const BXFile file(path.getValidFilePath(), BXFile::Access::Read);
        return yesOrNo(file.isOpen() && file.size() != 0);
    });
}

VEK_DEFINE(ReadVekProjectPath) {
    return guarded(0.0f, [&] {
        BXString path;
        BXDiskServer::readFileAsString(BXVek::getProjectPathFile(), path);
        const int lineBreak = path.findLastCharOf("\r\n");
        if (lineBreak >= 0) path = path.subString(0, lineBreak);
        if (!path.isEmpty()) textOut(buffer1, path);
        return 0.0f;
    });
}
