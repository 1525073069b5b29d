#include <cstdint>
#include <cstring>
#include <string>

#include "bridge/bx_vek.h"
#include "config/line_walker.h"
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

constexpr std::size_t kPiece = 256 * 1024;

// The end of the last line break in [from, to), or 0: no line ends there.
std::size_t afterLastBreak(const std::string& text, std::size_t from, std::size_t to) {
    while (to > from && text[to - 1] != '\n' && text[to - 1] != '\r') --to;
    return to > from ? to : 0;
}

// Fills s_objectList from its start. Former objects are replaced one by one, so that each new text
// can take the memory of the one that has just gone; those left over go at the end.
class ObjectListFiller {
public:
    ObjectListFiller() = default;
    ObjectListFiller(const ObjectListFiller&) = delete;
    ObjectListFiller& operator=(const ObjectListFiller&) = delete;
    ~ObjectListFiller() { s_objectList.resize(m_count); }

    // Adds an object for each line of [begin, end) that is not blank.
    void add(const char* begin, const char* end) {
        BXLineWalker lines(begin, end);
        const char* lineBegin;
        const char* lineEnd;
        while (lines.next(lineBegin, lineEnd)) {
            if (!trimLine(lineBegin, lineEnd)) continue;
            if (m_count == s_objectList.size()) s_objectList.emplace_back();
            s_objectList[m_count].create(lineBegin, lineEnd);
            ++m_count;
        }
    }

private:
    std::size_t m_count = 0;
};

// Hands the list file to the filler a piece at a time, in memory that is used again: a long list
// does not cost fresh memory for its bytes beside its strings. What follows a piece's last break
// waits for the next piece.
void fillFrom(const BXFile& file, ObjectListFiller& objects) {
    std::string piece;
    std::size_t waiting = 0;
    std::int64_t offset = 0;
    while (true) {
        if (piece.size() < waiting + kPiece) piece.resize(waiting + kPiece);
        const std::size_t came = file.readAt(offset, &piece[waiting], kPiece);
        offset += static_cast<std::int64_t>(came);
        const std::size_t size = waiting + came;
        const std::size_t whole = came == 0 ? size : afterLastBreak(piece, waiting, size);
        objects.add(piece.data(), piece.data() + whole);
        if (came == 0) return;
        std::memmove(&piece[0], &piece[whole], size - whole);
        waiting = size - whole;
    }
}

}  // namespace

int readObjectList() {
    {
        ObjectListFiller objects;
        const BXFile file(BXVek::getObjectListFile().getValidFilePath(), BXFile::Access::Read);
        if (file.isOpen()) fillFrom(file, objects);
    }
    return static_cast<int>(s_objectList.size());
}

float AddVekObject(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        const BXString object(text);
        std::string list(object.c_str());
        list += '\n';
        if (!readListFile(list)) return 0.0f;
        return yesOrNo(writeHubFile(BXVek::getObjectListFile(), list.data(), list.size()));
    });
}

float AddVekObjectToList(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        const BXString line = BXString(text) + "\n";
        BXFile::append(BXVek::getObjectListFile().getValidFilePath(), line.c_str(),
                       static_cast<std::size_t>(line.length()));
        return 0.0f;
    });
}

float ClearVekObjectList(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] { return yesOrNo(writeHubFile(BXVek::getObjectListFile(), "", 0)); });
}

float ReadVekObjectList(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] { return static_cast<float>(readObjectList()); });
}

float GetVekObjectPath(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        const int index = indexArgument(value);
        if (index < 0 || static_cast<std::size_t>(index) >= s_objectList.size()) return 0.0f;
        textOut(buffer1, s_objectList[static_cast<std::size_t>(index)]);
        return 0.0f;
    });
}

float ReleaseVekObjectList(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        BXArray<BXString>().swap(s_objectList);
        return 0.0f;
    });
}

float ExtractVekObject(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
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
