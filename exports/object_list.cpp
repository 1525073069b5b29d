#include "exports/object_list.h"

#include <cstdint>
#include <cstring>
#include <string>

#include "bridge/bx_vek.h"
#include "config/line_walker.h"
#include "exports/library_state.h"
#include "os/bx_file.h"

namespace {

constexpr std::size_t kPiece = std::size_t{256} * 1024;

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
    ~ObjectListFiller() { s_objectList.resize(m_kept); }

    // Without this nothing that was added stays, also where an exception ends the reading.
    void keep() { m_kept = m_count; }

    // Adds an object for each line of [begin, end) that is not blank.
    void add(const char* begin, const char* end) {
        BXLineWalker lines(begin, end);
        const char* lineBegin;
        const char* lineEnd;
        while (lines.next(lineBegin, lineEnd)) {
            if (!trimLine(lineBegin, lineEnd)) continue;
            if (m_count == s_objectList.size()) s_objectList.emplace_back();
            put(s_objectList[m_count++], lineBegin, lineEnd);
        }
    }

private:
    // A list that is read again mostly has what it had: a text of the same length is put over the
    // one that is there, which costs a third less.
    static void put(BXString& object, const char* begin, const char* end) {
        const auto length = static_cast<std::size_t>(end - begin);
        if (static_cast<std::size_t>(object.length()) != length) return object.create(begin, end);
        std::memcpy(object.data(), begin, length);
    }

    std::size_t m_count = 0;
    std::size_t m_kept = 0;
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
        const std::size_t came = file.readAt(offset, piece.data() + waiting, kPiece);
        offset += static_cast<std::int64_t>(came);
        const std::size_t size = waiting + came;
        const std::size_t whole = came == 0 ? size : afterLastBreak(piece, waiting, size);
        objects.add(piece.data(), piece.data() + whole);
        if (came == 0) {
            // A list of which a part cannot be read would look like one from which it was taken.
            if (file.endsBy(offset)) objects.keep();
            return;
        }
        std::memmove(piece.data(), &piece[whole], size - whole);
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
