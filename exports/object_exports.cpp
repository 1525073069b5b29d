#include <string>

#include "bridge/bx_vek.h"
#include "exports/call_frame.h"
#include "exports/library_state.h"
#include "exports/object_list.h"
#include "os/bx_file.h"

namespace {

bool readListFile(std::string& contents) {
    return BXFile::readWhole(BXVek::getObjectListFile().getValidFilePath(), contents);
}

bool writeHubFile(const BXString& path, const char* bytes, std::size_t count) {
    return BXFile::overwrite(path.getValidFilePath(), bytes, count);
}

// The first object in a list file's bytes, and where the rest begins.
struct FirstObject {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t rest = 0;
};

// Required(R50): exactly one line-break byte ends the line and exactly one at the very start is
// passed over, so that the second byte of a CR LF pair stays with what follows.
bool takeFirstObject(const std::string& list, FirstObject& object) {
    const std::size_t none = std::string::npos;
    std::size_t lineBreak = none;
    std::size_t scan = 0;
    for (; scan < list.size(); ++scan) {
        if (lineBreak == none) {
            if (list[scan] == '\n' || list[scan] == '\r') lineBreak = scan;
            continue;
        }
        if (lineBreak > 0) break;
        object.begin = scan;
        lineBreak = none;
    }
    if (lineBreak == 0 || list.empty()) return false;
    object.end = lineBreak == none ? list.size() : lineBreak;
    object.rest = scan;
    return true;
}

}  // namespace

VEK_DEFINE(AddVekObject) {
    return guarded(0.0f, [&] {
        const BXString object(text);
        std::string list(object.c_str());
        list += '\n';
        if (!readListFile(list)) return 0.0f;
        return yesOrNo(writeHubFile(BXVek::getObjectListFile(), list.data(), list.size()));
    });
}

VEK_DEFINE(AddVekObjectToList) {
    return guarded(0.0f, [&] {
        const BXString line = BXString(text) + "\n";
        BXFile::append(BXVek::getObjectListFile().getValidFilePath(), line.c_str(),
                       static_cast<std::size_t>(line.length()));
        return 0.0f;
    });
}

VEK_DEFINE(ClearVekObjectList) {
    return guarded(0.0f, [&] { return yesOrNo(writeHubFile(BXVek::getObjectListFile(), "", 0)); });
}

VEK_DEFINE(ReadVekObjectList) {
    return guarded(0.0f, [&] { return static_cast<float>(readObjectList()); });
}

VEK_DEFINE(GetVekObjectPath) {
    return guarded(0.0f, [&] {
        const int index = indexArgument(value);
        if (index < 0 || static_cast<std::size_t>(index) >= s_objectList.size()) return 0.0f;
        textOut(buffer1, s_objectList[static_cast<std::size_t>(index)]);
        return 0.0f;
    });
}

VEK_DEFINE(ReleaseVekObjectList) {
    return guarded(0.0f, [&] {
        BXArray<BXString>().swap(s_objectList);
        return 0.0f;
    });
}

VEK_DEFINE(ExtractVekObject) {
    return guarded(0.0f, [&] {
        std::string list;
        FirstObject object;
        if (!readListFile(list) || !takeFirstObject(list, object)) return 0.0f;
        writeHubFile(BXVek::getObjectListFile(), list.data() + object.rest,
                     list.size() - object.rest);
        writeHubFile(BXVek::getObjectPathFile(), list.data() + object.begin,
                     object.end - object.begin);
        return 1.0f;
    });
}
