#include "formats/maya_rewrite.h"

#include <cstdint>
#include <memory>

namespace {

// A stretch of text that is taken out, and what is written there instead.
struct Place {
    std::int64_t begin, end;
    const MayaMesh* mesh;
    unsigned int things;
};

std::vector<Place> placesOf(const std::vector<MayaMesh>& meshes) {
    std::vector<Place> places;
    for (const MayaMesh& mesh : meshes) {
        unsigned int written = 0;
        for (const MayaStatement& statement : mesh.statements) {
            const bool follows = !places.empty() && places.back().mesh == &mesh &&
                                 places.back().end == statement.begin;
            if (!follows) places.push_back({statement.begin, statement.begin, &mesh, 0});
            places.back().end = statement.end;
            places.back().things |= statement.thing & ~written;
            written |= statement.thing;
        }
    }
    return places;
}

// The text between the places, and behind the last one, which the writing would run over.
class KeptText {
public:
    // False when it cannot be read, or is longer than this build can address.
    bool read(const BXFile& file, std::int64_t textEnd, const std::vector<Place>& places) {
        std::int64_t length = 0;
        forEach(textEnd, places, [&](std::int64_t, std::int64_t part) { length += part; });
        if (length >= static_cast<std::int64_t>(PTRDIFF_MAX)) return false;
        m_text.reset(new char[static_cast<std::size_t>(length) + 1]);
        char* to = m_text.get();
        bool read = true;
        forEach(textEnd, places, [&](std::int64_t begin, std::int64_t part) {
            const auto count = static_cast<std::size_t>(part);
            read = read && file.readAt(begin, to, count) == count;
            to += part;
        });
        return read;
    }

    const char* text() const { return m_text.get(); }

private:
    template <class Visit>
    static void forEach(std::int64_t textEnd, const std::vector<Place>& places, Visit visit) {
        for (std::size_t i = 0; i < places.size(); ++i) {
            const std::int64_t end = i + 1 < places.size() ? places[i + 1].begin : textEnd;
            visit(places[i].end, end - places[i].end);
        }
    }

    std::unique_ptr<char[]> m_text;
};

// Without the kept text, to a writer that only counts.
void putAll(MayaWriter& writer, std::int64_t textEnd, const std::vector<Place>& places,
            const char* kept, const MayaRegenerator& regenerator) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        for (const MayaThing thing : {kMayaUVs, kMayaEdges, kMayaFaces}) {
            if (places[i].things & thing) regenerator.put(*places[i].mesh, thing, writer);
        }
        const std::int64_t end = i + 1 < places.size() ? places[i + 1].begin : textEnd;
        const auto length = static_cast<std::size_t>(end - places[i].end);
        if (kept) {
            writer.put(kept, length);
            kept += length;
        } else {
            writer.pass(length);
        }
    }
}

// Makes sure that what is written finds room, before the first byte is changed. What will be
// written is only worked out on a disk on which it might not.
bool makeRoom(BXFile& file, std::int64_t textEnd, const std::vector<Place>& places,
              const MayaRegenerator& regenerator) {
    // A UV index of two characters can become a point of almost a hundred.
    constexpr std::int64_t kMostGrowth = 64;
    if (file.freeSpace() / kMostGrowth > file.size()) return true;
    MayaWriter counter(nullptr, places.front().begin);
    putAll(counter, textEnd, places, nullptr, regenerator);
    counter.finish();
    return file.extend(counter.offset());
}

}  // namespace

bool rewriteMayaScene(BXFile& file, std::int64_t textEnd, const std::vector<MayaMesh>& meshes,
                      const MayaRegenerator& regenerator) {
    const std::vector<Place> places = placesOf(meshes);
    // What stands before the first place stays where it is.
    if (places.empty()) return file.truncate(textEnd);
    KeptText kept;
    if (!kept.read(file, textEnd, places)) return false;
    if (!makeRoom(file, textEnd, places, regenerator)) return false;
    MayaWriter writer(&file, places.front().begin);
    putAll(writer, textEnd, places, kept.text(), regenerator);
    return writer.finish() && file.truncate(writer.offset());
}
